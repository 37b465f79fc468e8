#pragma once

#include <QString>
#include <QStringList>

/**
 * What the workstation was asked to do on its command line: a value. Paths are absolute, so that they stay
 * right wherever the program goes from here.
 */
struct CommandLine
{
    QStringList imports; ///< files and folders to import at the start
    QString database; ///< index file; empty for the configured one
    QString config; ///< folder that holds `config`; empty for the program's own
    QString screenshot; ///< where a picture of the window goes after the imports; empty for none
    QString samples; ///< what an empty index imports where nothing is named
    QStringList previews; ///< files and folders that the preview shows
    bool previewOnly = false; ///< no index, no frame: the preview alone
    bool quitWhenIdle = false;

    /// A text to print instead of starting, with the code to leave with.
    QString answer;
    int answerCode = 0;

    /// @param arguments with the program's name first
    static CommandLine parse(const QStringList &arguments);
};
