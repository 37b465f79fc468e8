#include "serviceview.h"

#include "seriespicture.h"
#include "seriespreview.h"
#include "studysearch.h"

namespace {

QString seriesResource(const QString &studyUid, const QString &seriesUid)
{
    return QStringLiteral("studies/%1/series/%2").arg(studyUid, seriesUid);
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
    m_pictures = nullptr;
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
    endPictures();
    if (!m_client || studyUid.isEmpty()) {
        return;
    }
    m_series =
        new StudySearch(*m_client, QStringLiteral("studies/%1/series").arg(studyUid), QUrlQuery(), this);
    connect(m_series, &StudySearch::found, this, [=](const QVector<DicomJson> &found) {
        emit seriesFound(found);
        for (const DicomJson &one : found) {
            makePicture(studyUid, one.text(DicomTag::seriesUid), pictureSide);
        }
    });
    connect(m_series, &StudySearch::finished, this, [this](const WebFailure &failure) {
        m_series->deleteLater();
        m_series.clear();
        emit seriesEnded(failure);
    });
}

void ServiceView::endPictures()
{
    delete m_pictures;
    m_pictures = new QObject(this);
}

void ServiceView::makePicture(const QString &studyUid, const QString &seriesUid, int side)
{
    const auto *picture = new SeriesPicture(*m_client, seriesResource(studyUid, seriesUid), side, m_pictures);
    connect(picture, &SeriesPicture::made, this,
        [this, seriesUid](const QImage &made) { emit pictureMade(seriesUid, made); });
}

SeriesPreview *ServiceView::open(const QString &studyUid, const QString &seriesUid)
{
    return m_client && !seriesUid.isEmpty()
        ? new SeriesPreview(*m_client, seriesResource(studyUid, seriesUid), this)
        : nullptr;
}
