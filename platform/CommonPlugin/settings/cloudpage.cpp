#include "cloudpage.h"

#include "cloudaccount.h"
#include "inifile.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSettings>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr char addressKey[] = "currentusername/cloud";
constexpr char plainKey[] = "cloudservice/plain";
constexpr int highestPort = 65535;
constexpr int usualProxyPort = 8080;

QVariant stored(const char *key)
{
    return QSettings(CloudAccount::file(), QSettings::IniFormat).value(QLatin1String(key));
}

QString storedAddress()
{
    return stored(addressKey).toString();
}

} // namespace

CloudPage::CloudPage(QWidget *parent)
    : SettingsPage(tr("Cloud"), parent)
{
    build();
}

void CloudPage::build()
{
    m_address = new QLineEdit(this);
    m_address->setObjectName(QStringLiteral("cloud"));
    m_address->setPlaceholderText(QStringLiteral("https://"));
    m_plain = new QCheckBox(tr("Allow passwords to travel &unencrypted to http:// addresses"), this);
    m_plain->setObjectName(QStringLiteral("cloudPlain"));
    m_kind = new QComboBox(this);
    m_kind->setObjectName(QStringLiteral("cloudProxy"));
    for (const QString &kind : {tr("as the system says"), tr("none"), tr("HTTP"), tr("SOCKS 5")}) {
        m_kind->addItem(kind);
    }
    m_host = new QLineEdit(this);
    m_host->setObjectName(QStringLiteral("cloudProxyHost"));
    m_port = new QSpinBox(this);
    m_port->setObjectName(QStringLiteral("cloudProxyPort"));
    m_port->setRange(1, highestPort);
    m_port->setGroupSeparatorShown(false);
    connect(m_kind, qOverload<int>(&QComboBox::currentIndexChanged), this, &CloudPage::enableProxy);
    auto *form = new QFormLayout;
    form->addRow(tr("A&ddress:"), m_address);
    form->addRow(QString(), m_plain);
    form->addRow(tr("Pro&xy:"), m_kind);
    form->addRow(tr("Proxy's &host:"), m_host);
    form->addRow(tr("Proxy's por&t:"), m_port);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    addHint(layout,
        tr("Where studies are uploaded to. Takes effect at the next sign-in; signing out of the cloud "
           "clears the address."));
    layout->addStretch();
}

void CloudPage::enableProxy()
{
    const bool isOwn = m_kind->currentIndex() >= int(CloudProxy::Kind::Http);
    m_host->setEnabled(isOwn);
    m_port->setEnabled(isOwn);
}

CloudProxy CloudPage::proxy() const
{
    return {CloudProxy::Kind(m_kind->currentIndex()), m_host->text().trimmed(), quint16(m_port->value())};
}

void CloudPage::read()
{
    const CloudProxy proxy = CloudProxy::read();
    m_address->setText(storedAddress());
    m_plain->setChecked(stored(plainKey).toBool());
    m_kind->setCurrentIndex(int(proxy.kind));
    m_host->setText(proxy.host);
    m_port->setValue(proxy.port == 0 ? usualProxyPort : proxy.port);
    enableProxy();
}

QString CloudPage::fault() const
{
    CloudAccount account;
    account.address = m_address->text().trimmed();
    // What stood there before is not this page's to judge.
    if (!account.address.isEmpty() && account.address != storedAddress() && !account.isAddressGood()) {
        return tr(
            "The address of the cloud must begin with https:// or http:// and name a host, without a user or "
            "a password.");
    }
    return m_host->isEnabled() && proxy().host.isEmpty() ? tr("The proxy has no host.") : QString();
}

QStringList CloudPage::write()
{
    const QString text = m_address->text().trimmed();
    const QString file = CloudAccount::file();
    CloudProxy before = CloudProxy::read();
    before.port = before.port == 0 ? usualProxyPort : before.port;
    const bool isGood = (text == storedAddress() || IniFile::setValue(file, QLatin1String(addressKey), text))
        && (m_plain->isChecked() == stored(plainKey).toBool()
            || IniFile::setValue(file, QLatin1String(plainKey), m_plain->isChecked()))
        && (proxy() == before || proxy().write());
    return isGood ? QStringList() : QStringList{file};
}
