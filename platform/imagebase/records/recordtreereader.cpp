#include "recordtreereader.h"

#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"
#include "readsnapshot.h"
#include "recordcolumns.h"
#include "recordsql.h"
#include "textfold.h"

#include <QHash>
#include <QSqlQuery>

#include <algorithm>

namespace {

constexpr std::size_t levels = 3;

RecordLevel above(RecordLevel level)
{
    return RecordLevel(int(level) - 1);
}

RecordLevel below(RecordLevel level)
{
    return RecordLevel(int(level) + 1);
}

QString table(RecordLevel level)
{
    return QString::fromLatin1(recordTableName(level));
}

void conjoin(SqlCondition *whole, const SqlCondition &part)
{
    if (part.text.isEmpty()) {
        return;
    }
    whole->text +=
        (whole->text.isEmpty() ? QStringLiteral("(%1)") : QStringLiteral(" AND (%1)")).arg(part.text);
    whole->values += part.values;
}

/// "column IN (SELECT wanted FROM table WHERE ...)"; empty where the condition is.
SqlCondition among(const QString &column, const QString &wanted, RecordLevel level, const SqlCondition &where)
{
    if (where.text.isEmpty()) {
        return {};
    }
    return {column + QStringLiteral(" IN (SELECT ") + wanted + QStringLiteral(" FROM ") + table(level)
            + QStringLiteral(" WHERE ") + where.text + QLatin1Char(')'),
        where.values};
}

/// The keys as one bound value, however many there are.
SqlCondition amongKeys(const QString &column, const std::vector<qint64> &keys)
{
    return {column + QStringLiteral(" IN (SELECT value FROM json_each(?))"), {RecordSql::keyList(keys)}};
}

/// What orders the records of a level and tells them apart, whether or not it is shown.
QVector<int> alwaysRead(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return {int(QPatient::Column::PatientName)};
    case RecordLevel::Study:
        return {int(QStudy::Column::StudyDate), int(QStudy::Column::StudyTime),
            int(QStudy::Column::StudyDescription), int(QStudy::Column::ModalitiesInStudy)};
    case RecordLevel::Series:
        return {int(QSeries::Column::Modality), int(QSeries::Column::SeriesDescription),
            int(QSeries::Column::SeriesNumber), int(QSeries::Column::NumberOfSeriesRelatedInstances)};
    case RecordLevel::Image:
        break;
    }
    return {};
}

/// By name as people sort, equal names by key; each name is folded once.
void sortByName(QList<QPatient *> *patients)
{
    std::vector<std::tuple<QString, qint64, QPatient *>> order;
    order.reserve(std::size_t(patients->size()));
    for (QPatient *patient : qAsConst(*patients)) {
        order.emplace_back(foldedText(patient->patientName()), patient->getPk(), patient);
    }
    std::sort(order.begin(), order.end());
    std::transform(order.begin(), order.end(), patients->begin(),
        [](const auto &entry) { return std::get<QPatient *>(entry); });
}

} // namespace

RecordTreeReader::RecordTreeReader(
    const QSqlDatabase &db, const InquiryFilter &filter, const std::array<QVector<int>, 3> &columns)
    : m_db(db)
    , m_filter(filter)
    , m_columns(columns)
{
    for (std::size_t level = 0; level < levels; ++level) {
        QVector<int> &own = m_columns[level];
        own += alwaysRead(RecordLevel(level));
        std::sort(own.begin(), own.end());
        own.erase(std::unique(own.begin(), own.end()), own.end());
    }
}

QList<QPatient *> RecordTreeReader::read()
{
    bool good = false;
    {
        const ReadSnapshot snapshot(m_db);
        good = readLevels();
    }
    return good ? joined() : QList<QPatient *>();
}

bool RecordTreeReader::readLevels()
{
    const RecordLevel first = lowestConditionedLevel();
    if (!readLevel(first, conditionsDownTo(first))) {
        return false;
    }
    for (int level = int(first) - 1; level >= 0; --level) {
        if (!readLevel(RecordLevel(level), parentsOfRows(below(RecordLevel(level))))) {
            return false;
        }
    }
    const bool restricted = !conditionsDownTo(first).text.isEmpty();
    for (int level = int(first) + 1; level < int(levels); ++level) {
        if (!readLevel(
                RecordLevel(level), restricted ? childrenOf(above(RecordLevel(level))) : SqlCondition())) {
            return false;
        }
    }
    return true;
}

RecordLevel RecordTreeReader::lowestConditionedLevel() const
{
    for (const RecordLevel level : {RecordLevel::Image, RecordLevel::Series, RecordLevel::Study}) {
        if (!m_filter.of(level).text.isEmpty()) {
            return std::min(level, RecordLevel::Series);
        }
    }
    return RecordLevel::Patient;
}

/// The conditions of a level and of all above it; those of the images count for their series.
SqlCondition RecordTreeReader::conditionsDownTo(RecordLevel level) const
{
    SqlCondition whole;
    if (level != RecordLevel::Patient) {
        conjoin(&whole,
            among(RowReader::parentColumn(level), QStringLiteral("pk"), above(level),
                conditionsDownTo(above(level))));
    }
    conjoin(&whole, m_filter.of(level));
    if (level == RecordLevel::Series) {
        conjoin(&whole,
            among(QStringLiteral("pk"), RowReader::parentColumn(RecordLevel::Image), RecordLevel::Image,
                m_filter.of(RecordLevel::Image)));
    }
    return whole;
}

SqlCondition RecordTreeReader::parentsOfRows(RecordLevel level) const
{
    std::vector<qint64> keys;
    keys.reserve(m_rows[std::size_t(level)].size());
    for (const Row &row : m_rows[std::size_t(level)]) {
        keys.push_back(row.parent);
    }
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return amongKeys(
        coversMost(above(level), int(keys.size())) ? QStringLiteral("+pk") : QStringLiteral("pk"), keys);
}

SqlCondition RecordTreeReader::childrenOf(RecordLevel level) const
{
    std::vector<qint64> keys;
    keys.reserve(m_rows[std::size_t(level)].size());
    for (const Row &row : m_rows[std::size_t(level)]) {
        keys.push_back(row.key);
    }
    const QString column = RowReader::parentColumn(below(level));
    return amongKeys(coversMost(level, int(keys.size())) ? QLatin1Char('+') + column : column, keys);
}

/// Whether keys are so many that one pass over the table is cheaper than looking up each: the plus sign
/// before a column keeps its index out of it.
bool RecordTreeReader::coversMost(RecordLevel level, int keys) const
{
    constexpr int share = 8;
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    const bool known = query.exec(QStringLiteral("SELECT max(pk) FROM ") + table(level)) && query.next();
    return known && qint64(keys) * share > query.value(0).toLongLong();
}

bool RecordTreeReader::readLevel(RecordLevel level, const SqlCondition &where)
{
    RowReader reader(m_db, level, m_columns[std::size_t(level)], where);
    Rows &rows = m_rows[std::size_t(level)];
    while (reader.next()) {
        rows.push_back({reader.key(), reader.parentKey(), reader.row()});
    }
    m_error = reader.error();
    return !m_error.isValid();
}

QList<QPatient *> RecordTreeReader::joined()
{
    QList<QPatient *> patients;
    QHash<qint64, QPatient *> patientOf;
    QHash<qint64, QStudy *> studyOf;
    for (const Row &row : m_rows[std::size_t(RecordLevel::Patient)]) {
        patients.append(new QPatient(row.key, row.values));
        patientOf.insert(row.key, patients.constLast());
    }
    for (const Row &row : m_rows[std::size_t(RecordLevel::Study)]) {
        if (QPatient *patient = patientOf.value(row.parent)) {
            auto *study = new QStudy(row.key, row.values);
            QPatient::family().append(patient, study);
            studyOf.insert(row.key, study);
        }
    }
    for (const Row &row : m_rows[std::size_t(RecordLevel::Series)]) {
        if (QStudy *study = studyOf.value(row.parent)) {
            QStudy::family().append(study, new QSeries(row.key, row.values));
        }
    }
    for (QPatient *patient : qAsConst(patients)) {
        std::sort(patient->m_studies.begin(), patient->m_studies.end(), QStudy::isBefore);
    }
    for (QStudy *study : qAsConst(studyOf)) {
        std::sort(study->m_series.begin(), study->m_series.end(), QSeries::isBefore);
    }
    sortByName(&patients);
    return patients;
}
