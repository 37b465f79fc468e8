#include "archivemodel.h"

#include "archivetext.h"
#include "dicomdate.h"
#include "personname.h"
#include "textfold.h"

#include <algorithm>

Q_DECLARE_METATYPE(QueryRecord)

namespace {

enum Role {
    LevelRole = Qt::UserRole,
    RecordRole,
    ListedRole, ///< of a study: its series were asked for
    HeldRole ///< of a study or series: images in the index
};

/// Two patients of one number are two where their names differ.
QString numberAndName(const QueryRecord &study)
{
    return study.value(QueryTag::patientId) + QChar(0x1f) + foldedName(study.value(QueryTag::patientName));
}

/// Or their birth dates, or who has issued the number. Archives need not tell these of studies.
bool isSame(const QueryRecord &patient, const QueryRecord &study, bool mayLack)
{
    const auto agree = [&](quint32 tag) {
        const QString value = study.value(tag);
        return value == patient.value(tag) || (mayLack && value.isEmpty());
    };
    return agree(QueryTag::birthDate) && agree(QueryTag::issuerOfPatientId);
}

QString orElse(const QString &text, const QString &otherwise)
{
    return text.isEmpty() ? otherwise : text;
}

QString listed(const QString &values)
{
    return QString(values).replace(QLatin1Char('\\'), QStringLiteral(", "));
}

} // namespace

ArchiveModel::ArchiveModel(QObject *parent)
    : QStandardItemModel(0, ColumnCount, parent)
{
    setHorizontalHeaderLabels({tr("Patient, study, series"), tr("ID, accession no."), tr("Birth date"),
        tr("Examined on"), tr("Modality"), tr("Series"), tr("Images"), tr("In the index")});
}

void ArchiveModel::clearAll()
{
    m_patients.clear();
    m_studies.clear();
    m_series.clear();
    removeRows(0, rowCount());
}

QList<QStandardItem *> ArchiveModel::row(
    const QStringList &texts, RecordLevel level, const QueryRecord &record)
{
    QList<QStandardItem *> items;
    for (int column = 0; column < ColumnCount; ++column) {
        auto *item = new QStandardItem(texts.value(column));
        item->setEditable(false);
        items.append(item);
    }
    items.first()->setData(int(level), LevelRole);
    items.first()->setData(QVariant::fromValue(record), RecordRole);
    return items;
}

/// The patient that a study is of; where it tells too little, the only one that it may be of.
QStandardItem *ArchiveModel::knownPatient(const QueryRecord &study) const
{
    QVector<QStandardItem *> possible;
    for (QStandardItem *item : m_patients.value(numberAndName(study))) {
        const QueryRecord patient = item->data(RecordRole).value<QueryRecord>();
        if (isSame(patient, study, false)) {
            return item;
        }
        if (isSame(patient, study, true)) {
            possible.append(item);
        }
    }
    return possible.size() == 1 ? possible.first() : nullptr;
}

QStandardItem *ArchiveModel::patientItem(const QueryRecord &study)
{
    QStandardItem *patient = knownPatient(study);
    if (!patient) {
        const QString name = personNameForDisplay(study.value(QueryTag::patientName));
        const QString birthDate = dateForDisplay(study.value(QueryTag::birthDate));
        const auto items = row({orElse(name, tr("(no name)")), study.value(QueryTag::patientId), birthDate},
            RecordLevel::Patient, study);
        patient = items.first();
        m_patients[numberAndName(study)].append(patient);
        appendRow(items);
    }
    return patient;
}

void ArchiveModel::addPatients(const QVector<QueryRecord> &patients)
{
    for (const QueryRecord &patient : patients) {
        patientItem(patient);
    }
}

void ArchiveModel::addStudies(const QVector<QueryRecord> &studies)
{
    for (const QueryRecord &study : studies) {
        const QString uid = study.value(QueryTag::studyUid);
        if (m_studies.contains(uid)) {
            continue;
        }
        const auto items = row({orElse(study.value(QueryTag::studyDescription), tr("(no description)")),
                                   study.value(QueryTag::accessionNumber), QString(),
                                   dateForDisplay(study.value(QueryTag::studyDate)),
                                   listed(study.value(QueryTag::modalitiesInStudy)),
                                   study.value(QueryTag::studySeries), study.value(QueryTag::studyInstances)},
            RecordLevel::Study, study);
        patientItem(study)->appendRow(items);
        m_studies.insert(uid, items.first());
    }
}

/// Rows below a study, and what is known of them.
void ArchiveModel::removeSeries(QStandardItem *study)
{
    for (int row = 0; row < study->rowCount(); ++row) {
        const QStandardItem *item = study->child(row);
        const QString uid = item->data(RecordRole).value<QueryRecord>().value(QueryTag::seriesUid);
        if (m_series.value(uid) == item) {
            m_series.remove(uid);
        }
    }
    study->removeRows(0, study->rowCount());
}

void ArchiveModel::setSeries(
    const QString &studyUid, const QVector<QueryRecord> &series, const QString &problem)
{
    QStandardItem *study = m_studies.value(studyUid);
    if (!study) {
        return;
    }
    removeSeries(study);
    QueryRecord shared = study->data(RecordRole).value<QueryRecord>();
    for (const QueryRecord &one : series) {
        QueryRecord record = shared;
        for (auto value = one.begin(); value != one.end(); ++value) {
            record.insert(value.key(), value.value());
        }
        record.insert(QueryTag::studyUid, studyUid); // whatever the answer said
        const auto items = row(
            {orElse(one.value(QueryTag::seriesDescription), tr("(no description)")),
                one.value(QueryTag::seriesNumber), QString(), dateForDisplay(one.value(QueryTag::seriesDate)),
                one.value(QueryTag::modality), QString(), one.value(QueryTag::seriesInstances)},
            RecordLevel::Series, record);
        study->appendRow(items);
        m_series.insert(one.value(QueryTag::seriesUid), items.first());
    }
    if (study->rowCount() == 0) {
        auto *note = new QStandardItem(problem.isEmpty() ? tr("No series") : problem);
        note->setEditable(false);
        note->setSelectable(false);
        study->appendRow(note);
        study->setData(problem.isEmpty(), ListedRole); // else asked again when it is opened again
    }
}

void ArchiveModel::setHeldText(QStandardItem *first, int images, quint32 totalTag)
{
    const int total = first->data(RecordRole).value<QueryRecord>().value(totalTag).toInt();
    first->setData(images, HeldRole);
    QStandardItem *above = first->parent();
    if (above) {
        above->child(first->row(), HeldColumn)->setText(ArchiveText::heldOf(images, total));
    }
}

void ArchiveModel::setHeld(RecordLevel level, const QHash<QString, int> &images)
{
    const bool isStudy = level == RecordLevel::Study;
    const auto &items = isStudy ? m_studies : m_series;
    for (auto item = items.begin(); item != items.end(); ++item) {
        setHeldText(item.value(), images.value(item.key()),
            isStudy ? QueryTag::studyInstances : QueryTag::seriesInstances);
    }
}

std::optional<RecordLevel> ArchiveModel::levelOf(const QModelIndex &index) const
{
    const QVariant level = index.siblingAtColumn(0).data(LevelRole);
    return level.isValid() ? std::make_optional(static_cast<RecordLevel>(level.toInt())) : std::nullopt;
}

int ArchiveModel::heldOf(const QModelIndex &index) const
{
    return index.siblingAtColumn(0).data(HeldRole).toInt();
}

QueryRecord ArchiveModel::recordOf(const QModelIndex &index) const
{
    return index.siblingAtColumn(0).data(RecordRole).value<QueryRecord>();
}

bool ArchiveModel::beginListing(const QModelIndex &study)
{
    QStandardItem *item = itemFromIndex(study.siblingAtColumn(0));
    if (!item || levelOf(study) != RecordLevel::Study || item->data(ListedRole).toBool()) {
        return false;
    }
    item->setData(true, ListedRole);
    auto *note = new QStandardItem(tr("Asking the archive…"));
    note->setEditable(false);
    note->setSelectable(false);
    removeSeries(item);
    item->appendRow(note);
    return true;
}

bool ArchiveModel::hasChildren(const QModelIndex &parent) const
{
    return (parent.isValid() && levelOf(parent) == RecordLevel::Study)
        || QStandardItemModel::hasChildren(parent);
}
