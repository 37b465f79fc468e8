#include "queueownership.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

QueueOwnership::QueueOwnership(const QString &queuePath)
    : m_path(queuePath + QStringLiteral(".lock"))
{ }

QueueOwnership::~QueueOwnership()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

bool QueueOwnership::tryToGet()
{
    if (m_file < 0) {
        m_file = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    }
    m_isOurs = m_isOurs || (m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) == 0);
    return m_isOurs;
}
