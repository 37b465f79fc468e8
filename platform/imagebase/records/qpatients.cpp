#include "qpatients.h"

#include "inquiryfilter.h"
#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"
#include "recordcolumns.h"
#include "recordtreereader.h"
#include "storedinquiry.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// The columns that the field configuration of a level shows, by their place; none where it has no row.
QVector<int> shownColumns(RecordLevel level)
{
    QVector<int> shown;
    QSqlQuery query(QSqlDatabase::database());
    query.setForwardOnly(true);
    if (query.exec(QStringLiteral("SELECT * FROM %1user").arg(QLatin1String(recordTableName(level))))
        && query.next()) {
        for (int column = 0; column < recordColumns(level).size(); ++column) {
            if (query.value(column).toInt() != 0) {
                shown.append(column);
            }
        }
    }
    return shown;
}

/// The key stands first, shown or not: it parts the levels.
QStringList titles(RecordLevel level, const QVector<int> &shown)
{
    QStringList names{recordColumns(level).constFirst()};
    for (const int column : shown) {
        if (column > 0) {
            names.append(recordColumns(level).at(column));
        }
    }
    return names;
}

QVector<int> columnsOf(RecordLevel level, const QStringList &titles)
{
    QVector<int> columns;
    for (const QString &title : titles) {
        columns.append(recordColumns(level).indexOf(title));
    }
    return columns;
}

} // namespace

QPatients::QPatients(QObject *parent)
    : QObject(parent)
{
    readTitles();
}

QPatients::~QPatients()
{
    clear();
}

void QPatients::clear()
{
    qDeleteAll(m_patients);
    m_patients.clear();
    m_studies.clear();
    m_series.clear();
    m_problem = {};
}

void QPatients::dropLast(int patients)
{
    m_studies.clear();
    m_series.clear();
    for (int i = 0; i < patients && !m_patients.isEmpty(); ++i) {
        delete m_patients.takeLast();
    }
}

void QPatients::readTitles()
{
    const QVector<int> studyColumns = shownColumns(RecordLevel::Study);
    const QVector<int> seriesColumns = shownColumns(RecordLevel::Series);
    m_patientTitles = titles(RecordLevel::Patient, shownColumns(RecordLevel::Patient));
    m_studyTitles = titles(RecordLevel::Study, studyColumns);
    m_seriesTitles = titles(RecordLevel::Series, seriesColumns);
    m_studyPkHidden = !studyColumns.contains(0);
    m_seriesPkHidden = !seriesColumns.contains(0);
}

bool QPatients::advanceQueryByName(const QString &name)
{
    clear();
    const QSqlDatabase db = QSqlDatabase::database();
    QSqlError error;
    const InquiryConditions conditions =
        name.isEmpty() ? StoredInquiry::updatedToday() : StoredInquiry::read(db, name, &error);
    if (error.isValid()) {
        m_problem = {InquiryProblem::Kind::Database, {}, error.databaseText()};
    } else if (conditions.isEmpty()) {
        m_problem = {InquiryProblem::Kind::NotStored, {}, name};
    } else {
        run(conditions);
    }
    return !m_problem;
}

void QPatients::run(const InquiryConditions &conditions)
{
    const QSqlDatabase db = QSqlDatabase::database();
    const InquiryFilter filter(conditions, InquiryFilter::columnsOf(db), QDateTime::currentDateTime());
    m_problem = filter.problem();
    if (m_problem) {
        return;
    }
    RecordTreeReader reader(db, filter,
        {columnsOf(RecordLevel::Patient, m_patientTitles), columnsOf(RecordLevel::Study, m_studyTitles),
            columnsOf(RecordLevel::Series, m_seriesTitles)});
    m_patients = reader.read();
    if (reader.error().isValid()) {
        m_problem = {InquiryProblem::Kind::Database, {}, reader.error().databaseText()};
    }
    for (const QPatient *patient : qAsConst(m_patients)) {
        m_studies += patient->getStudys();
    }
    for (const QStudy *study : qAsConst(m_studies)) {
        m_series += study->getSeries();
    }
}
