#include "recordpicker.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int mostPatients = 200;
constexpr int mostTicked = 2000;
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

QString shownDate(const QString &date)
{
    const QDate day = QDate::fromString(date, QStringLiteral("yyyyMMdd"));
    return day.isValid() ? day.toString(Qt::ISODate) : date;
}

QString keyList(const QSet<qlonglong> &keys, int most)
{
    QStringList texts;
    for (const qlonglong key : keys) {
        if (texts.size() < most) {
            texts.append(QString::number(key));
        }
    }
    return texts.join(QLatin1Char(','));
}

} // namespace

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

void RecordPicker::setTicked(const QList<qlonglong> &studies)
{
    m_ticked = QSet<qlonglong>(studies.begin(), studies.end());
    const QSignalBlocker blocker(m_search);
    m_search->clear();
    reload();
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
    m_tree->clear();
    if (!QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).isOpen()) {
        m_note->setText(tr("No index is open."));
        tell();
        return;
    }
    m_isFilling = true;
    const QString text = m_search->text().trimmed();
    if (text.isEmpty()) {
        addPatients(QStringLiteral("pk IN (SELECT patient_fk FROM generalstudy WHERE pk IN (%1))")
                        .arg(keyList(m_ticked, mostTicked)),
            {}, mostTicked);
        const int first = m_tree->topLevelItemCount();
        addPatients(QStringLiteral("pk NOT IN (SELECT patient_fk FROM generalstudy WHERE pk IN (%1))")
                        .arg(keyList(m_ticked, mostTicked)),
            {}, mostPatients - qMin(first, mostPatients));
    } else {
        addPatients(QStringLiteral("instr(folded(replace(PatientName, '^', ' ')), folded(?1)) > 0"
                                   " OR instr(folded(PatientID), folded(?1)) > 0"),
            text, mostPatients);
    }
    const int shown = m_tree->topLevelItemCount();
    m_note->setText(shown >= mostPatients
            ? tr("Only %n patient(s) are listed. Type a name or an ID to find others.", nullptr, mostPatients)
            : shown > 0      ? QString()
            : text.isEmpty() ? tr("The index has no patients yet. Import images first.")
                             : tr("No patient's name or ID has “%1” in it.").arg(text));
    m_note->setVisible(!m_note->text().isEmpty());
    m_isFilling = false;
    tell();
}

void RecordPicker::addPatients(const QString &condition, const QVariant &value, int most)
{
    QSqlQuery query;
    query.setForwardOnly(true);
    query.prepare(
        QStringLiteral("SELECT pk, PatientName, PatientID, NumberOfPatientRelatedInstances FROM patient"
                       " WHERE %1 ORDER BY updated_time DESC, pk DESC LIMIT %2")
            .arg(condition)
            .arg(most));
    if (value.isValid()) {
        query.addBindValue(value);
    }
    query.exec();
    while (query.next()) {
        auto *item = new QTreeWidgetItem(m_tree);
        const QString name = shownName(query.value(1).toString());
        item->setText(NameColumn, name.isEmpty() ? tr("(no name)") : name);
        item->setToolTip(NameColumn, item->text(NameColumn).toHtmlEscaped());
        item->setText(NumberColumn, query.value(2).toString());
        item->setToolTip(NumberColumn, item->text(NumberColumn).toHtmlEscaped());
        item->setText(ImagesColumn, query.value(3).toString());
        item->setTextAlignment(ImagesColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        addStudies(item, query.value(0).toLongLong());
        showPatient(item);
    }
}

void RecordPicker::addStudies(QTreeWidgetItem *patient, qlonglong key)
{
    QSqlQuery query;
    query.prepare(QStringLiteral("SELECT pk, StudyDescription, ModalitiesInStudy, StudyDate,"
                                 " NumberOfStudyRelatedInstances FROM generalstudy WHERE patient_fk = ?"
                                 " ORDER BY StudyDate DESC, pk"));
    query.addBindValue(key);
    query.exec();
    while (query.next()) {
        auto *item = new QTreeWidgetItem(patient);
        const qlonglong study = query.value(0).toLongLong();
        const QString modalities = query.value(2).toString().replace(QLatin1Char('\\'), QLatin1String(", "));
        const QString text = query.value(1).toString().trimmed();
        item->setText(
            NameColumn, text.isEmpty() ? modalities : QStringLiteral("%1 (%2)").arg(text, modalities));
        item->setText(NumberColumn, shownDate(query.value(3).toString()));
        item->setText(ImagesColumn, query.value(4).toString());
        item->setTextAlignment(ImagesColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(NameColumn, m_ticked.contains(study) ? Qt::Checked : Qt::Unchecked);
        item->setData(NameColumn, keyRole, study);
    }
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
}

void RecordPicker::tell()
{
    m_count->setText(m_ticked.isEmpty() ? tr("Nothing is ticked yet.")
                                        : tr("%n study(ies) are ticked.", nullptr, m_ticked.size()));
    emit changed();
}
