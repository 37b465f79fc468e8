#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// The applications that the query panel starts.
enum class LauncherId { Joint, Compare, Vessel, Swi, BrainSegment };

/// The program of a launcher; without one it is not configured.
struct Launcher
{
    /// A path, a name to be found in PATH, or "{workstation}".
    QString program;
    /// One entry an argument, placeholders not filled in yet; no shell ever sees them.
    QStringList arguments;

    bool isConfigured() const { return !program.isEmpty(); }
    bool operator==(const Launcher &other) const
    {
        return program == other.program && arguments == other.arguments;
    }
    bool operator!=(const Launcher &other) const { return !(*this == other); }
};

/// What may stand in a launcher's arguments, alone or within a longer text.
namespace LauncherPlaceholder {
inline constexpr char files[] = "{files}"; ///< becomes one argument for each file
inline constexpr char fileList[] = "{fileList}"; ///< path of a UTF-8 text file, one path a line
inline constexpr char studyUid[] = "{studyUID}"; ///< of the first selected record; empty where it has none
inline constexpr char seriesUid[] = "{seriesUID}";
inline constexpr char patientId[] = "{patientID}";
inline constexpr char index[] = "{index}"; ///< path of the index file
inline constexpr char workstation[] = "{workstation}"; ///< this program; also allowed as the program
} // namespace LauncherPlaceholder

/**
 * The launchers as main.ini has them: group "launcher", keys "<id>Program" (string) and "<id>Arguments"
 * (list), where id is one of joint, compare, vessel, swi and brainSegment.
 *
 * Read anew at each start of a launcher, from the file of the checked rule (beside the program, else one
 * folder above). Written to that same file; where neither exists, to the one beside the program. GUI thread.
 */
namespace LauncherSettings {

/// In the order in which they are shown.
COMMONPLUGIN_EXPORT QVector<LauncherId> all();
/// What the launcher is called on its button, for people.
COMMONPLUGIN_EXPORT QString caption(LauncherId id);
/// What stands in the file's keys.
COMMONPLUGIN_EXPORT QString key(LauncherId id);

/// Not configured where the file or its keys are missing.
COMMONPLUGIN_EXPORT Launcher read(LauncherId id);
/// Writes where that changes something. @return whether the file holds it now
COMMONPLUGIN_EXPORT bool write(LauncherId id, const Launcher &launcher);
/// The file that write() writes, existing or not.
COMMONPLUGIN_EXPORT QString writtenFile();

/// All placeholders, in the order of the list above.
COMMONPLUGIN_EXPORT QStringList placeholders();

} // namespace LauncherSettings
