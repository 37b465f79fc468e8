#include "authoritychoice.h"

#include "filechooser.h"
#include "namedparts.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSslCertificate>

AuthorityChoice::AuthorityChoice(QWidget *parent)
    : QWidget(parent)
    , m_name(new QLabel(this))
    , m_forget(NamedParts::button<QPushButton>(
          "forgetAuthority", tr("&No Longer"), tr("Trust only the authorities of the system"), this))
{
    m_name->setTextFormat(Qt::PlainText);
    m_name->setWordWrap(true);
    auto *choose = NamedParts::button<QPushButton>("authority", tr("&Trust an Authority…"),
        tr("Choose the certificate of the authority that your site's service is signed by"), this);
    choose->setAutoDefault(false);
    m_forget->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, &AuthorityChoice::choose);
    connect(m_forget, &QPushButton::clicked, this, [this] { setFile({}); });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_name, 1);
    layout->addWidget(choose);
    layout->addWidget(m_forget);
    setTabOrder(choose, m_forget);
    begin({});
}

void AuthorityChoice::begin(const QString &file)
{
    setFile(file);
    setVisible(!file.isEmpty());
}

void AuthorityChoice::choose()
{
    const QString file = FileChooser::toOpen(
        this, {tr("Trust an Authority"), m_file, tr("Certificates (*.pem *.crt *.cer);;All files (*)")});
    if (file.isEmpty()) {
        return;
    }
    if (QSslCertificate::fromPath(file).isEmpty()) {
        m_name->setText(tr("There is no certificate in %1.").arg(QFileInfo(file).fileName()));
        return;
    }
    setFile(file);
}

void AuthorityChoice::setFile(const QString &file)
{
    m_file = file;
    m_name->setText(file.isEmpty() ? QString() : tr("Trusted: %1").arg(QFileInfo(file).fileName()));
    m_forget->setVisible(!file.isEmpty());
}
