#pragma once

#include "webfailure.h"

#include <QObject>
#include <QSet>
#include <QStringList>

class DicomJson;
class ObjectsRetrieve;
class StudySearch;
class WebClient;

/**
 * Fetches the objects of one series into a folder: all in one answer, or only what is missing, each by a
 * request of its own and a few at a time. On the thread of its client.
 */
class SeriesFetch : public QObject
{
    Q_OBJECT

public:
    /// @param client outlives it. @param folder of a spool
    SeriesFetch(
        WebClient &client, QString studyUid, QString seriesUid, QString folder, QObject *parent = nullptr);
    ~SeriesFetch() override;

    /// Begins, once.
    void fetchAll();
    /// Begins, once: what the service lists and present does not have. A service that lists nothing is asked
    /// for all.
    void fetchMissing(const QSet<QString> &present);
    void abort();

    /// The objects that the service lists; empty where it was not asked, or lists none.
    const QSet<QString> &listed() const { return m_listed; }

signals:
    void received(const QString &path);
    /// More bytes have come.
    void progressed(qint64 bytes);
    void finished(const WebFailure &failure);

private:
    QString resource() const;
    ObjectsRetrieve *retrieve(const QString &resource);
    void list(const QVector<DicomJson> &instances);
    void listEnded(const WebFailure &failure);
    void pump();
    void onFetched(ObjectsRetrieve *request, const WebFailure &failure);
    void end(const WebFailure &failure);

    WebClient &m_client;
    const QString m_studyUid;
    const QString m_seriesUid;
    const QString m_folder;
    StudySearch *m_search = nullptr;
    QSet<QString> m_present;
    QSet<QString> m_listed;
    QStringList m_missing; ///< not asked for yet
    QVector<ObjectsRetrieve *> m_requests;
    WebFailure m_failure; ///< the first
    bool m_isEnded = false;
};
