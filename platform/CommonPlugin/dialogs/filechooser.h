#pragma once

#include "commonplugin_export.h"

#include <QStringList>

#include <functional>

class QWidget;

/// Asks the user for files or a folder. Each waits; empty where the user gives up. GUI thread.
namespace FileChooser {

/// What a dialog asks for.
struct Request
{
    QString title;
    QString start; ///< a folder, or a file that is proposed
    QString filter; ///< as QFileDialog has them
};

/// A file that is there.
COMMONPLUGIN_EXPORT QString toOpen(QWidget *parent, const Request &request);
/// A new file, or one that the user agrees to replace.
COMMONPLUGIN_EXPORT QString toReplace(QWidget *parent, const Request &request);
/// A file that is there, or the name of one to be made.
COMMONPLUGIN_EXPORT QString toOpenOrMake(QWidget *parent, const Request &request);

/// A folder, by the dialog that shows files, too.
COMMONPLUGIN_EXPORT QString toFolder(QWidget *parent, const Request &request);
/// Files that are there; an answerer gives one.
COMMONPLUGIN_EXPORT QStringList toOpenSeveral(QWidget *parent, const Request &request);

/// For tests: answers in place of every dialog until it is unset by an empty function.
COMMONPLUGIN_EXPORT void setAnswerer(const std::function<QString(const Request &)> &answerer);

} // namespace FileChooser
