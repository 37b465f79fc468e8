#include "selectionsubject.h"

#include "personname.h"
#include "selectionstatus.h"
#include "transfertext.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <array>

namespace {

/// Translation context of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SelectionSubject)
};

constexpr int namedPatients = 3;

/// From the patients down to the records.
QString joinedDownTo(RecordLevel level)
{
    const std::array<const char *, 4> joins{"", " JOIN generalstudy ON generalstudy.patient_fk = patient.pk",
        " JOIN generalseries ON generalseries.study_fk = generalstudy.pk",
        " JOIN imageformat ON imageformat.series_fk = generalseries.pk"};
    QString tables = QStringLiteral("patient");
    for (std::size_t step = 1; step <= std::size_t(level) && step < joins.size(); ++step) {
        tables += QLatin1String(joins[step]);
    }
    return tables;
}

QByteArray asJson(const QList<qlonglong> &keys)
{
    QJsonArray list;
    for (const qlonglong key : keys) {
        list.append(key);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

/// The patients of the records, as one list for people.
QString patientsOf(const RecordSelection &records)
{
    QSqlQuery query(QSqlDatabase::database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT patient.PatientName FROM %1 WHERE %2.pk IN "
                                 "(SELECT value FROM json_each(?)) GROUP BY patient.pk")
                      .arg(joinedDownTo(records.level), QLatin1String(recordTableName(records.level))));
    query.addBindValue(QString::fromLatin1(asJson(records.keys)));
    QStringList names;
    int count = 0;
    for (bool more = query.exec() && query.next(); more; more = query.next()) {
        if (++count <= namedPatients) {
            const QString name = personNameForDisplay(query.value(0).toString());
            names.append(name.isEmpty() ? Text::tr("(no name)") : name);
        }
    }
    return TransferText::ofPatients(names, count);
}

} // namespace

QString subjectOf(const RecordSelection &records)
{
    const QString patients = records.isEmpty() ? QString() : patientsOf(records);
    if (patients.isEmpty()) {
        return records.text();
    }
    return records.level == RecordLevel::Patient
        ? Text::tr("%1 (%2)", "some patients (their names)").arg(records.text(), patients)
        : Text::tr("%1 of %2", "some records of patients").arg(records.text(), patients);
}
