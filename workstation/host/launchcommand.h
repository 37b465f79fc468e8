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
QStringList arguments(const QStringList &configured, const LaunchValues &values);
/// Whether any argument speaks of selected records.
bool needsSelection(const QStringList &configured);

} // namespace LaunchCommand
