#pragma once

#include <QFile>
#include <QString>

#include <unistd.h>

/// A test that runs as the system's administrator is nobody in particular while this lives: locked folders
/// are locked for it then. Files and folders that it may change are named first.
class OrdinaryUser
{
public:
    /// @param folders become the ordinary user's own
    explicit OrdinaryUser(const QStringList &folders)
    {
        if (m_isAdministrator) {
            for (const QString &folder : folders) {
                m_ready = chown(QFile::encodeName(folder).constData(), nobody, nobody) == 0 && m_ready;
            }
            m_ready = seteuid(nobody) == 0 && m_ready;
        }
    }
    ~OrdinaryUser()
    {
        if (m_isAdministrator && seteuid(0) != 0) {
            qFatal("the administrator's rights do not come back");
        }
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

    bool isReady() const { return m_ready; }

private:
    static constexpr uid_t nobody = 65534;

    const bool m_isAdministrator = geteuid() == 0;
    bool m_ready = true;
};
