#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>

class WebClient;

/// The pictures of the series of a study: a few at a time, in the order in which they were asked for, however
/// many series there are. Deleting it ends them. GUI thread.
class PictureQueue : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostAtOnce = 4;

    /// @param client outlives this. @param study its resource, as "studies/1.2"
    PictureQueue(WebClient &client, QString study, int side, QObject *parent);

    void add(const QString &seriesUid);

signals:
    void made(const QString &seriesUid, const QImage &picture);

private:
    void pump();

    WebClient &m_client;
    const QString m_study;
    const int m_side;
    QStringList m_waiting; ///< UIDs
    int m_running = 0;
};
