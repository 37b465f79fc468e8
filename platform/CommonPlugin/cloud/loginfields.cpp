#include "loginfields.h"

#include "filechooser.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSslCertificate>
#include <QVBoxLayout>

namespace {

QLabel *hintLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

/// A control that assistive programs and pointers can ask about.
void describe(QWidget *control, const char *name, const QString &accessibleName, const QString &hint)
{
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    control->setToolTip(hint);
}

template <typename Button>
Button *button(const char *name, const QString &text, const QString &hint, QWidget *parent)
{
    auto *made = new Button(text, parent);
    describe(made, name, QString(text).remove(QLatin1Char('&')), hint);
    return made;
}

QLineEdit *lineEdit(const char *name, const QString &accessibleName, const QString &hint, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    describe(edit, name, accessibleName, hint);
    edit->setMaxLength(2048);
    return edit;
}

} // namespace

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
    auto *form = new QFormLayout(m_cloudFields);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Service:"), m_address);
    form->addRow(tr("&User:"), m_user);
    auto *passwordLabel = new QLabel(tr("&Password:"), m_cloudFields);
    form->addRow(passwordLabel, buildPassword());
    passwordLabel->setBuddy(m_password);
    form->addRow(QString(), m_remember);
    form->addRow(QString(), m_rememberHint);
    form->addRow(QString(), m_plain);
    form->addRow(QString(), m_plainHint);
    form->addRow(QString(), buildAuthority());
    layout->addWidget(m_cloudFields);
    QWidget *previous = m_address;
    for (const char *name : {"user", "password", "reveal", "remember", "plain"}) {
        auto *next = findChild<QWidget *>(QLatin1String(name));
        setTabOrder(previous, next);
        previous = next;
    }
    connect(m_address, &QLineEdit::textEdited, this, &LoginFields::accountEdited);
    connect(m_user, &QLineEdit::textEdited, this, &LoginFields::accountEdited);
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

QWidget *LoginFields::buildPassword()
{
    auto *row = new QWidget(m_cloudFields);
    m_password =
        lineEdit("password", tr("Password"), tr("Your password at the service, or an access token"), row);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    auto *reveal = button<QPushButton>("reveal", tr("S&how"), tr("Show the password that is typed"), row);
    reveal->setCheckable(true);
    reveal->setAutoDefault(false);
    connect(reveal, &QPushButton::toggled, m_password,
        [this](bool isShown) { m_password->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password); });
    connect(m_password, &QLineEdit::textEdited, this, [this](const QString &text) {
        setFilledIn(m_isFilledIn && !text.isEmpty());
        emit changed();
    });
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_password, 1);
    layout->addWidget(reveal);
    return row;
}

QWidget *LoginFields::buildAuthority()
{
    m_authorityRow = new QWidget(m_cloudFields);
    m_authorityName = new QLabel(m_authorityRow);
    m_authorityName->setTextFormat(Qt::PlainText);
    m_authorityName->setWordWrap(true);
    auto *choose = button<QPushButton>("authority", tr("&Trust an Authority…"),
        tr("Choose the certificate of the authority that your site's service is signed by"), m_authorityRow);
    choose->setAutoDefault(false);
    m_forgetAuthority = button<QPushButton>(
        "forgetAuthority", tr("&No Longer"), tr("Trust only the authorities of the system"), m_authorityRow);
    m_forgetAuthority->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, &LoginFields::chooseAuthority);
    connect(m_forgetAuthority, &QPushButton::clicked, this, [this] { setAuthority({}); });
    auto *layout = new QHBoxLayout(m_authorityRow);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_authorityName, 1);
    layout->addWidget(choose);
    layout->addWidget(m_forgetAuthority);
    return m_authorityRow;
}

void LoginFields::chooseAuthority()
{
    const QString file = FileChooser::toOpen(
        this, {tr("Trust an Authority"), m_authority, tr("Certificates (*.pem *.crt *.cer);;All files (*)")});
    if (file.isEmpty()) {
        return;
    }
    if (QSslCertificate::fromPath(file).isEmpty()) {
        m_authorityName->setText(tr("There is no certificate in %1.").arg(QFileInfo(file).fileName()));
        return;
    }
    setAuthority(file);
}

void LoginFields::setAuthority(const QString &file)
{
    m_authority = file;
    m_authorityName->setText(file.isEmpty() ? QString() : tr("Trusted: %1").arg(QFileInfo(file).fileName()));
    m_forgetAuthority->setVisible(!file.isEmpty());
    m_authorityRow->setVisible(!file.isEmpty() || m_authorityRow->isVisibleTo(m_cloudFields));
    emit changed();
}

void LoginFields::offerAuthority()
{
    m_authorityRow->show();
}

void LoginFields::showAccount(const CloudAccount &account)
{
    m_cloud->setChecked(true);
    m_address->setText(account.address);
    m_user->setText(account.user);
    m_remember->setChecked(account.remembers);
    m_plain->setChecked(account.mayBePlain);
    m_authorityRow->hide();
    setAuthority(account.authorities);
    clearPassword();
    refresh();
}

CloudAccount LoginFields::account() const
{
    CloudAccount account;
    account.address = m_address->text().trimmed();
    account.user = m_user->text().trimmed();
    account.remembers = m_remember->isChecked() && m_remember->isEnabled();
    account.mayBePlain = m_plain->isChecked();
    account.authorities = m_authority;
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
    m_password->setText(password);
    setFilledIn(true);
    emit changed();
}

void LoginFields::clearPassword()
{
    m_password->clear();
    setFilledIn(false);
    findChild<QPushButton *>(QStringLiteral("reveal"))->setChecked(false);
}

/// What comes from the secret store is used, and shown to nobody, nor what is left of it.
void LoginFields::setFilledIn(bool isFilledIn)
{
    m_isFilledIn = isFilledIn;
    auto *reveal = findChild<QPushButton *>(QStringLiteral("reveal"));
    reveal->setEnabled(!isFilledIn);
    if (isFilledIn) {
        reveal->setChecked(false);
    }
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
    if (m_isFilledIn) {
        clearPassword();
    }
    refresh();
}

bool LoginFields::isComplete() const
{
    return isLocal() || (!m_address->text().trimmed().isEmpty() && !m_password->text().isEmpty());
}

void LoginFields::focusFirstEmpty()
{
    QLineEdit *field = !account().isAddressGood() ? m_address
        : m_user->text().isEmpty()                ? m_user
                                                  : m_password;
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
