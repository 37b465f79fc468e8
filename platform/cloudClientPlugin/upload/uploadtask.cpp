#include "uploadtask.h"

#include "httpuploadfile.h"
#include "uploadengine.h"

UpLoadTask::UpLoadTask(
    UploadEngine &engine, qint64 id, QString patientName, QStringList seriesUids, UploadTally tally)
    : m_engine(&engine)
    , m_id(id)
    , m_patientName(std::move(patientName))
    , m_seriesUids(std::move(seriesUids))
    , m_tally(std::move(tally))
{ }

UpLoadTask::~UpLoadTask()
{
    if (m_engine != nullptr) {
        m_engine->forget(*this);
    }
}

void UpLoadTask::setPatientName(const QString &name)
{
    m_patientName = name;
    if (m_engine != nullptr) {
        m_engine->rename(m_id, name);
    }
}

QVector<UploadFault> UpLoadTask::faults() const
{
    return m_engine != nullptr ? m_engine->faults(m_id) : QVector<UploadFault>();
}

void UpLoadTask::finishTask()
{
    if (m_engine == nullptr) { // its index has been released: only the handle is left
        QMetaObject::invokeMethod(this, &UpLoadTask::tellEnd, Qt::QueuedConnection);
    } else if (!m_hasEnded) {
        m_engine->finish(m_id);
    }
}

void UpLoadTask::setUploadedCloudflag(bool isUploaded)
{
    if (m_engine != nullptr && isUploaded) {
        m_engine->flag(m_id);
    }
}

void UpLoadTask::retryFailed()
{
    if (m_engine != nullptr) {
        m_engine->retryFailed(m_id);
    }
}

void UpLoadTask::tryNow()
{
    if (m_engine != nullptr) {
        m_engine->tryNow();
    }
}

void UpLoadTask::take(const UploadTally &tally)
{
    const bool isMore = tally.failed != m_tally.failed || tally.succeeded != m_tally.succeeded;
    m_tally = tally;
    if (isMore) {
        emit progress(tally.failed, tally.succeeded, tally.all, this);
    }
    emit changed(this);
}

void UpLoadTask::tellRunEnd()
{
    QStringList failed;
    if (m_tally.failed > 0) {
        for (const UploadFault &fault : faults()) {
            failed.append(fault.path);
        }
    }
    emit finshUpLoad(m_tally.failed, m_tally.succeeded, failed, HttpUploadFile::instance()->getJsessionid());
}

void UpLoadTask::tellEnd()
{
    if (!m_hasEnded) {
        m_hasEnded = true;
        emit finshTask(this);
    }
}
