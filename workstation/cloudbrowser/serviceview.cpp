#include "serviceview.h"

#include "picturequeue.h"
#include "seriespreview.h"
#include "studysearch.h"

namespace {

QString studyResource(const QString &studyUid)
{
    return QStringLiteral("studies/") + studyUid;
}

} // namespace

ServiceView::~ServiceView()
{
    setSession({});
}

void ServiceView::setSession(const CloudSession &session)
{
    const QObjectList parts = children();
    for (QObject *part : parts) {
        const auto *preview = qobject_cast<const SeriesPreview *>(part);
        if (!preview || preview->isFetching()) {
            delete part; // it asks the client
        }
    }
    m_client = session.isOpen() ? std::make_unique<WebClient>(session.service) : nullptr;
}

void ServiceView::askStudies(const StudyQuestion &question)
{
    delete m_studies;
    if (!m_client) {
        return;
    }
    m_studies = new StudySearch(*m_client, QStringLiteral("studies"), question.query(), this);
    connect(m_studies, &StudySearch::found, this, [this, question](const QVector<DicomJson> &found) {
        QVector<DicomJson> matching;
        std::copy_if(found.cbegin(), found.cend(), std::back_inserter(matching),
            [&](const DicomJson &study) { return question.matches(study); });
        emit studiesFound(matching);
    });
    connect(m_studies, &StudySearch::finished, this, [this](const WebFailure &failure) {
        const bool isCutShort = m_studies->isCutShort();
        m_studies->deleteLater();
        m_studies.clear();
        emit studiesEnded(failure, isCutShort);
    });
}

void ServiceView::askSeries(const QString &studyUid, int pictureSide)
{
    delete m_series;
    delete m_pictures;
    if (!m_client || studyUid.isEmpty()) {
        return;
    }
    const QString study = studyResource(studyUid);
    askPictures(study, pictureSide);
    m_series = new StudySearch(
        *m_client, study + QStringLiteral("/series"), QUrlQuery(), this, StudySearch::everything);
    connect(m_series, &StudySearch::found, this, [this](const QVector<DicomJson> &found) {
        emit seriesFound(found);
        for (const DicomJson &one : found) {
            m_pictures->add(one.text(DicomTag::seriesUid));
        }
    });
    connect(m_series, &StudySearch::finished, this, [this](const WebFailure &failure) {
        m_series->deleteLater();
        m_series.clear();
        emit seriesEnded(failure);
    });
}

void ServiceView::askPictures(const QString &study, int side)
{
    m_pictures = new PictureQueue(*m_client, study, side, this);
    connect(m_pictures, &PictureQueue::made, this, &ServiceView::pictureMade);
}

SeriesPreview *ServiceView::open(const QString &studyUid, const QString &seriesUid)
{
    return m_client && !seriesUid.isEmpty()
        ? new SeriesPreview(*m_client, studyResource(studyUid) + QStringLiteral("/series/") + seriesUid, this)
        : nullptr;
}
