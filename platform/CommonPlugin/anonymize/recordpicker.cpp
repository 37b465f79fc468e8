#include "recordpicker.h"

#include "createconnection.h"
#include "dicomdate.h"
#include "indexconnection.h"
#include "indexjob.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int typingPause = 250;

enum Column { NameColumn, NumberColumn, ImagesColumn, ColumnCount };

/// Dates and names are shown as people write them.
QString shownName(const QString &name)
{
    return QString(name)
        .replace(QLatin1Char('^'), QLatin1Char(' '))
        .section(QLatin1Char('='), 0, 0)
        .trimmed();
}

void addImages(QTreeWidgetItem *item, const QString &count)
{
    item->setText(ImagesColumn, count);
    item->setTextAlignment(ImagesColumn, Qt::AlignRight | Qt::AlignVCenter);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
}

} // namespace

Q_DECLARE_METATYPE(RecordListing)

RecordPicker::RecordPicker(QWidget *parent)
    : QWidget(parent)
{
    build();
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(&m_pause, &QTimer::timeout, this, &RecordPicker::reload);
    connect(m_search, &QLineEdit::textChanged, &m_pause, QOverload<>::of(&QTimer::start));
    connect(m_search, &QLineEdit::returnPressed, this, &RecordPicker::reload);
    connect(m_tree, &QTreeWidget::itemChanged, this, &RecordPicker::onItemChanged);
    reload();
}

void RecordPicker::build()
{
    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setClearButtonEnabled(true);
    m_search->setPlaceholderText(tr("Find patients by name or ID"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("records"));
    m_tree->setAccessibleName(tr("Patients and studies"));
    m_tree->setColumnCount(ColumnCount);
    m_tree->setHeaderLabels({tr("Patient, study"), tr("ID, date"), tr("Images")});
    m_tree->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    m_tree->header()->setStretchLastSection(false);
    const int character = m_tree->fontMetrics().averageCharWidth();
    m_tree->header()->resizeSection(NumberColumn, 13 * character);
    m_tree->setMinimumWidth(30 * character);
    m_tree->header()->setSectionResizeMode(ImagesColumn, QHeaderView::ResizeToContents);
    m_tree->setUniformRowHeights(true);
    m_tree->setMinimumHeight(m_tree->fontMetrics().height() * 6);
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("count"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_search);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_note);
    layout->addWidget(m_count);
}

void RecordPicker::choose(const QString &tableName, const QList<qlonglong> &keys)
{
    m_ticked.clear();
    const QSignalBlocker blocker(m_search);
    m_search->clear();
    m_chosen.tableName = tableName;
    m_chosen.keys = keys;
    reload();
    emit changed();
}

QList<qlonglong> RecordPicker::ticked() const
{
    QList<qlonglong> keys = m_ticked.values();
    std::sort(keys.begin(), keys.end());
    return keys;
}

void RecordPicker::reload()
{
    m_pause.stop();
    if (m_job) {
        m_job->stop();
        m_job.clear();
    }
    if (!QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).isOpen()) {
        m_tree->clear();
        note(tr("No index is open."));
        tell();
        return;
    }
    if (m_tree->topLevelItemCount() == 0) {
        note(tr("Reading…"));
    }
    RecordQuestion question = m_chosen;
    question.text = m_search->text().trimmed();
    question.ticked = m_ticked;
    read(question);
    tell();
}

void RecordPicker::read(const RecordQuestion &question)
{
    auto *job = new IndexJob(
        [path = databasePath(), question](const std::atomic<bool> &stop, const IndexJob::Progress &) {
            const IndexConnection connection(path);
            return QVariant::fromValue(connection.isOpen()
                    ? RecordListing::read(connection.database(), question, stop)
                    : RecordListing{question.ticked, {}});
        },
        this);
    m_job = job;
    connect(job, &IndexJob::finished, this, [this, job](const QVariant &result) {
        job->deleteLater();
        if (job == m_job) {
            m_job.clear();
            show(result.value<RecordListing>());
        }
    });
    job->start();
}

void RecordPicker::show(const RecordListing &listing)
{
    const bool isAnswer = !m_chosen.tableName.isEmpty();
    if (isAnswer) {
        m_ticked = listing.ticked;
        m_chosen = {};
    }
    m_isFilling = true;
    m_tree->clear();
    for (const ListedPatient &patient : listing.patients) {
        addPatient(patient);
    }
    m_isFilling = false;
    const QString text = m_search->text().trimmed();
    const int shown = listing.patients.size();
    note(shown >= RecordListing::mostPatients
            ? tr("Only %n patient(s) are listed. Type a name or an ID to find others.", nullptr, shown)
            : shown > 0      ? QString()
            : text.isEmpty() ? tr("The index has no patients yet. Import images first.")
                             : tr("No patient's name or ID has “%1” in it.").arg(text));
    tell();
    if (isAnswer) {
        emit changed();
    }
}

void RecordPicker::note(const QString &text)
{
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
}

void RecordPicker::addPatient(const ListedPatient &patient)
{
    auto *item = new QTreeWidgetItem(m_tree);
    const QString name = shownName(patient.name);
    item->setText(NameColumn, name.isEmpty() ? tr("(no name)") : name);
    item->setToolTip(NameColumn, item->text(NameColumn).toHtmlEscaped());
    item->setText(NumberColumn, patient.id);
    item->setToolTip(NumberColumn, patient.id.toHtmlEscaped());
    addImages(item, patient.images);
    for (const ListedStudy &study : patient.studies) {
        addStudy(item, study);
    }
    showPatient(item);
}

void RecordPicker::addStudy(QTreeWidgetItem *patient, const ListedStudy &study)
{
    auto *item = new QTreeWidgetItem(patient);
    const QString modalities = QString(study.modalities).replace(QLatin1Char('\\'), QLatin1String(", "));
    const QString text = study.description.trimmed();
    item->setText(NameColumn, text.isEmpty() ? modalities : QStringLiteral("%1 (%2)").arg(text, modalities));
    item->setText(NumberColumn, dateForDisplay(study.date));
    addImages(item, study.images);
    item->setCheckState(NameColumn, m_ticked.contains(study.key) ? Qt::Checked : Qt::Unchecked);
    item->setData(NameColumn, keyRole, study.key);
}

/// A patient is ticked where all studies are.
void RecordPicker::showPatient(QTreeWidgetItem *patient)
{
    int ticks = 0;
    for (int row = 0; row < patient->childCount(); ++row) {
        ticks += patient->child(row)->checkState(NameColumn) == Qt::Checked ? 1 : 0;
    }
    patient->setCheckState(NameColumn,
        ticks == 0                          ? Qt::Unchecked
            : ticks < patient->childCount() ? Qt::PartiallyChecked
                                            : Qt::Checked);
    if (ticks > 0 && ticks < patient->childCount()) {
        patient->setExpanded(true);
    }
}

void RecordPicker::onItemChanged(QTreeWidgetItem *item)
{
    if (m_isFilling) {
        return;
    }
    m_isFilling = true;
    if (!item->parent()) {
        for (int row = 0; row < item->childCount(); ++row) {
            item->child(row)->setCheckState(NameColumn, item->checkState(NameColumn));
        }
    }
    QTreeWidgetItem *patient = item->parent() ? item->parent() : item;
    for (int row = 0; row < patient->childCount(); ++row) {
        const qlonglong study = patient->child(row)->data(NameColumn, keyRole).toLongLong();
        if (patient->child(row)->checkState(NameColumn) == Qt::Checked) {
            m_ticked.insert(study);
        } else {
            m_ticked.remove(study);
        }
    }
    showPatient(patient);
    m_isFilling = false;
    tell();
    emit changed();
}

void RecordPicker::tell()
{
    m_count->setText(m_ticked.isEmpty() ? tr("Nothing is ticked yet.")
                                        : tr("%n study(ies) are ticked.", nullptr, m_ticked.size()));
}
