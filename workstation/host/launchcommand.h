#pragma once

#include <QString>
#include <QStringList>

/// What the placeholders of a launcher stand for at one start.
struct LaunchValues
{
    QStringList files; ///< absolute paths
    QString fileList; ///< path of the text file that names them
    QString studyUid;
    QString seriesUid;
    QString patientId;
    QString index;
    QString workstation;
};

/// The command line of a launcher, without any shell: a value stays one argument, whatever it holds.
namespace LaunchCommand {

/// The program with "{workstation}" filled in.
QString program(const QString &configured, const LaunchValues &values);
/// The arguments with all placeholders filled in; one that holds "{files}" comes once for each file. Words in
/// braces that are no placeholders stay, and values are not looked through for placeholders again.
/// A caller asks strayOption() first.
QStringList arguments(const QStringList &configured, const LaunchValues &values);
/// Whether any argument speaks of selected records.
bool needsSelection(const QStringList &configured);
/// Whether any argument holds a placeholder.
bool uses(const QStringList &configured, const char *placeholder);
/// The first argument that would become an option, with a "-" in front, only by a value: a file of a stranger
/// may call its patient "--config=/tmp/x", and no program is to be started with that. Empty where there is
/// none; within an argument that begins with other text a value may hold anything.
QString strayOption(const QStringList &configured, const LaunchValues &values);

} // namespace LaunchCommand
