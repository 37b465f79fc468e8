#pragma once

#include "cloudsession.h"
#include "studysearch.h"

#include <QObject>
#include <QPointer>
#include <QSet>

#include <memory>

class WebClient;

/**
 * Searches for studies in the cloud, and lists the series of those that are looked at. One search at a time,
 * a later one ends an earlier one; lists beside it. Nothing blocks. GUI thread.
 */
class CloudSearch : public QObject
{
    Q_OBJECT

public:
    explicit CloudSearch(QObject *parent);
    ~CloudSearch() override;

    /// Ends what is running; an empty session asks nobody.
    void setSession(const CloudSession &session);
    void search(const StudyQuestion &question);
    void stop();
    bool isSearching() const { return m_search != nullptr; }
    /// The series of a study; once at a time.
    void listSeries(const QString &studyUid);

signals:
    void found(const QVector<DicomJson> &studies);
    /// @param isCutShort whether the service has more
    void finished(const WebFailure &failure, bool isCutShort);
    void listed(const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure);

private:
    std::unique_ptr<WebClient> m_client;
    QPointer<StudySearch> m_search;
    QSet<QString> m_listing; ///< studies
};
