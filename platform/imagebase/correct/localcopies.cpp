#include "localcopies.h"

#include "dicomreader.h"
#include "importmarker.h"
#include "objectcorrection.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <cstdio>

namespace {

constexpr char passingSuffix[] = ".corrected";

struct Files
{
    QStringList copies;
    int elsewhere = 0;
    bool isWhole = true; ///< false where the index could not list them all
};

Files filesOf(const QSqlDatabase &db, qlonglong patientPk, const QStringList &studyUids)
{
    Files files;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.prepare(QStringLiteral(
        "SELECT FilePath, ifnull(IrradiationEventUID = ?, 0) FROM generalstudy JOIN generalseries ON "
        "study_fk = generalstudy.pk JOIN imageformat ON series_fk = generalseries.pk "
        "WHERE patient_fk = ? AND StudyInstanceUID = ?"));
    for (const QString &study : studyUids) {
        query.bindValue(0, QLatin1String(copiedFileMarker));
        query.bindValue(1, patientPk);
        query.bindValue(2, study);
        for (bool more = query.exec() && query.next(); more; more = query.next()) {
            query.value(1).toBool() ? files.copies.append(query.value(0).toString())
                                    : void(++files.elsewhere);
        }
        files.isWhole = files.isWhole && !query.lastError().isValid();
    }
    return files;
}

bool isRight(const QString &path, const PatientChanges &changes)
{
    static const QMap<PatientField, Attribute> attributes{{PatientField::Name, Attribute::PatientName},
        {PatientField::Id, Attribute::PatientID}, {PatientField::BirthDate, Attribute::PatientBirthDate},
        {PatientField::Sex, Attribute::PatientSex}, {PatientField::Comments, Attribute::PatientComments}};
    const DicomHeader header = DicomReader().read(QFile::encodeName(path)).header;
    bool is = true;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        is = is && PatientValues::isSame(change.key(), header[attributes[change.key()]], change.value());
    }
    return is;
}

bool correctInPlace(const QString &path, const PatientChanges &changes)
{
    const QString passing = path + QLatin1String(passingSuffix);
    const bool good = correctObject(path, passing, changes).problem == ObjectCorrection::Problem::None
        && std::rename(QFile::encodeName(passing).constData(), QFile::encodeName(path).constData()) == 0;
    if (!good) {
        QFile::remove(passing);
    }
    return good;
}

} // namespace

LocalCorrection correctCopies(const QSqlDatabase &db, qlonglong patientPk, const QStringList &studyUids,
    const PatientChanges &changes, const std::function<bool(int done, int all)> &goOn)
{
    const Files files = filesOf(db, patientPk, studyUids);
    LocalCorrection result;
    result.elsewhere = files.elsewhere;
    result.isStopped = !files.isWhole;
    int done = 0;
    for (const QString &path : files.copies) {
        if (isRight(path, changes) || correctInPlace(path, changes)) {
            ++result.corrected;
        } else {
            result.failed.append(path);
        }
        if (!goOn(++done, files.copies.size())) {
            result.isStopped = true;
            break;
        }
    }
    return result;
}
