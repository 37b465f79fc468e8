#pragma once

#include "imagebase_export.h"

#include <QString>

/**
 * Where the INI files of the workstation lie.
 *
 * Every rule starts at a base folder: the program's own, unless setBase() named another. A file is looked for
 * in `config` below the base, then in `config` beside the base. The three rules differ in what happens where
 * neither exists, and are kept apart on purpose: each caller documents which one it follows. All functions
 * are for the GUI thread; the base is set once, before the first window is made.
 */
namespace ConfigLocation {

/// The one seam for tests and for a host's own option; an empty text goes back to the program's folder.
IMAGEBASE_EXPORT void setBase(const QString &folder);
/// The folder that every rule starts at, without a trailing separator.
IMAGEBASE_EXPORT QString base();
/// Names the base that was set to the programs that this one starts, in its own environment; where none was
/// set, they look beside themselves.
IMAGEBASE_EXPORT void handOn();
/// Starts at the base that the starting program handed on, if any.
IMAGEBASE_EXPORT void takeHandedOn();

/// `<base>/config/<file>`, whether or not it exists.
IMAGEBASE_EXPORT QString besideProgram(const QString &file);
/// `<base>/../config/<file>`, whether or not it exists.
IMAGEBASE_EXPORT QString aboveProgram(const QString &file);

/// Rule 1: the first of the two that exists, or an empty text where neither does: the file is not opened
/// then.
IMAGEBASE_EXPORT QString checked(const QString &file);
/// Rule 1 as the main window applies it: `config/<file>` of the working directory, then the one above the
/// base.
IMAGEBASE_EXPORT QString checkedFromWorkingDirectory(const QString &file);
/// Rule 2: the one beside the program where it exists, else the one above, existing or not (a write creates
/// it there).
IMAGEBASE_EXPORT QString unchecked(const QString &file);
/// Rule 3: the one beside the program where it has at least one group, else the one above, whatever it holds.
IMAGEBASE_EXPORT QString grouped(const QString &file);

} // namespace ConfigLocation

/// Names of the INI files and of the keys that more than one place reads or writes.
namespace ConfigKey {
inline constexpr char mainIni[] = "main.ini";
inline constexpr char langIni[] = "lang.ini";
inline constexpr char userNameIni[] = "username.ini";
inline constexpr char dicomSendServiceIni[] = "dicomsendservice.ini";
inline constexpr char renameIni[] = "rename.ini";

/// int: 0 references files in place, 1 copies them into the store, 2 asks at each import.
inline constexpr char importMode[] = "dataCopyType/dataCopyType";
/// int: what a deletion removes from the disk.
inline constexpr char deleteMode[] = "datadelete/dataCopyType";
/// int: 0 keeps the indexed file where other bytes come under its UID, 1 takes the new one.
inline constexpr char duplicatePolicy[] = "import/duplicatePolicy";
/// string: path of the index file.
inline constexpr char databasePath[] = "database/path";

/// string: how this workstation calls itself in a DICOM network, both when it sends and when it receives.
inline constexpr char ownAeTitle[] = "dicom/aeTitle";
inline constexpr char usualAeTitle[] = "PATIENTMANAGER"; ///< where the file has none
/// int: 1 listens for objects.
inline constexpr char receive[] = "dicom/receive";
/// int: the port that is listened on.
inline constexpr char receivePort[] = "dicom/receivePort";
/// string: the numeric address of this computer that is listened on.
inline constexpr char receiveAddress[] = "dicom/receiveAddress";
/// list: AE titles of those who may send; empty for anybody.
inline constexpr char receiveCallers[] = "dicom/receiveCallers";
/// int: 1 takes objects of private classes too.
inline constexpr char receivePrivate[] = "dicom/receivePrivateClasses";
/// int: 0 acknowledges objects that a power cut may still take.
inline constexpr char receiveSynced[] = "dicom/receiveSynced";

/// string: path of the file with the key that pseudonyms are made from; without it, a file of the user's.
inline constexpr char anonymiseKey[] = "anonymise/keyFile";
} // namespace ConfigKey
