#include "createconnection.h"
#include "qinstance.h"
#include "qpatient.h"
#include "qpatients.h"
#include "qseries.h"
#include "qstudy.h"
#include "recordcolumns.h"
#include "recordfiles.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlRecord>
#include <QtTest>

/// Group, field, symbol, value.
using Conditions = QList<std::array<const char *, 4>>;
Q_DECLARE_METATYPE(Conditions)

namespace {

template <typename Record>
QList<qint64> keys(const QList<Record *> &records)
{
    QList<qint64> keys;
    for (const Record *record : records) {
        keys.append(record->getPk());
    }
    return keys;
}

} // namespace

/// Records as objects, and the trees that stored inquiries make of them.
class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        m_index->query(QStringLiteral("DELETE FROM andvancequiry"));
        m_cleo = m_index->addPatient(
            QStringLiteral("Cleo"), QStringLiteral("3"), QStringLiteral("2020-05-05 10:00:00"));
        m_bela = m_index->addPatient(QStringLiteral("bela"), QStringLiteral("2"));
        m_anna = m_index->addPatient(QStringLiteral("Änna^X"), QStringLiteral("1"));
        m_annaCt = m_index->addStudy(m_anna, QStringLiteral("1.1"));
        m_annaMr = m_index->addStudy(m_anna, QStringLiteral("1.2"));
        m_belaCt = m_index->addStudy(m_bela, QStringLiteral("2.1"));
        m_ct2 = m_index->addSeries(m_annaCt, QStringLiteral("1.1.2"), QStringLiteral("CT"), 10);
        m_ct1 = m_index->addSeries(m_annaCt, QStringLiteral("1.1.1"), QStringLiteral("CT"), 9);
        m_mr = m_index->addSeries(m_annaMr, QStringLiteral("1.2.1"), QStringLiteral("MR"), 1);
        m_belaSeries = m_index->addSeries(m_belaCt, QStringLiteral("2.1.1"), QStringLiteral("CT"), 1);
        m_index->query(
            QStringLiteral("UPDATE generalstudy SET StudyDate = '20240101' WHERE pk = ?"), {m_annaCt});
        m_index->query(
            QStringLiteral("UPDATE generalstudy SET StudyDate = '20250101' WHERE pk = ?"), {m_annaMr});
        m_index->addImage(m_ct1, QStringLiteral("i2"), 2);
        m_index->addImage(m_ct1, QStringLiteral("i1"), 1);
        m_index->addImage(m_mr, QStringLiteral("i3"), 7);
    }

    void cleanup() { m_index.reset(); }

    void columnsAreThoseOfTheIndex()
    {
        const std::array<const QMetaObject *, 4> classes{&QPatient::staticMetaObject,
            &QStudy::staticMetaObject, &QSeries::staticMetaObject, &QInstance::staticMetaObject};
        for (std::size_t level = 0; level < classes.size(); ++level) {
            const QSqlRecord columns =
                m_index->database().record(QLatin1String(recordTableName(RecordLevel(level))));
            QStringList names;
            for (int column = 0; column < columns.count(); ++column) {
                names.append(columns.fieldName(column));
                QVERIFY2(classes[level]->indexOfProperty(names.constLast().toLatin1().constData()) >= 0,
                    qPrintable(names.constLast()));
            }
            QCOMPARE(recordColumns(RecordLevel(level)), names);
        }
    }

    void titlesFollowTheFieldConfiguration()
    {
        m_index->query(QStringLiteral("UPDATE generalstudyuser SET pk = 1, StudyID = 0"));
        m_index->query(QStringLiteral("DELETE FROM generalseriesuser"));
        const QPatients patients;
        QCOMPARE(patients.getPatientTitleList().mid(0, 3),
            (QStringList{QStringLiteral("pk"), QStringLiteral("PatientName"), QStringLiteral("PatientID")}));
        QCOMPARE(patients.getStudyTitleList().count(QStringLiteral("pk")), 1);
        QVERIFY(!patients.getStudyTitleList().contains(QStringLiteral("StudyID")));
        QVERIFY(!patients.isStudyPkHidden());
        QCOMPARE(patients.getSeriesTitleList(), QStringList{QStringLiteral("pk")});
        QVERIFY(patients.isSeriesPkHidden());
    }

    void searchesOfARecord()
    {
        QPatient patient;
        patient.setPatientPK(m_anna);
        QVERIFY(patient.searchStudys());
        QVERIFY(patient.searchPatientInfo());
        QCOMPARE(patient.patientName(), QStringLiteral("Änna^X"));
        QCOMPARE(patient.property("PatientID"), QVariant(QStringLiteral("1")));
        QCOMPARE(patient.property("NumberOfPatientRelatedImages"), QVariant());
        QCOMPARE(keys(patient.getStudys()), (QList<qint64>{m_annaMr, m_annaCt}));

        QStudy *study = patient.getStudys().constLast();
        QVERIFY(study->searchSeries());
        QCOMPARE(keys(study->getSeries()), (QList<qint64>{m_ct1, m_ct2}));
        QSeries *series = study->getSeries().constFirst();
        QVERIFY(series->searchInstance());
        QCOMPARE(series->getInstances().size(), 2);
        QCOMPARE(series->getInstances().constFirst()->getSOPInstanceUID(), QStringLiteral("i1"));
        QCOMPARE(series->getInstances().constFirst()->getSeries(), series);

        patient.clear();
        QCOMPARE(patient.getPk(), 0);
        QVERIFY(patient.getStudys().isEmpty());
        QVERIFY(patient.patientName().isEmpty());
        patient.setPatientPK(4711);
        QCOMPARE(patient.property("pk"), QVariant(4711));
        QVERIFY(!patient.searchPatientInfo());
    }

    /// A patient made of chosen series finds its study and itself through them.
    void patientOfChosenChildren()
    {
        auto *series = new QSeries(m_ct2, nullptr);
        QVERIFY(series->searchSeriesInfo());
        auto *study = new QStudy(nullptr);
        study->setSereis({series});
        QVERIFY(study->searchStudyInfo());
        QCOMPARE(study->getStudyUID(), QStringLiteral("1.1"));
        QPatient patient;
        patient.setStudys({study});
        QVERIFY(patient.searchPatientInfo());
        QCOMPARE(patient.getPk(), m_anna);
        QCOMPARE(series->getStudy()->getPatient(), &patient);
        // The same study again, twice in the list, and on to another patient: it is never owned twice.
        patient.setStudys({study, study});
        QCOMPARE(patient.getStudys().size(), 1);
        QPatient other;
        other.setStudys(patient.getStudys());
        QVERIFY(patient.getStudys().isEmpty());
        QCOMPARE(study->getPatient(), &other);
        delete study;
        QVERIFY(other.getStudys().isEmpty());
    }

    void treeOfAnInquiry_data()
    {
        QTest::addColumn<Conditions>("conditions");
        QTest::addColumn<QStringList>("expected"); // names of patients, UIDs of studies and series, by level

        const QString anna = QStringLiteral("Änna^X");
        const QString bela = QStringLiteral("bela");
        QTest::newRow("patients come with all below them")
            << Conditions{{"patient", "PatientID", "<", "3"}}
            << QStringList{anna, bela, "|", "1.2", "1.1", "2.1", "|", "1.2.1", "1.1.1", "1.1.2", "2.1.1"};
        QTest::newRow("a patient without studies")
            << Conditions{{"patient", "PatientID", "=", "3"}} << QStringList{"Cleo", "|", "|"};
        QTest::newRow("only the studies that fit")
            << Conditions{{"generalstudy", "StudyDate", ">", "20240601"}}
            << QStringList{anna, "|", "1.2", "|", "1.2.1"};
        QTest::newRow("only the series that fit, and their parents") << Conditions{
            {"generalseries", "Modality", "=", "MR"}} << QStringList{anna, "|", "1.2", "|", "1.2.1"};
        QTest::newRow("series that have such an image") << Conditions{
            {"imageformat", "InstanceNumber", ">", "1"},
            {"imageformat", "InstanceNumber", "<", "3"}} << QStringList{anna, "|", "1.1", "|", "1.1.1"};
        QTest::newRow("all four groups")
            << Conditions{{"patient", "PatientID", "=", "1"}, {"generalstudy", "StudyDate", ">", "20230101"},
                   {"generalseries", "SeriesNumber", "<", "10"}, {"imageformat", "InstanceNumber", "=", "7"}}
            << QStringList{anna, "|", "1.2", "|", "1.2.1"};
        QTest::newRow("groups that no branch satisfies together")
            << Conditions{{"patient", "PatientID", "=", "2"}, {"generalseries", "Modality", "=", "MR"}}
            << QStringList{"|", "|"};
    }

    void treeOfAnInquiry()
    {
        QFETCH(Conditions, conditions);
        QFETCH(QStringList, expected);
        for (const auto &[group, field, symbol, value] : conditions) {
            store(QStringLiteral("asked"), group, field, symbol, QString::fromUtf8(value));
        }
        QPatients patients;
        QVERIFY2(patients.advanceQueryByName(QStringLiteral("asked")), qPrintable(patients.problem().text));
        QStringList found;
        for (const QPatient *patient : patients.getAllPatient()) {
            found.append(patient->patientName());
        }
        found.append(QStringLiteral("|"));
        for (const QStudy *study : patients.getAllStudy()) {
            found.append(study->getStudyUID());
        }
        found.append(QStringLiteral("|"));
        for (const QSeries *series : patients.getAllSeries()) {
            found.append(series->getSeriesUID());
        }
        QCOMPARE(found, expected);
    }

    void orderOfTheTree()
    {
        m_index->query(QStringLiteral("UPDATE generalseries SET SeriesNumber = NULL WHERE pk = ?"), {m_ct1});
        store(QStringLiteral("all"), "patient", "PatientID", ">", QString());
        store(QStringLiteral("named"), "patient", "PatientName", ">", QStringLiteral(" "));
        QPatients patients;
        QVERIFY(patients.advanceQueryByName(QStringLiteral("named")));
        QCOMPARE(keys(patients.getAllPatient()), (QList<qint64>{m_anna, m_bela, m_cleo}));
        // A series without a number stands behind those that have one.
        QCOMPARE(keys(patients.getAllSeries()), (QList<qint64>{m_mr, m_ct2, m_ct1, m_belaSeries}));
        // An empty value asks for patients without the field: here there are none, and the old result is
        // gone.
        QVERIFY(patients.advanceQueryByName(QStringLiteral("all")));
        QVERIFY(patients.getAllPatient().isEmpty() && patients.getAllSeries().isEmpty());
    }

    void childrenKnowTheirParents()
    {
        QPatients patients;
        QVERIFY(patients.advanceQueryByName(QString())); // the records updated today: all but one
        QCOMPARE(keys(patients.getAllPatient()), (QList<qint64>{m_anna, m_bela}));
        for (const QSeries *series : patients.getAllSeries()) {
            QVERIFY(series->getStudy()->getSeries().contains(const_cast<QSeries *>(series)));
            QVERIFY(patients.getAllPatient().contains(series->getStudy()->getPatient()));
        }
    }

    void whatFindsNothingSaysWhy()
    {
        QPatients patients;
        QVERIFY(!patients.advanceQueryByName(QStringLiteral("gone")));
        QCOMPARE(patients.problem().kind, InquiryProblem::Kind::NotStored);
        store(QStringLiteral("odd"), "patient", "ShoeSize", "=", QStringLiteral("44"));
        QVERIFY(!patients.advanceQueryByName(QStringLiteral("odd")));
        QCOMPARE(patients.problem().kind, InquiryProblem::Kind::UnknownField);
        QVERIFY(patients.getAllPatient().isEmpty());
        QVERIFY(patients.advanceQueryByName(QString()));
        QVERIFY(!patients.problem());
        m_index->query(QStringLiteral("DROP TABLE andvancequiry"));
        QVERIFY(!patients.advanceQueryByName(QStringLiteral("odd")));
        QCOMPARE(patients.problem().kind, InquiryProblem::Kind::Database);
    }

    /// Many keys take another way through the database than few: both find the same.
    void everyConditionCountsOnceInALargeIndex()
    {
        m_index->query(
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
                           "INSERT INTO patient (PatientName, PatientID) SELECT 'Many', 'M' || i FROM n"));
        m_index->query(QStringLiteral("INSERT INTO generalstudy (patient_fk, StudyInstanceUID) "
                                      "SELECT pk, '9.' || pk FROM patient WHERE PatientName = 'Many'"));
        m_index->query(QStringLiteral(
            "INSERT INTO generalseries (study_fk, SeriesInstanceUID, Modality, SeriesNumber) "
            "SELECT pk, '8.' || pk, 'US', pk FROM generalstudy WHERE StudyInstanceUID LIKE '9.%'"));
        store(QStringLiteral("most"), "patient", "PatientName", "=", QStringLiteral("Many"));
        store(QStringLiteral("few"), "patient", "PatientName", "=", QStringLiteral("Many"));
        store(QStringLiteral("few"), "generalseries", "SeriesNumber", "<", QStringLiteral("8"));
        store(QStringLiteral("from below"), "generalseries", "Modality", "=", QStringLiteral("US"));
        QPatients patients;
        for (const auto &[name, expected] :
            {std::make_pair("most", 2000), {"few", 4}, {"from below", 2000}}) {
            QVERIFY(patients.advanceQueryByName(QString::fromLatin1(name)));
            QCOMPARE(patients.getAllPatient().size(), expected);
            QCOMPARE(patients.getAllStudy().size(), expected);
            QCOMPARE(patients.getAllSeries().size(), expected);
        }
    }

    void filesOfAnyLevelComeInOrder()
    {
        m_index->addImage(m_ct2, QStringLiteral("i4"), 1);
        m_index->query(QStringLiteral("UPDATE imageformat SET FilePath = SOPInstanceUID"));
        m_index->addImage(m_ct2, QStringLiteral("i5"), 2); // without a file
        m_index->query(QStringLiteral("UPDATE imageformat SET FilePath = '' WHERE SOPInstanceUID = 'i5'"));
        const auto paths = [this](RecordLevel level, const QList<qlonglong> &keys) {
            return recordFiles(m_index->database(), level, keys).paths.join(QLatin1Char(' '));
        };
        // The newest study first, then by series number, then by instance number.
        QCOMPARE(paths(RecordLevel::Patient, {m_anna, m_bela}), QStringLiteral("i3 i1 i2 i4"));
        QCOMPARE(paths(RecordLevel::Study, {m_annaCt}), QStringLiteral("i1 i2 i4"));
        QCOMPARE(paths(RecordLevel::Series, {m_ct2, m_ct1}), QStringLiteral("i1 i2 i4"));
        QCOMPARE(paths(RecordLevel::Image, {3, 2, 99}), QStringLiteral("i3 i1"));
        QCOMPARE(paths(RecordLevel::Series, {}), QString());
        QList<qlonglong> many;
        for (qlonglong key = 1; key <= 10000; ++key) {
            many.append(key);
        }
        const RecordFiles all = recordFiles(m_index->database(), RecordLevel::Series, many);
        QCOMPARE(all.paths.size(), 4);
        QCOMPARE(all.patientId + all.studyUid + all.seriesUid, QStringLiteral("11.21.2.1"));
    }

private:
    void store(const QString &name, const char *group, const char *field, const char *symbol,
        const QString &value) const
    {
        m_index->query(
            QStringLiteral("INSERT INTO andvancequiry (UserName, InquiryName, GroupName, FieldName, Symbol, "
                           "FieldValue, Logic, QueryType) VALUES ('super', ?, ?, ?, ?, ?, 'and', 'Precise')"),
            {name, QString::fromLatin1(group), QString::fromLatin1(field), QString::fromLatin1(symbol),
                value});
    }

    std::unique_ptr<TemporaryIndex> m_index;
    qlonglong m_anna = 0, m_bela = 0, m_cleo = 0; // cleo has no study
    qlonglong m_annaCt = 0, m_annaMr = 0, m_belaCt = 0; // studies
    qlonglong m_ct1 = 0, m_ct2 = 0, m_mr = 0, m_belaSeries = 0; // series
};

PM_TEST_MAIN(RecordsTest)
#include "tst_records.moc"
