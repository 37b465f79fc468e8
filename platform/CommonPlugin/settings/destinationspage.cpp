#include "destinationspage.h"

#include "echocheck.h"
#include "transfertext.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int usualPort = 104;

} // namespace

DestinationsPage::DestinationsPage(QWidget *parent)
    : SettingsPage(tr("DICOM Destinations"), parent)
{
    build();
}

void DestinationsPage::build()
{
    auto *columns = new QHBoxLayout;
    columns->addLayout(buildList(), 1);
    columns->addLayout(buildFields(), 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    addHint(layout,
        tr("What Import Folder brings in is sent on to all of them; Send and Query/Retrieve let you choose. "
           "Takes "
           "effect at the next transfer."));
}

QLayout *DestinationsPage::buildList()
{
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("destinations"));
    m_list->setAccessibleName(tr("Destinations"));
    connect(m_list, &QListWidget::currentRowChanged, this, &DestinationsPage::showChosen);
    auto *addButton = new QPushButton(tr("&Add"), this);
    addButton->setObjectName(QStringLiteral("addDestination"));
    m_remove = new QPushButton(tr("Remo&ve"), this);
    m_remove->setObjectName(QStringLiteral("removeDestination"));
    connect(addButton, &QPushButton::clicked, this, &DestinationsPage::add);
    connect(m_remove, &QPushButton::clicked, this, &DestinationsPage::remove);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(addButton);
    buttons->addWidget(m_remove);
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    return layout;
}

QLayout *DestinationsPage::buildFields()
{
    auto *form = new QFormLayout;
    m_name = addField(form, tr("&Name:"), QStringLiteral("destinationName"));
    m_aeTitle = addField(form, tr("AE &title:"), QStringLiteral("aeTitle"));
    m_aeTitle->setMaxLength(DestinationSettings::longestAeTitle);
    m_ip = addField(form, tr("A&ddress:"), QStringLiteral("ip"));
    m_port = new QSpinBox(this);
    m_port->setObjectName(QStringLiteral("port"));
    m_port->setSpecialValueText(tr("none")); // at its least value
    m_port->setGroupSeparatorShown(false);
    form->addRow(tr("&Port:"), m_port);
    connect(m_port, QOverload<int>::of(&QSpinBox::valueChanged), this, &DestinationsPage::takeFields);
    m_check = new QPushButton(tr("&Check Connection"), this);
    m_check->setObjectName(QStringLiteral("echo"));
    m_check->setToolTip(tr("Ask this destination whether it answers"));
    connect(m_check, &QPushButton::clicked, this, &DestinationsPage::checkConnection);
    m_answer = new QLabel(this);
    m_answer->setObjectName(QStringLiteral("answer"));
    m_answer->setWordWrap(true);
    m_answer->setTextFormat(Qt::PlainText);
    form->addRow(QString(), m_check);
    form->addRow(QString(), m_answer);
    return form;
}

QLineEdit *DestinationsPage::addField(QFormLayout *form, const QString &caption, const QString &name)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(name);
    form->addRow(caption, field);
    connect(field, &QLineEdit::textEdited, this, &DestinationsPage::takeFields);
    return field;
}

void DestinationsPage::read()
{
    m_stored = DestinationSettings::read();
    m_destinations = m_stored;
    fill(m_destinations.isEmpty() ? -1 : 0);
}

void DestinationsPage::add()
{
    m_destinations.append({tr("New destination"), {}, {}, usualPort});
    fill(m_destinations.size() - 1);
    m_name->setFocus();
    m_name->selectAll();
}

void DestinationsPage::remove()
{
    const int chosen = m_list->currentRow();
    if (chosen >= 0) {
        m_destinations.remove(chosen);
        fill(qMin(chosen, m_destinations.size() - 1));
    }
}

void DestinationsPage::fill(int chosen)
{
    m_list->clear();
    for (const DicomDestination &destination : qAsConst(m_destinations)) {
        m_list->addItem(destination.name);
    }
    m_list->setCurrentRow(chosen);
    showChosen();
}

void DestinationsPage::showChosen()
{
    const int chosen = m_list->currentRow();
    const bool isOne = chosen >= 0 && chosen < m_destinations.size();
    const DicomDestination shown = isOne ? m_destinations[chosen] : DicomDestination();
    m_showing = true;
    m_name->setText(shown.name);
    m_aeTitle->setText(shown.aeTitle);
    m_ip->setText(shown.ip);
    // What was written by hand is shown as it is.
    m_port->setRange(qMin(0, shown.port), qMax(highestPort, shown.port));
    m_port->setValue(shown.port);
    m_showing = false;
    forgetAnswer();
    for (QWidget *field :
        std::initializer_list<QWidget *>{m_name, m_aeTitle, m_ip, m_port, m_remove, m_check}) {
        field->setEnabled(isOne);
    }
}

void DestinationsPage::takeFields()
{
    const int chosen = m_list->currentRow();
    if (m_showing || chosen < 0) {
        return;
    }
    forgetAnswer();
    m_destinations[chosen] = {m_name->text().trimmed(), m_aeTitle->text(), m_ip->text().trimmed(),
        m_port->value(), m_destinations[chosen].storedAs};
    m_list->item(chosen)->setText(m_destinations[chosen].name);
}

QString DestinationsPage::fault() const
{
    for (int i = 0; i < m_destinations.size(); ++i) {
        if (m_stored.contains(m_destinations[i]) && !m_destinations[i].storedAs.isEmpty()) {
            continue; // somebody wrote it by hand: it is left as it is
        }
        const DestinationFault fault = DestinationSettings::faultOf(m_destinations, i);
        if (fault != DestinationFault::None) {
            return TransferText::ofFault(fault, m_destinations[i].name);
        }
    }
    return {};
}

/// The node as it is typed, stored or not.
void DestinationsPage::checkConnection()
{
    const int chosen = m_list->currentRow();
    if (chosen < 0) {
        return;
    }
    const DicomDestination &asked = m_destinations[chosen];
    m_answer->setText(tr("Asking…"));
    delete m_echo;
    m_echo = new EchoCheck({asked.aeTitle, asked.ip, asked.port}, this);
    connect(m_echo, &EchoCheck::answered, this, [this](const NetworkFailure &failure, qint64 milliseconds) {
        m_answer->setText(TransferText::ofEcho(failure, milliseconds));
    });
    m_echo->start();
}

/// What was answered is not about what stands there now.
void DestinationsPage::forgetAnswer()
{
    delete m_echo;
    m_echo = nullptr;
    m_answer->clear();
}

QStringList DestinationsPage::write()
{
    return DestinationSettings::write(m_destinations) ? QStringList()
                                                      : QStringList{DestinationSettings::file()};
}
