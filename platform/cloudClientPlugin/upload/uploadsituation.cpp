#include "uploadsituation.h"

#include "uploadjob.h"

#include <utility>

UploadSituation::UploadSituation(const QString &databasePath, CloudSession session)
    : m_ownership(databasePath + QStringLiteral(".upload"))
    , m_session(std::move(session))
{ }

bool UploadSituation::tryToOwn()
{
    if (m_isOwner || !m_ownership.tryToGet()) {
        return false;
    }
    m_isOwner = true;
    return true;
}

void UploadSituation::setSession(const CloudSession &session)
{
    m_health.beginSession(session.service.address != m_session.service.address);
    m_session = session;
    m_isSessionRefused = false;
}

bool UploadSituation::refuseSession()
{
    return !std::exchange(m_isSessionRefused, true);
}

bool UploadSituation::isRunnable(const UploadJob &job) const
{
    return job.isEntered() && !job.isCancelled && m_session.isOpen() && !m_isSessionRefused
        && (job.service().isEmpty() || m_session.isAt(job.service()));
}
