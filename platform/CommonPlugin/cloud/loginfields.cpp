#include "loginfields.h"

#include "authoritychoice.h"
#include "namedparts.h"
#include "passwordfield.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace NamedParts;

LoginFields::LoginFields(QWidget *parent)
    : QWidget(parent)
{
    build();
}

void LoginFields::build()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    buildModes(layout);
    m_cloudFields = new QWidget(this);
    m_address = lineEdit("address", tr("Address of the service"),
        tr("Where the DICOMweb service of your site is"), m_cloudFields);
    m_address->setPlaceholderText(QStringLiteral("https://"));
    m_user = lineEdit("user", tr("User"), tr("Your name at the service; empty to sign in by an access token"),
        m_cloudFields);
    m_user->setPlaceholderText(tr("empty for an access token"));
    m_remember = button<QCheckBox>("remember", tr("&Remember the password"),
        tr("Keep it in the secret store of the desktop"), m_cloudFields);
    m_rememberHint = hintLabel("rememberHint", m_cloudFields);
    m_plain = button<QCheckBox>("plain", tr("Allow an &unencrypted connection"),
        tr("Send the password although the address is http://"), m_cloudFields);
    m_plainHint = hintLabel("plainHint", m_cloudFields);
    m_plainHint->setText(tr("Whoever is on the way to this address can read the password and the images."));
    m_password = new PasswordField(m_cloudFields);
    m_authority = new AuthorityChoice(m_cloudFields);
    auto *form = new QFormLayout(m_cloudFields);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Service:"), m_address);
    form->addRow(tr("&User:"), m_user);
    auto *passwordLabel = new QLabel(tr("&Password:"), m_cloudFields);
    form->addRow(passwordLabel, m_password);
    passwordLabel->setBuddy(m_password);
    form->addRow(QString(), m_remember);
    form->addRow(QString(), m_rememberHint);
    form->addRow(QString(), m_plain);
    form->addRow(QString(), m_plainHint);
    form->addRow(QString(), m_authority);
    layout->addWidget(m_cloudFields);
    QWidget *previous = m_address;
    for (const char *name : {"user", "password", "reveal", "remember", "plain"}) {
        auto *next = findChild<QWidget *>(QLatin1String(name));
        setTabOrder(previous, next);
        previous = next;
    }
    connect(m_address, &QLineEdit::textEdited, this, &LoginFields::accountEdited);
    connect(m_user, &QLineEdit::textEdited, this, &LoginFields::accountEdited);
    connect(m_password, &PasswordField::edited, this, &LoginFields::changed);
    connect(m_plain, &QCheckBox::toggled, this, &LoginFields::refresh);
    connect(m_cloud, &QRadioButton::toggled, this, &LoginFields::refresh);
    refresh();
}

void LoginFields::buildModes(QVBoxLayout *layout)
{
    m_cloud = button<QRadioButton>("cloudUser", tr("&Cloud user"), tr("Sign in to a service"), this);
    m_local = button<QRadioButton>("localUser", tr("&Local user"), tr("Work without the cloud"), this);
    m_cloud->setChecked(true);
    m_localHint = hintLabel("localHint", this);
    m_localHint->setText(
        tr("Work with the images on this computer. Nothing is sent to the cloud or fetched from it, "
           "until you sign in."));
    auto *modes = new QHBoxLayout;
    modes->addWidget(m_cloud);
    modes->addWidget(m_local);
    modes->addStretch();
    layout->addLayout(modes);
    layout->addWidget(m_localHint);
}

void LoginFields::offerAuthority()
{
    m_authority->offer();
}

void LoginFields::showAccount(const CloudAccount &account)
{
    m_cloud->setChecked(true);
    m_address->setText(account.address);
    m_user->setText(account.user);
    m_remember->setChecked(account.remembers);
    m_plain->setChecked(account.mayBePlain);
    m_authority->begin(account.authorities);
    m_password->clear();
    refresh();
}

CloudAccount LoginFields::account() const
{
    CloudAccount account;
    account.address = m_address->text().trimmed();
    account.user = m_user->text().trimmed();
    account.remembers = m_remember->isChecked() && m_remember->isEnabled();
    account.mayBePlain = m_plain->isChecked();
    account.authorities = m_authority->file();
    return account;
}

bool LoginFields::isLocal() const
{
    return m_local->isChecked();
}

QString LoginFields::password() const
{
    return m_password->text();
}

void LoginFields::fillIn(const QString &password)
{
    m_password->fillIn(password);
    emit changed();
}

void LoginFields::clearPassword()
{
    m_password->clear();
}

void LoginFields::setRememberingRefused(const QString &reason)
{
    m_remember->setEnabled(reason.isEmpty());
    if (!reason.isEmpty()) {
        m_remember->setChecked(false);
    }
    m_rememberHint->setText(reason);
    m_rememberHint->setVisible(!reason.isEmpty());
}

void LoginFields::accountEdited()
{
    if (m_password->isFilledIn()) {
        m_password->clear();
    }
    refresh();
}

bool LoginFields::isComplete() const
{
    return isLocal() || (!m_address->text().trimmed().isEmpty() && !m_password->text().isEmpty());
}

void LoginFields::focusFirstEmpty()
{
    QWidget *field = m_password;
    if (!account().isAddressGood()) {
        field = m_address;
    } else if (m_user->text().isEmpty()) {
        field = m_user;
    }
    field->setFocus(Qt::OtherFocusReason);
}

void LoginFields::refresh()
{
    CloudAccount asked = account();
    asked.mayBePlain = false;
    const bool isPlain = asked.isAddressGood() && asked.service(QStringLiteral("any")).exposesCredentials();
    m_plain->setVisible(isPlain);
    m_plainHint->setVisible(isPlain);
    m_cloudFields->setVisible(!isLocal());
    m_localHint->setVisible(isLocal());
    emit changed();
}
