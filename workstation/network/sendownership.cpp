#include "sendownership.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SendOwnership::SendOwnership(const QString &storePath)
    : m_path(storePath + QStringLiteral(".lock"))
{ }

SendOwnership::~SendOwnership()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

bool SendOwnership::tryToGet()
{
    if (m_file < 0) {
        m_file = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    }
    m_isOurs = m_isOurs || (m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) == 0);
    return m_isOurs;
}
