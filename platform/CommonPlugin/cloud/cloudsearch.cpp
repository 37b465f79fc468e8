#include "cloudsearch.h"

#include "webclient.h"

#include <algorithm>
#include <iterator>

CloudSearch::CloudSearch(QObject *parent)
    : QObject(parent)
{ }

CloudSearch::~CloudSearch()
{
    qDeleteAll(findChildren<StudySearch *>()); // before the client that they ask
}

void CloudSearch::setSession(const CloudSession &session)
{
    const auto running = findChildren<StudySearch *>();
    for (StudySearch *search : running) {
        search->abort();
    }
    m_search.clear();
    m_listing.clear();
    if (m_client) {
        m_client.release()->deleteLater();
    }
    if (session.isOpen()) {
        m_client = std::make_unique<WebClient>(session.service);
    }
}

void CloudSearch::search(const StudyQuestion &question)
{
    if (!m_client) {
        return;
    }
    stop();
    auto *search = new StudySearch(*m_client, QStringLiteral("studies"), question.query(), this);
    m_search = search;
    connect(search, &StudySearch::found, this, [this, search, question](const QVector<DicomJson> &answers) {
        QVector<DicomJson> fitting;
        std::copy_if(answers.begin(), answers.end(), std::back_inserter(fitting),
            [&question](const DicomJson &study) { return question.matches(study); });
        if (m_search == search) {
            emit found(fitting);
        }
    });
    connect(search, &StudySearch::finished, this, [this, search](const WebFailure &failure) {
        search->deleteLater();
        if (m_search == search) {
            m_search.clear();
            emit finished(failure, search->isCutShort());
        }
    });
}

void CloudSearch::stop()
{
    if (m_search) {
        m_search->abort(); // tells its end
    }
}

void CloudSearch::listSeries(const QString &studyUid)
{
    if (!m_client || m_listing.contains(studyUid)) {
        return;
    }
    m_listing.insert(studyUid);
    QUrlQuery query;
    for (const quint32 tag : {DicomTag::seriesDescription, DicomTag::imagesInSeries}) {
        query.addQueryItem(QStringLiteral("includefield"), DicomTag::name(tag));
    }
    auto *search = new StudySearch(
        *m_client, QStringLiteral("studies/%1/series").arg(studyUid), query, this, StudySearch::everything);
    auto series = std::make_shared<QVector<DicomJson>>();
    connect(search, &StudySearch::found, this, [series](const QVector<DicomJson> &more) { *series += more; });
    connect(
        search, &StudySearch::finished, this, [this, search, studyUid, series](const WebFailure &failure) {
            search->deleteLater();
            m_listing.remove(studyUid);
            emit listed(studyUid, *series, failure);
        });
}
