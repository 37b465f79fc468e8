#include "destinationlist.h"

#include "echocheck.h"
#include "listheight.h"
#include "plaintooltip.h"
#include "transfertext.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int visibleRows = 3;
constexpr int nameCharacters = 22;
constexpr int titleCharacters = 16;
constexpr int addressCharacters = 28;

/// What a check asks; the name is only ours.
QString nodeOf(const DicomDestination &destination)
{
    return QStringLiteral("%1\n%2\n%3").arg(destination.aeTitle, destination.ip).arg(destination.port);
}

} // namespace

DestinationList::DestinationList(QWidget *parent)
    : QWidget(parent)
{
    build();
}

DestinationList::~DestinationList() = default;

void DestinationList::build()
{
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("destinations"));
    m_list->setAccessibleName(tr("Destinations"));
    m_list->setHeaderLabels({tr("Destination"), tr("AE title"), tr("Address"), tr("Connection")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setTabKeyNavigation(false);
    const int character = m_list->fontMetrics().averageCharWidth();
    m_list->setColumnWidth(NameColumn, nameCharacters * character);
    m_list->setColumnWidth(AeTitleColumn, titleCharacters * character);
    m_list->setColumnWidth(AddressColumn, addressCharacters * character);
    m_list->setMinimumHeight(heightOfRows(*m_list, visibleRows));
    connect(m_list, &QTreeWidget::itemChanged, this, &DestinationList::chosenChanged);
    m_check = new QPushButton(tr("&Check Connection"), this);
    m_check->setObjectName(QStringLiteral("echo"));
    m_check->setToolTip(
        tr("Ask the checked destinations, or all where none is checked, whether they answer"));
    m_check->setAutoDefault(false);
    connect(m_check, &QPushButton::clicked, this, &DestinationList::checkConnections);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_check, 0, Qt::AlignLeft);
}

void DestinationList::setDestinations(const QVector<DicomDestination> &destinations)
{
    QSet<QString> kept;
    for (const DicomDestination &destination : chosen()) {
        kept.insert(destination.name);
    }
    for (const DicomDestination &destination : qAsConst(m_destinations)) {
        if (!destinations.contains(destination)) {
            m_results.remove(destination.name); // what was asked is not what stands there now
        }
    }
    const bool isFirst = m_destinations.isEmpty();
    m_destinations = destinations;
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
        for (int place = 0; place < destinations.size(); ++place) {
            QTreeWidgetItem *item = makeItem(place);
            const bool isChosen =
                kept.contains(destinations[place].name) || (isFirst && destinations.size() == 1);
            if (isUsable(place)) {
                item->setCheckState(NameColumn, isChosen ? Qt::Checked : Qt::Unchecked);
            }
            m_list->addTopLevelItem(item);
        }
        m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    m_check->setEnabled(!destinations.isEmpty());
    emit chosenChanged();
}

QTreeWidgetItem *DestinationList::makeItem(int place)
{
    const DicomDestination &destination = m_destinations[place];
    auto *item = new QTreeWidgetItem({destination.name, destination.aeTitle,
        QStringLiteral("%1:%2").arg(destination.ip).arg(destination.port),
        m_results.value(nodeOf(destination))});
    if (isUsable(place)) {
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    } else {
        item->setFlags(Qt::ItemIsSelectable);
        const DestinationFault fault = DestinationSettings::faultOf(m_destinations, place);
        item->setText(ConnectionColumn, TransferText::ofFault(fault, destination.name));
    }
    item->setToolTip(ConnectionColumn, plainToolTip(item->text(ConnectionColumn)));
    return item;
}

bool DestinationList::isUsable(int place) const
{
    switch (DestinationSettings::faultOf(m_destinations, place)) {
    case DestinationFault::BadAeTitle:
    case DestinationFault::NoAddress:
    case DestinationFault::BadPort:
        return false;
    default: // its name was good enough to be read
        return true;
    }
}

QVector<DicomDestination> DestinationList::chosen() const
{
    QVector<DicomDestination> chosen;
    for (int place = 0; place < m_destinations.size(); ++place) {
        const QTreeWidgetItem *item = m_list->topLevelItem(place);
        if (isUsable(place) && item && item->checkState(NameColumn) == Qt::Checked) {
            chosen.append(m_destinations[place]);
        }
    }
    return chosen;
}

void DestinationList::checkConnections()
{
    const QVector<DicomDestination> checked = chosen();
    for (int place = 0; place < m_destinations.size(); ++place) {
        if (isUsable(place) && (checked.isEmpty() || checked.contains(m_destinations[place]))) {
            check(place);
        }
    }
}

void DestinationList::check(int place)
{
    const DicomDestination destination = m_destinations[place];
    const QString node = nodeOf(destination);
    if (m_running.contains(node)) {
        return;
    }
    tell(node, tr("Asking…"));
    auto *echo = new EchoCheck({destination.aeTitle, destination.ip, destination.port}, this);
    m_running.insert(node, echo);
    connect(echo, &EchoCheck::answered, this,
        [this, echo, node](const NetworkFailure &failure, qint64 milliseconds) {
            m_running.remove(node);
            echo->deleteLater();
            tell(node, TransferText::ofEcho(failure, milliseconds));
        });
    echo->start();
}

void DestinationList::tell(const QString &node, const QString &result)
{
    m_results.insert(node, result);
    const QSignalBlocker blocker(m_list);
    for (int place = 0; place < m_destinations.size(); ++place) {
        if (nodeOf(m_destinations[place]) == node) {
            m_list->topLevelItem(place)->setText(ConnectionColumn, result);
            m_list->topLevelItem(place)->setToolTip(ConnectionColumn, plainToolTip(result));
        }
    }
}
