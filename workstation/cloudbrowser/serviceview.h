#pragma once

#include "cloudsession.h"
#include "dicomjson.h"
#include "webclient.h"
#include "webfailure.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <memory>

class PictureQueue;
class SeriesPreview;
class StudySearch;
struct StudyQuestion;

/**
 * What is asked of the service for the window: studies, the series of one, their pictures. A new question
 * ends the one before. GUI thread.
 */
class ServiceView : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~ServiceView() override;

    /// Ends all questions and fetches; a closed session leaves nobody to ask. What has been fetched stays
    /// shown.
    void setSession(const CloudSession &session);
    bool canAsk() const { return m_client != nullptr; }

    void askStudies(const StudyQuestion &question);
    void askSeries(const QString &studyUid, int pictureSide);
    /// Fetches a series for the preview. @return owned by this; null where nobody is signed in
    SeriesPreview *open(const QString &studyUid, const QString &seriesUid);

signals:
    void studiesFound(const QVector<DicomJson> &studies);
    void studiesEnded(const WebFailure &failure, bool isCutShort);
    void seriesFound(const QVector<DicomJson> &series);
    void seriesEnded(const WebFailure &failure);
    void pictureMade(const QString &seriesUid, const QImage &picture);

private:
    void askPictures(const QString &study, int side);

    std::unique_ptr<WebClient> m_client;
    QPointer<StudySearch> m_studies;
    QPointer<StudySearch> m_series;
    QPointer<PictureQueue> m_pictures; ///< of the study that is shown
};
