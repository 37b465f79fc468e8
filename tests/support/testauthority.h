#pragma once

#include <QString>
#include <QTemporaryDir>

/// A certificate authority of the test's own, with openssl. What cannot be made ends the test run.
class TestAuthority
{
public:
    TestAuthority();

    /// The authority's own certificate.
    QString certificate() const { return path("authority.pem"); }
    /// A PEM file with certificate and key for 127.0.0.1.
    /// @param days from yesterday on; negative for one that has expired
    QString issue(const QString &name, int days = 30) const;

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString path(const char *name) const { return path(QLatin1String(name)); }

    QTemporaryDir m_folder;
};
