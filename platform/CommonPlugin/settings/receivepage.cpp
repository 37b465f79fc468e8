#include "receivepage.h"

#include "dicomdestination.h"
#include "settingsnotifier.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

ReceivePage::ReceivePage(QWidget *parent)
    : SettingsPage(tr("Receiving"), parent)
{
    build();
}

void ReceivePage::build()
{
    m_enabled = new QCheckBox(tr("&Receive images that others send"), this);
    m_enabled->setObjectName(QStringLiteral("receive"));
    m_aeTitle = new QLineEdit(this);
    m_aeTitle->setObjectName(QStringLiteral("ownAeTitle"));
    m_aeTitle->setMaxLength(DestinationSettings::longestAeTitle);
    m_address = new QComboBox(this);
    m_address->setObjectName(QStringLiteral("receiveAddress"));
    m_port = new QSpinBox(this);
    m_port->setObjectName(QStringLiteral("receivePort"));
    m_port->setRange(1, highestPort);
    m_port->setGroupSeparatorShown(false);
    m_callers = new QLineEdit(this);
    m_callers->setObjectName(QStringLiteral("receiveCallers"));
    m_callers->setPlaceholderText(tr("anybody"));
    m_private =
        new QCheckBox(tr("Also take objects of pri&vate kinds, which only some programs can show"), this);
    m_private->setObjectName(QStringLiteral("receivePrivate"));

    connect(m_enabled, &QCheckBox::toggled, this, &ReceivePage::enableFields);

    auto *own = new QFormLayout;
    own->addRow(tr("AE &title of this workstation:"), m_aeTitle);
    auto *form = new QFormLayout;
    form->addRow(tr("Reac&hable from:"), m_address);
    form->addRow(tr("&Port:"), m_port);
    form->addRow(tr("A&ccept only from:"), m_callers);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(own);
    layout->addWidget(m_enabled);
    layout->addLayout(form);
    layout->addWidget(m_private);
    addHint(layout,
        tr("Sending, searching and retrieving use the same AE title. Name those who may send by their AE "
           "titles, "
           "parted by commas; with none named, everybody may. What is received is kept in the store beside "
           "the "
           "index. Takes effect at once. Upper and lower case count in AE titles."));
    layout->addStretch();
}

/// The AE title is used for sending, too.
void ReceivePage::enableFields()
{
    for (QWidget *field : std::initializer_list<QWidget *>{m_address, m_port, m_callers, m_private}) {
        field->setEnabled(m_enabled->isChecked());
    }
}

void ReceivePage::read()
{
    m_stored = ReceiveSettings::read();
    m_enabled->setChecked(m_stored.enabled);
    m_aeTitle->setText(m_stored.aeTitle);
    m_address->clear();
    m_address->addItem(tr("this computer only"), QLatin1String(ReceiveSettings::thisComputer));
    m_address->addItem(tr("the whole network"), QLatin1String(ReceiveSettings::wholeNetwork));
    if (m_address->findData(m_stored.address) < 0) {
        m_address->addItem(m_stored.address, m_stored.address); // written by hand: one of several networks
    }
    m_address->setCurrentIndex(m_address->findData(m_stored.address));
    m_port->setValue(m_stored.port);
    m_callers->setText(m_stored.callers.join(QStringLiteral(", ")));
    m_private->setChecked(m_stored.acceptPrivateClasses);
    enableFields();
    m_firstShown = shown();
}

ReceiveSettings ReceivePage::shown() const
{
    ReceiveSettings settings = m_stored;
    settings.enabled = m_enabled->isChecked();
    settings.aeTitle = m_aeTitle->text().trimmed();
    settings.address = m_address->currentData().toString();
    settings.port = m_port->value();
    settings.callers.clear();
    const QStringList callers = m_callers->text().split(QLatin1Char(','));
    for (const QString &caller : callers) {
        if (!caller.trimmed().isEmpty()) {
            settings.callers.append(caller.trimmed());
        }
    }
    settings.acceptPrivateClasses = m_private->isChecked();
    return settings;
}

/// What is stored, with what the user has changed: a field may show less than what stands in the file.
ReceiveSettings ReceivePage::wanted() const
{
    const ReceiveSettings now = shown();
    ReceiveSettings settings = m_stored;
    const auto take = [&](auto field) {
        if (now.*field != m_firstShown.*field) {
            settings.*field = now.*field;
        }
    };
    take(&ReceiveSettings::enabled);
    take(&ReceiveSettings::aeTitle);
    take(&ReceiveSettings::address);
    take(&ReceiveSettings::port);
    take(&ReceiveSettings::callers);
    take(&ReceiveSettings::acceptPrivateClasses);
    return settings;
}

/// Of what is shown, that which the user can change: the rest is judged when receiving is switched on.
ReceiveSettings ReceivePage::judged() const
{
    const ReceiveSettings settings = shown();
    if (settings.enabled) {
        return settings;
    }
    ReceiveSettings own;
    own.aeTitle = settings.aeTitle;
    own.address = QLatin1String(ReceiveSettings::thisComputer);
    return own;
}

QString ReceivePage::fault() const
{
    if (shown() == m_firstShown) {
        return {}; // what stood there before is not this page's to judge
    }
    const ReceiveSettings settings = judged();
    switch (settings.fault()) {
    case ReceiveSettings::Fault::BadAeTitle:
        return tr(
            "The AE title of this workstation must be 1 to 16 characters of plain ASCII without backslash.");
    case ReceiveSettings::Fault::BadAddress:
        return tr("%1 is no numeric address.").arg(settings.address);
    case ReceiveSettings::Fault::BadPort:
        return tr("The port must be 1 to 65535.");
    case ReceiveSettings::Fault::BadCaller:
        return tr("Each of those who may send must be an AE title of 1 to 16 characters of plain ASCII "
                  "without backslash.");
    case ReceiveSettings::Fault::None:
        break;
    }
    return {};
}

QStringList ReceivePage::write()
{
    const ReceiveSettings settings = wanted();
    if (settings == m_stored) {
        return {};
    }
    if (!settings.write()) {
        return {ReceiveSettings::file()};
    }
    m_stored = settings;
    m_firstShown = shown();
    emit SettingsNotifier::instance()->receivingChanged();
    return {};
}
