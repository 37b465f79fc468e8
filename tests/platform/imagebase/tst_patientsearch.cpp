#include "foundkeys.h"
#include "indexconnection.h"
#include "patientsearch.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlQuery>
#include <QtTest>

namespace {

struct Study
{
    QString date;
    QString accession;
    QString description;
};

void addPatient(const TemporaryIndex &index, const QString &name, const QString &id, const QString &birthDate,
    const QVector<Study> &studies = {})
{
    const qlonglong patient = index.addPatient(name, id);
    index.query(QStringLiteral("UPDATE patient SET PatientBirthDate = ? WHERE pk = ?"),
        {birthDate.isNull() ? QStringLiteral("") : birthDate, patient});
    for (const Study &study : studies) {
        static int number = 0;
        const qlonglong key = index.addStudy(patient, QStringLiteral("1.2.%1").arg(++number));
        index.query(QStringLiteral("UPDATE generalstudy SET StudyDate = ?, AccessionNumber = ?, "
                                   "StudyDescription = ? WHERE pk = ?"),
            {study.date, study.accession, study.description, key});
    }
}

std::shared_ptr<const PatientSearch> readAgain(
    const TemporaryIndex &index, const PatientSearch *previous = nullptr)
{
    const std::atomic<bool> go{false};
    return PatientSearch::read(index.database(), previous, go);
}

/// The IDs of the patients, in the order in which they came in.
QStringList idsOf(const TemporaryIndex &index, const std::vector<qint64> &keys)
{
    QStringList ids;
    for (const qint64 key : keys) {
        ids << index.query(QStringLiteral("SELECT PatientID FROM patient WHERE pk = ?"), {key}).toString();
    }
    return ids;
}

} // namespace

/// What a search over all patients finds, and that it stays right through every write.
class TestPatientSearch : public QObject
{
    Q_OBJECT

private slots:
    void finds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("ids");
        const QString muller = QStringLiteral("M1");
        const QString yamada = QStringLiteral("Y1");
        const QString brien = QStringLiteral("P^7,x");
        const QString rosa = QStringLiteral("R[1]?%_\\\"*");
        const auto row = [](const char *text, const QStringList &ids) {
            QTest::newRow(text) << QString::fromUtf8(text) << ids;
        };
        row("", {muller, yamada, brien, rosa});
        for (const char *text : {"müller", "muller", "MULLER", "ＭＵＬＬＥＲ", "jörg müller", "Müller, Jörg",
                 "müller^jörg", "mu\u0308ller", " ller\u3000orG ", "1980-01-02", "19800102", "acc-77",
                 "thorax muller", "schadel b88 m1", "acc b88"}) {
            row(text, {muller});
        }
        for (const char *text :
            {"山田", "yamada", "やまだ", "太郎 yama", "山田^太郎", "=やまだ", "山田太郎", "やまだたろう"}) {
            row(text, {yamada});
        }
        for (const char *text : {"o'brien", "'", "p^7,x", "P^7", "pat o'"}) {
            row(text, {brien});
        }
        for (const char *text : {"Люк", "люксембург", "[", "?", "_", "\\", "\"", "*", "100% [n"}) {
            row(text, {rosa});
        }
        row("1980", {muller, brien});
        row("%", {rosa});
        row("müller yamada", {});
        row("thorax%", {});
        row("m1 1980 x", {muller}); // the x of the thorax
        for (const char *text : {"yamadatarou", "太郎山田", "太郎やまだ"}) {
            row(text, {}); // only what is written in one piece
        }
        row("jorgm1", {}); // nothing reaches over two fields
    }

    void finds()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, ids);
        const TemporaryIndex index;
        fill(index);
        const auto search = readAgain(index);
        QCOMPARE(idsOf(index, search->find({text, {}})), ids);
        // What is taken over from an older state is the same.
        QCOMPARE(readAgain(index, search.get())->find({text, {}}), search->find({text, {}}));
    }

    void findsByStudyDate()
    {
        const TemporaryIndex index;
        const auto add = [&index](const char *id, const QVector<Study> &studies) {
            addPatient(index, QStringLiteral("Same"), QLatin1String(id), QString(), studies);
        };
        add("two", {{QStringLiteral("20240131"), {}, {}}, {QStringLiteral("20100101"), {}, {}}});
        add("none", {{QString(), {}, {}}, {QStringLiteral("20240201"), {}, {}}});
        add("wrong", {{QStringLiteral("20240230"), {}, {}}});
        add("without studies", {});
        const auto search = readAgain(index);
        const auto between = [&](const QDate &first, const QDate &last) {
            return idsOf(index, search->find({{}, {StudyDates::Kind::Between, first, last}}));
        };
        QCOMPARE(between({2024, 1, 31}, {2024, 1, 31}), QStringList("two"));
        QCOMPARE(between({2024, 1, 31}, {2024, 2, 1}), QStringList({"two", "none"}));
        QCOMPARE(between({2024, 2, 2}, {2024, 12, 31}), QStringList());
        QCOMPARE(idsOf(index, search->find({{}, {StudyDates::Kind::Missing, {}, {}}})),
            QStringList({"none", "wrong"}));
        QCOMPARE(idsOf(index, search->find({QStringLiteral("two"), {StudyDates::Kind::Missing, {}, {}}})),
            QStringList());
    }

    void followsEveryWrite()
    {
        const TemporaryIndex index;
        fill(index);
        auto search = readAgain(index);
        const auto found = [&](const char *text) {
            search = readAgain(index, search.get());
            return idsOf(index, search->find({QString::fromUtf8(text), {}}));
        };
        index.query(QStringLiteral("UPDATE patient SET PatientName = 'Meier^Jörg' WHERE PatientID = 'M1'"));
        QCOMPARE(found("müller"), QStringList());
        QCOMPARE(found("meier jorg thorax"), QStringList("M1"));
        index.query(
            QStringLiteral("UPDATE generalstudy SET AccessionNumber = 'N5' WHERE AccessionNumber = 'B88'"));
        QCOMPARE(found("n5"), QStringList("M1"));
        index.query(QStringLiteral("DELETE FROM patient WHERE PatientID = 'Y1'"));
        QCOMPARE(found("yamada"), QStringList());
        addPatient(
            index, QStringLiteral("Yamada^New"), QStringLiteral("Y2"), {}, {{{}, {}, QStringLiteral("PET")}});
        QCOMPARE(found("pet yamada"), QStringList("Y2"));
        // A study that moves to another patient.
        index.query(QStringLiteral(
            "UPDATE generalstudy SET patient_fk = "
            "(SELECT pk FROM patient WHERE PatientID = 'P^7,x') WHERE AccessionNumber = 'N5'"));
        QCOMPARE(found("n5"), QStringList("P^7,x"));
        QCOMPARE(found("yamada"), QStringList("Y2"));
    }

    void isStopped()
    {
        const TemporaryIndex index;
        index.query(
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                           "INSERT INTO patient (PatientID) SELECT i FROM n"));
        const std::atomic<bool> stop{true};
        QVERIFY(!PatientSearch::read(index.database(), nullptr, stop));
        QCOMPARE(readAgain(index)->patients(), 5000);
    }

    void conditionNamesTheKeys()
    {
        const TemporaryIndex index;
        fill(index);
        const QString count = QStringLiteral("SELECT count(*) FROM patient WHERE ");
        FoundKeys others;
        others.set({1, 2, 3});
        QString gone;
        {
            FoundKeys keys;
            QCOMPARE(index.query(count + keys.condition()).toInt(), 0);
            keys.set({-7, 2, 4, 1'000'000'000'000});
            gone = keys.condition();
            QCOMPARE(index.query(count + gone).toInt(), 2);
            QCOMPARE(index.query(count + others.condition()).toInt(), 3);
            keys.set({2, 4}); // close together, unlike those above
            QCOMPARE(index.query(count + gone).toInt(), 2);
            keys.set({1});
            QCOMPARE(index.query(count + gone).toInt(), 1);
            const IndexConnection worker(index.path());
            QSqlQuery query(worker.database());
            QVERIFY(query.exec(count + gone) && query.next());
            QCOMPARE(query.value(0).toInt(), 1);
        }
        QCOMPARE(index.query(count + gone).toInt(), 0);
    }

private:
    static void fill(const TemporaryIndex &index)
    {
        const QString none;
        addPatient(index, QStringLiteral("Müller^Jörg"), QStringLiteral("M1"), QStringLiteral("19800102"),
            {{none, QStringLiteral("ACC-77"), QStringLiteral("CT Thorax")},
                {none, QStringLiteral("B88"), QStringLiteral("MR Schädel")}});
        addPatient(index, QStringLiteral("Yamada^Tarou=山田^太郎=やまだ^たろう"), QStringLiteral("Y1"), none);
        addPatient(index, QStringLiteral("O'Brien^Pat"), QStringLiteral("P^7,x"), QStringLiteral("1980"));
        addPatient(index, QStringLiteral("Люксембург^Роза"), QStringLiteral("R[1]?%_\\\"*"), none,
            {{none, none, QStringLiteral("100% [native]")}});
    }
};

PM_TEST_MAIN(TestPatientSearch)
#include "tst_patientsearch.moc"
