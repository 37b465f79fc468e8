#include "cloudpage.h"

#include "configlocation.h"
#include "inifile.h"

#include <QDir>
#include <QFormLayout>
#include <QLineEdit>
#include <QSettings>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr char addressKey[] = "currentusername/cloud";

QString userFile()
{
    return QDir::cleanPath(ConfigLocation::unchecked(QLatin1String(ConfigKey::userNameIni)));
}

QString storedAddress()
{
    return QSettings(userFile(), QSettings::IniFormat).value(QLatin1String(addressKey)).toString();
}

} // namespace

CloudPage::CloudPage(QWidget *parent)
    : SettingsPage(tr("Cloud"), parent)
    , m_address(new QLineEdit(this))
{
    m_address->setObjectName(QStringLiteral("cloud"));
    m_address->setPlaceholderText(QStringLiteral("https://"));
    auto *form = new QFormLayout;
    form->addRow(tr("A&ddress:"), m_address);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    addHint(layout,
        tr("Where studies are uploaded to. Takes effect at the next sign-in; signing out of the cloud "
           "clears it."));
    layout->addStretch();
}

void CloudPage::read()
{
    m_address->setText(storedAddress());
}

QString CloudPage::fault() const
{
    const QString text = m_address->text().trimmed();
    const QUrl url(text, QUrl::StrictMode);
    const bool isWeb = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    // What stood there before is not this page's to judge.
    return text.isEmpty() || text == storedAddress() || (url.isValid() && isWeb && !url.host().isEmpty())
        ? QString()
        : tr("The address of the cloud must begin with https:// or http:// and name a host.");
}

QStringList CloudPage::write()
{
    const QString text = m_address->text().trimmed();
    return text == storedAddress() || IniFile::setValue(userFile(), QLatin1String(addressKey), text)
        ? QStringList()
        : QStringList{userFile()};
}
