#pragma once

#include "cloudclientplugin_export.h"
#include "dicomjson.h"
#include "webfailure.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QUrlQuery>

class BoundedAnswer;
class QNetworkReply;
class WebClient;

/// What studies are looked for by; what is empty matters not. Dates as DICOM writes them.
struct CLOUDCLIENTPLUGIN_EXPORT StudyQuestion
{
    QString patientName; ///< a beginning of any of its parts; the service's wildcards are added
    QString patientId;
    QString firstDate;
    QString lastDate;
    QString modality;
    QString studyUid;

    /// The query of a QIDO-RS search for studies. Whatever would have to be escaped is asked for as "any
    /// character", since not every service undoes that: what comes back may be more than was asked for.
    QUrlQuery query() const;
    /// Whether a study that was found is one that was asked for, as far as names and IDs go: without regard
    /// to case, accents and what parts a name, as in the index.
    bool matches(const DicomJson &study) const;
};

/**
 * A QIDO-RS search, page by page until the service has no more or the most that are wanted were read. A page
 * may be shorter than was asked for: only one without anything new is the end. Nothing is told twice.
 */
class CLOUDCLIENTPLUGIN_EXPORT StudySearch : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostAnswers = 1000;
    static constexpr int everything = 100'000; ///< series or objects; no study and no series has as many

    /// Asks at once. @param client must live on the same thread, and outlive the search
    /// @param resource as "studies", "studies/1.2.3/series" or ".../instances"
    /// @param most answers that are read. A service that has more than everything gives a BadAnswer
    StudySearch(WebClient &client, QString resource, const QUrlQuery &query, QObject *parent = nullptr,
        int most = mostAnswers);
    ~StudySearch() override;

    void abort();
    /// Whether the service may have more than was read.
    bool isCutShort() const { return m_isCutShort; }

signals:
    /// Some more answers; comes any number of times before finished().
    void found(const QVector<DicomJson> &answers);
    void finished(const WebFailure &failure);

private:
    void ask();
    void answered();
    QVector<DicomJson> unseen(const QVector<DicomJson> &answers);
    void end(const WebFailure &failure);

    WebClient &m_client;
    const QString m_resource;
    const QUrlQuery m_query;
    const int m_most;
    QPointer<QNetworkReply> m_reply;
    BoundedAnswer *m_answer = nullptr; ///< of the reply
    int m_read = 0;
    QSet<QString> m_seen; ///< a service that knows no pages gives the same again
    bool m_isCutShort = false;
};
