#include "dicomsend.h"

#include "destinationlist.h"
#include "firstwindowsize.h"
#include "listheight.h"
#include "personname.h"
#include "sendnotifier.h"
#include "sendprogresspanel.h"
#include "swimconfig.h"

#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <numeric>

namespace {

constexpr QSize firstSize{920, 680};
constexpr int visibleRecords = 1; ///< at least; the lists below fit a low screen then
constexpr int namedPatients = 3; ///< by the label of a send
constexpr int nameCharacters = 44;
constexpr int modalityCharacters = 14;
enum RecordColumn { NameColumn, ModalityColumn, CountColumn };

/// How many files each name has. A group stands for a patient, but has no name: patients of one name share
/// it, and a selection of studies is a single group. Empty where it cannot be told.
QVector<int> countsOf(const QStringList &names, const QVector<QStringList> &groups)
{
    QVector<int> counts;
    for (const QStringList &group : groups) {
        if (!group.isEmpty()) { // nobody's name came with it
            counts.append(group.size());
        }
    }
    if (names.size() == 1 && !counts.isEmpty()) {
        return {std::accumulate(counts.begin(), counts.end(), 0)};
    }
    return counts.size() == names.size() ? counts : QVector<int>();
}

} // namespace

dicomSend::dicomSend(QWidget *parent)
    : QDialog(parent)
{
    build();
    setSendServiceInfo();
}

dicomSend::~dicomSend() = default;

void dicomSend::build()
{
    setObjectName(QStringLiteral("dicomSend"));
    setWindowTitle(tr("Send Images"));
    resize(firstWindowSize(this, firstSize));
    m_progress = new SendProgressPanel(this);
    connect(m_progress, &SendProgressPanel::sendingChanged, this, &dicomSend::askAnew);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildRecords(), 2);
    layout->addWidget(buildDestinations(), 3);
    layout->addWidget(m_progress, 4);
    layout->addLayout(buildButtons());
}

QWidget *dicomSend::buildRecords()
{
    auto *box = new QGroupBox(tr("What is sent"), this);
    m_records = new QTreeWidget(box);
    m_records->setObjectName(QStringLiteral("records"));
    m_records->setAccessibleName(tr("Patients whose images are sent"));
    m_records->setHeaderLabels({tr("Patient"), tr("Modality"), tr("Files")});
    m_records->setRootIsDecorated(false);
    m_records->setUniformRowHeights(true);
    m_records->setMinimumHeight(heightOfRows(*m_records, visibleRecords));
    const int character = fontMetrics().averageCharWidth();
    m_records->setColumnWidth(NameColumn, nameCharacters * character);
    m_records->setColumnWidth(ModalityColumn, modalityCharacters * character);
    m_total = new QLabel(box);
    m_total->setObjectName(QStringLiteral("total"));
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(m_records, 1);
    layout->addWidget(m_total);
    return box;
}

QWidget *dicomSend::buildDestinations()
{
    auto *box = new QGroupBox(tr("Where to"), this);
    m_destinations = new DestinationList(box);
    connect(m_destinations, &DestinationList::chosenChanged, this, [this] {
        m_isAsked = false;
        enableSend();
    });
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(m_destinations);
    return box;
}

QLayout *dicomSend::buildButtons()
{
    m_obstacle = new QLabel(this);
    m_obstacle->setObjectName(QStringLiteral("obstacle"));
    m_obstacle->setWordWrap(true);
    auto *settings = new QPushButton(tr("Se&t Up Destinations…"), this);
    settings->setObjectName(QStringLiteral("setUp"));
    settings->setAutoDefault(false);
    connect(settings, &QPushButton::clicked, this,
        [] { swimconfig::instance()->showPage(swimconfig::Destinations); });
    m_send = new QPushButton(tr("&Send"), this);
    m_send->setObjectName(QStringLiteral("send"));
    m_send->setDefault(true);
    connect(m_send, &QPushButton::clicked, this, &dicomSend::send);
    auto *close = new QPushButton(tr("Close"), this);
    close->setObjectName(QStringLiteral("close"));
    close->setToolTip(tr("What is being sent goes on"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    auto *layout = new QHBoxLayout;
    layout->addWidget(m_obstacle, 1);
    layout->addWidget(settings);
    layout->addWidget(m_send);
    layout->addWidget(close);
    return layout;
}

void dicomSend::setseriesSuccessCount()
{
    m_progress->count();
}

void dicomSend::setSendServiceInfo()
{
    const QVector<DicomDestination> destinations = DestinationSettings::read();
    if (destinations != m_destinations->destinations() || destinations.isEmpty()) {
        m_destinations->setDestinations(destinations);
    }
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link this signature
void dicomSend::setPatientInfo(QStringList names, QStringList modalities, QVector<QStringList> files)
{
    m_files.clear();
    for (const QStringList &group : qAsConst(files)) {
        m_files += group;
    }
    m_isAsked = false;
    showRecords(names, modalities, countsOf(names, files));
    enableSend();
}

void dicomSend::showRecords(
    const QStringList &names, const QStringList &modalities, const QVector<int> &counts)
{
    const QLocale locale;
    m_records->clear();
    m_patients.clear();
    QList<QTreeWidgetItem *> items;
    for (int i = 0; i < names.size(); ++i) {
        const QString shown = personNameForDisplay(names[i]);
        const QString name = shown.isEmpty() ? tr("(no name)") : shown;
        m_patients.append(name);
        const QString count = i < counts.size() ? locale.toString(counts[i]) : QString();
        items.append(new QTreeWidgetItem({name, modalities.value(i), count}));
    }
    m_records->addTopLevelItems(items);
    m_total->setText(
        tr("%1, %2", "patients, files")
            .arg(tr("%Ln patient(s)", nullptr, names.size()), tr("%Ln file(s)", nullptr, m_files.size())));
}

void dicomSend::send()
{
    if (!obstacle().isEmpty()) {
        return;
    }
    qint64 untold = 0;
    for (const DicomDestination &destination : m_destinations->chosen()) {
        const auto ask = [this, &destination] {
            emit sendDicomfiles(m_files, destination.aeTitle, destination.ip, destination.port);
        };
        untold += SendNotifier::instance()->request(ask, labelFor(destination.name)) > 0 ? 0 : m_files.size();
    }
    m_isAsked = true;
    if (untold > 0) {
        m_progress->expect(untold);
    }
    enableSend();
}

SendLabel dicomSend::labelFor(const QString &destination) const
{
    return {destination, m_patients.mid(0, namedPatients), m_patients.size()};
}

/// What was sent may be sent again.
void dicomSend::askAnew()
{
    if (!m_progress->isSending()) {
        m_isAsked = false;
    }
    enableSend();
}

void dicomSend::enableSend()
{
    const QString text = obstacle();
    m_obstacle->setText(text);
    m_send->setEnabled(text.isEmpty());
    m_send->setToolTip(text);
}

/// Why nothing can be sent now.
QString dicomSend::obstacle() const
{
    if (m_files.isEmpty()) {
        return tr("Nothing that has images is selected.");
    }
    if (m_destinations->destinations().isEmpty()) {
        return tr("No destination is set up.");
    }
    if (m_destinations->chosen().isEmpty()) {
        return tr("Check at least one destination.");
    }
    if (m_isAsked) {
        return tr("These images are on their way. Choose others, or another destination, to send more.");
    }
    return {};
}

/// The settings may have been changed meanwhile.
void dicomSend::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        setSendServiceInfo();
    }
    QDialog::changeEvent(event);
}
