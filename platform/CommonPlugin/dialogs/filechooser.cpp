#include "filechooser.h"

#include <QApplication>
#include <QFileDialog>

namespace {

std::function<QString(const FileChooser::Request &)> &answererInUse()
{
    static std::function<QString(const FileChooser::Request &)> answerer;
    return answerer;
}

QString ask(QWidget *parent, const FileChooser::Request &request, QFileDialog::AcceptMode mode,
    QFileDialog::FileMode files, QFileDialog::Options options)
{
    if (answererInUse()) {
        return answererInUse()(request);
    }
    const QFileInfo start(request.start);
    QFileDialog dialog(parent, request.title, start.isDir() ? request.start : start.path(), request.filter);
    dialog.setAcceptMode(mode);
    dialog.setFileMode(files);
    dialog.setOptions(options);
    if (options & QFileDialog::DontConfirmOverwrite) {
        dialog.setLabelText(QFileDialog::Accept, QCoreApplication::translate("FileChooser", "Open"));
    }
    if (!start.isDir()) {
        dialog.selectFile(start.fileName());
    }
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

namespace FileChooser {

QString toOpen(QWidget *parent, const Request &request)
{
    return ask(parent, request, QFileDialog::AcceptOpen, QFileDialog::ExistingFile, {});
}

QString toReplace(QWidget *parent, const Request &request)
{
    return ask(parent, request, QFileDialog::AcceptSave, QFileDialog::AnyFile, {});
}

QString toOpenOrMake(QWidget *parent, const Request &request)
{
    return ask(
        parent, request, QFileDialog::AcceptSave, QFileDialog::AnyFile, QFileDialog::DontConfirmOverwrite);
}

QString toFolder(QWidget *parent, const Request &request)
{
    if (answererInUse()) {
        return answererInUse()(request);
    }
    QFileDialog dialog(parent, request.title, request.start, request.filter);
    dialog.setFileMode(QFileDialog::Directory);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QStringList toOpenSeveral(QWidget *parent, const Request &request)
{
    if (answererInUse()) {
        const QString answer = answererInUse()(request);
        return answer.isEmpty() ? QStringList() : QStringList(answer);
    }
    return QFileDialog::getOpenFileNames(parent, request.title, request.start, request.filter);
}

void setAnswerer(const std::function<QString(const Request &)> &answerer)
{
    answererInUse() = answerer;
}

} // namespace FileChooser
