#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QThread>

/// Brings the upload states of series, and of the patients that they belong to, up to date after an upload
/// has gone on: on a thread and a connection of its own. GUI thread; the destructor waits for the thread.
class UploadedStates : public QObject
{
    Q_OBJECT

public:
    explicit UploadedStates(QObject *parent = nullptr);
    ~UploadedStates() override;

    /// Of these series, and of all others of which something is stored or waits to be. In the index that is
    /// the default one now.
    void refresh(const QStringList &seriesUIDs);

signals:
    void refreshed();

private:
    QThread m_thread;
    QPointer<QObject> m_worker; ///< lives on the thread
};
