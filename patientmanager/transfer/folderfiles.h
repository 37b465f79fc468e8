#pragma once

#include <QObject>
#include <QStringList>
#include <QThread>

/// Lists the files below a folder on a thread of its own, as it may be the whole of a disk. One folder at a
/// time; GUI thread. The destructor gives up and waits for the thread.
class FolderFiles : public QObject
{
    Q_OBJECT

public:
    explicit FolderFiles(QObject *parent = nullptr);
    ~FolderFiles() override;

    bool isRunning() const { return m_thread != nullptr; }
    /// A file is listed by itself. Not while one is running.
    void list(const QString &path);
    /// listed() does not come any more.
    void cancel();

signals:
    /// So many until now; a few times a second.
    void found(int files);
    /// All of them. Folders and what is neither are left out, and links to folders are not followed.
    void listed(const QString &path, const QStringList &files);

private:
    void walk(const QString &path, int run);

    QThread *m_thread = nullptr;
    int m_run = 0; ///< what an earlier one still says is of no use
};
