#include "passwordfield.h"

#include "namedparts.h"

#include <QHBoxLayout>
#include <QPushButton>

PasswordField::PasswordField(QWidget *parent)
    : QWidget(parent)
    , m_edit(NamedParts::lineEdit(
          "password", tr("Password"), tr("Your password at the service, or an access token"), this))
    , m_reveal(
          NamedParts::button<QPushButton>("reveal", tr("S&how"), tr("Show the password that is typed"), this))
{
    m_edit->setEchoMode(QLineEdit::Password);
    m_edit->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    setFocusProxy(m_edit);
    m_reveal->setCheckable(true);
    m_reveal->setAutoDefault(false);
    connect(m_reveal, &QPushButton::toggled, m_edit,
        [this](bool isShown) { m_edit->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password); });
    connect(m_edit, &QLineEdit::textEdited, this, [this](const QString &text) {
        setFilledIn(m_isFilledIn && !text.isEmpty());
        emit edited();
    });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_reveal);
}

QString PasswordField::text() const
{
    return m_edit->text();
}

void PasswordField::fillIn(const QString &password)
{
    m_edit->setText(password);
    setFilledIn(true);
}

void PasswordField::clear()
{
    m_edit->clear();
    setFilledIn(false);
    m_reveal->setChecked(false);
}

void PasswordField::setFilledIn(bool isFilledIn)
{
    m_isFilledIn = isFilledIn;
    m_reveal->setEnabled(!isFilledIn);
    if (isFilledIn) {
        m_reveal->setChecked(false);
    }
}
