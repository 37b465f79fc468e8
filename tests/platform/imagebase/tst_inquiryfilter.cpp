#include "inquiryfilter.h"
#include "storedinquiry.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

using Kind = InquiryProblem::Kind;
Q_DECLARE_METATYPE(InquiryProblem::Kind)
Q_DECLARE_METATYPE(InquiryConditions)

namespace {

/// "patient PatientName = Precise and", and the value.
InquiryCondition condition(const char *words, const QString &value)
{
    const QStringList parts = QString::fromUtf8(words).split(QLatin1Char(' '));
    return {parts.value(0), parts.value(1), parts.value(2), value, parts.value(4, QStringLiteral("and")),
        parts.value(3)};
}

const QDateTime now(QDate(2024, 3, 15), QTime(10, 30, 20));

QVariant fileTime(const QDateTime &local)
{
    return local.toMSecsSinceEpoch() * 1'000'000;
}

} // namespace

/// What the conditions of inquiries find in a small index.
class TestInquiryFilter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void findsTexts_data();
    void findsTexts() { findsRows(); }
    void findsMoments_data();
    void findsMoments() { findsRows(); }
    void joins_data();
    void joins();
    void refuses_data();
    void refuses();
    void takesHostileTextsAsPlain();
    void takesThousandsOfRows();
    void usesTheIndexOfAColumn();
    void readsStoredInquiries();
    void startsWithSomeInquiries();

private:
    InquiryFilter filter(const InquiryConditions &conditions) const
    {
        return {conditions, InquiryFilter::columnsOf(m_index.database()), now};
    }
    QString found(RecordLevel level, const InquiryConditions &conditions) const;
    static void addColumns();
    void findsRows();

    TemporaryIndex m_index;
};

void TestInquiryFilter::initTestCase()
{
    const auto patient = [this](const char *id, const char *name, const char *updated, const QVariant &birth,
                             const QVariant &comments) {
        const qlonglong pk =
            m_index.addPatient(QString::fromUtf8(name), QLatin1String(id), QLatin1String(updated));
        m_index.query(
            QStringLiteral("UPDATE patient SET PatientBirthDate = ?, PatientComments = ? WHERE pk = ?"),
            {birth, comments, pk});
        return pk;
    };
    const qlonglong first =
        patient("A", "Müller^Jörg^^Dr", "2024-03-15 00:00:00", "19700101", "50% off_[x] 'quoted'?");
    patient("B", "MULLER^Ann=山田^太郎", "2024-03-14 23:59:59", "1970.01.02", QVariant(QVariant::String));
    patient("C", "Smith^Ann", "2024-03-15 10:30:59", "", "");
    patient("D", "Šmíd", "2024-03-08 12:00:00", "19691231", "Ørsted");
    patient("E", "Zoe", "2024-03-16 00:00:00", "20240315", "50x offx[x]");

    const auto study = [&](const char *uid, const QVariant &time, const QVariant &weight) {
        m_index.query(QStringLiteral("UPDATE generalstudy SET StudyTime = ?, PatientWeight = ? WHERE pk = ?"),
            {time, weight, m_index.addStudy(first, QLatin1String(uid))});
    };
    study("A", "1430", 70.5);
    study("B", "143005.25", 9);
    study("C", "143100", 100);
    study("D", QVariant(), QVariant());
    study("E", "", "");

    const qlonglong series = m_index.addSeries(
        m_index.query(QStringLiteral("SELECT min(pk) FROM generalstudy")).toLongLong(), "1");
    const auto image = [&](const char *uid, const QVariant &changed) {
        m_index.query(QStringLiteral("UPDATE imageformat SET FileTime = ? WHERE pk = ?"),
            {changed, m_index.addImage(series, QLatin1String(uid))});
    };
    image("A", fileTime(now.addDays(-1)));
    image("B", fileTime(now));
    image("C", QVariant());
    // Images came in: that is news of the first patient.
    m_index.query(
        QStringLiteral("UPDATE patient SET updated_time = '2024-03-15 00:00:00' WHERE pk = ?"), {first});
}

QString TestInquiryFilter::found(RecordLevel level, const InquiryConditions &conditions) const
{
    static const char *const names[] = {
        "PatientID", "StudyInstanceUID", "SeriesInstanceUID", "SOPInstanceUID"};
    const InquiryFilter inquiry = filter(conditions);
    if (inquiry.problem()) {
        return QStringLiteral("problem %1: %2").arg(int(inquiry.problem().kind)).arg(inquiry.problem().text);
    }
    const SqlCondition &sql = inquiry.of(level);
    return m_index
        .query(
            QStringLiteral("SELECT group_concat(id, '') FROM (SELECT %1 AS id FROM %2 WHERE %3 ORDER BY 1)")
                .arg(QLatin1String(names[int(level)]), QLatin1String(recordTableName(level)),
                    sql.text.isEmpty() ? QStringLiteral("1") : sql.text),
            sql.values)
        .toString();
}

void TestInquiryFilter::findsRows()
{
    QFETCH(QString, words);
    QFETCH(QString, value);
    QFETCH(QString, rows);
    const InquiryCondition row = condition(words.toUtf8().constData(), value);
    const RecordLevel level = row.group == QLatin1String("patient") ? RecordLevel::Patient
        : row.group == QLatin1String("generalstudy")                ? RecordLevel::Study
                                                                    : RecordLevel::Image;
    QCOMPARE(found(level, {row}), rows);
}

void TestInquiryFilter::addColumns()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("rows");
}

#define ROW(words, value, rows) QTest::newRow(words " " value) << words << QStringLiteral(value) << rows

void TestInquiryFilter::findsTexts_data()
{
    addColumns();
    ROW("patient PatientName = Precise", "Müller^Jörg^^Dr", "A");
    ROW("patient PatientName = Precise", "muller", "");
    ROW("patient patientNAME = Fuzzy", "muller", "AB");
    ROW("patient PatientName = Fuzzy", "MÜLLER, jorg dr", "A");
    ROW("patient PatientName = Fuzzy", "太郎", "B");
    ROW("patient PatientName = Fuzzy", "^", "ABC");
    ROW("patient PatientName < Fuzzy", "ØSTERGAARD", "AB");
    ROW("patient PatientName > Precise", "Smith", "CDE");
    ROW("patient PatientComments = Fuzzy", "50%", "A");
    ROW("patient PatientComments = Fuzzy", "_[X]", "A");
    ROW("patient PatientComments = Fuzzy", "'?", "A");
    ROW("patient PatientComments = Fuzzy", "orsted", "D");
    ROW("patient PatientComments < Precise", "6", "AE");
    ROW("patient PatientComments = Precise", "", "BC");
    ROW("patient PatientComments > Fuzzy", "", "BC");
    ROW("generalstudy PatientWeight = Precise", " 70.50 ", "A");
    ROW("generalstudy PatientWeight > Precise", "9", "AC");
    ROW("generalstudy PatientWeight < Precise", "70.6", "AB");
    ROW("generalstudy PatientWeight = Fuzzy", "０", "ABC");
    ROW("generalstudy PatientWeight = Fuzzy", "70.", "A");
    ROW("generalstudy PatientWeight = Fuzzy", "  ", "");
    ROW("generalstudy PatientWeight = Precise", "", "DE");
}

void TestInquiryFilter::findsMoments_data()
{
    addColumns();
    ROW("patient PatientBirthDate = Precise", "1970-01-01", "A");
    ROW("patient PatientBirthDate = Precise", "19700102", "B");
    ROW("patient PatientBirthDate > Precise", "1970.01.01", "BE");
    ROW("patient PatientBirthDate > Precise", "1970-01-02", "E");
    ROW("patient PatientBirthDate < Precise", "1970-01-02", "AD");
    ROW("patient PatientBirthDate = Precise", "NOW -2h", "E");
    ROW("patient PatientBirthDate = Fuzzy", "Today", "E");
    ROW("patient PatientBirthDate = Fuzzy", "1970-01", "AB");
    ROW("patient PatientBirthDate = Fuzzy", "1970/01/02", "B");
    ROW("patient PatientBirthDate = Fuzzy", "\u0301", "");
    ROW("patient PatientBirthDate = Precise", "", "C");

    ROW("patient updated_time = Precise", "today", "AC");
    ROW("patient updated_time > Precise", "today-1", "ACE");
    ROW("patient updated_time < Precise", "today - 1w", "");
    ROW("patient updated_time = Precise", "today-7", "D");
    ROW("patient updated_time > Precise", "now-10h", "CE");
    ROW("patient updated_time = Precise", "2024-03-15T10:30", "C");
    ROW("patient updated_time > Precise", "2024-03-15 10:30", "E");
    ROW("patient updated_time < Precise", "20240315", "BD");
    ROW("patient updated_time = Fuzzy", "2024-03", "ABCDE");

    ROW("generalstudy StudyTime = Precise", "14:30", "AB");
    ROW("generalstudy StudyTime = Fuzzy", "143005", "B");
    ROW("generalstudy StudyTime > Precise", "14:30", "C");
    ROW("generalstudy StudyTime < Precise", "14:30:06", "AB");
    ROW("generalstudy StudyTime > Precise", "now+4h", "C");
    ROW("generalstudy StudyTime = Fuzzy", "05.2", "B");

    ROW("imageformat FileTime = Precise", "today", "B");
    ROW("imageformat FileTime < Precise", "now-30m", "A");
    ROW("imageformat FileTime = Fuzzy", "03-14", "A");
    ROW("imageformat FileTime = Precise", "", "C");
}
#undef ROW

void TestInquiryFilter::joins_data()
{
    QTest::addColumn<InquiryConditions>("conditions");
    QTest::addColumn<QString>("patients");
    const auto id = [](const char *words, const char *value) {
        return condition(words, QLatin1String(value));
    };
    const char *andNext = "patient PatientID = Precise and";
    const char *orNext = "patient PatientID = Precise or";
    QTest::newRow("none") << InquiryConditions() << "ABCDE";
    QTest::newRow("and binds closer")
        << InquiryConditions{id(orNext, "A"), id(andNext, "B"), id(orNext, "C"), id(andNext, "D")} << "AD";
    QTest::newRow("within the group") << InquiryConditions{id("patient PatientID = Precise OR", "A"),
        id("generalstudy StudyID = Precise xor", ""), id(orNext, "B")}
                                      << "AB";
    QTest::newRow("a row without field joins nothing") << InquiryConditions{id(orNext, "A"),
        id("patient  = Precise and", "x"), id("patient PatientID = Precise x", "B")}
                                                       << "AB";
    QTest::newRow("blanks around the word") << InquiryConditions{
        {QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("="), QStringLiteral("A"),
            QStringLiteral(" Or "), QStringLiteral("Precise")},
        id(andNext, "B")} << "AB";
}

void TestInquiryFilter::joins()
{
    QFETCH(InquiryConditions, conditions);
    QFETCH(QString, patients);
    QCOMPARE(found(RecordLevel::Patient, conditions), patients);
}

void TestInquiryFilter::refuses_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("value");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *words, const char *value, Kind kind, const char *text) {
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(words), QLatin1String(value))))
            << words << value << kind << text;
    };
    row("series Modality = Precise", "CT", Kind::UnknownGroup, "series");
    row("patient 1=1;-- = Precise", "", Kind::UnknownField, "1=1;--");
    row("patient Modality = Precise", "CT", Kind::UnknownField, "Modality");
    row("patient PatientID <> Precise", "1", Kind::UnknownSymbol, "<>");
    row("patient PatientID = Vague", "1", Kind::UnknownQueryType, "Vague");
    row("patient PatientID = Precise nand", "1", Kind::UnknownLogic, "nand");
    row("generalstudy PatientWeight > Fuzzy", "1,000", Kind::NotANumber, "1,000");
    row("generalstudy PatientWeight = Precise", "nan", Kind::NotANumber, "nan");
    for (const char *value : {"2024-02-30", "2024", "today-2h", "now-2", "now-2y", "today-999999999",
             "tomorrow", "14:30", "2024-03-15 10:30"}) {
        row("patient PatientBirthDate = Precise", value, Kind::NotADate, value);
    }
    row("generalstudy StudyTime = Fuzzy", "today", Kind::NotADate, "today");
    row("generalstudy StudyTime = Precise", "25:00", Kind::NotADate, "25:00");
    row("patient updated_time = Precise", "2024-03-15 10:61", Kind::NotADate, "2024-03-15 10:61");
}

void TestInquiryFilter::refuses()
{
    QFETCH(QString, words);
    QFETCH(QString, value);
    QFETCH(Kind, kind);
    const InquiryCondition good = condition("patient PatientID = Precise", QStringLiteral("A"));
    const InquiryCondition bad = condition(words.toUtf8().constData(), value);
    const InquiryCondition worse = condition("nowhere x = Precise", QString());
    const InquiryFilter inquiry = filter({good, bad, good, worse});
    QCOMPARE(int(inquiry.problem().kind), int(kind));
    QCOMPARE(inquiry.problem().field, bad.field);
    QTEST(inquiry.problem().text, "text");
    QVERIFY(inquiry.of(RecordLevel::Patient).text.isEmpty());
    // Rows without a field ask for nothing, which is not for everything.
    const InquiryConditions fieldless{condition("patient  = Precise", QStringLiteral("x"))};
    QCOMPARE(int(filter(fieldless).problem().kind), int(Kind::NoCondition));
}

void TestInquiryFilter::takesHostileTextsAsPlain()
{
    const QStringList texts{QStringLiteral("'; DROP TABLE patient; --"), QStringLiteral("\"`%1 ? :a @b $c"),
        QString(10'000, QLatin1Char('x')), QStringLiteral("\u202eשלום\u202c"),
        QStringLiteral("e\u0301\u0323x"), QString::fromUtf8("be\0hind", 7), QStringLiteral("\u0301"),
        QStringLiteral("％＿")};
    const qlonglong pk = m_index.addPatient(QStringLiteral("Hostile"), QStringLiteral("H"));
    for (const QString &text : texts) {
        m_index.query(QStringLiteral("UPDATE patient SET PatientComments = ? WHERE pk = ?"),
            {QStringLiteral("before ") + text, pk});
        QCOMPARE(found(RecordLevel::Patient, {condition("patient PatientComments = Fuzzy", text)}), "H");
        QCOMPARE(found(RecordLevel::Patient, {condition("patient PatientComments = Precise", text)}), "");
    }
    m_index.query(QStringLiteral("DELETE FROM patient WHERE pk = ?"), {pk});
}

void TestInquiryFilter::takesThousandsOfRows()
{
    for (const char *words : {"patient PatientName > Precise and", "patient PatientName = Fuzzy or"}) {
        InquiryConditions conditions(5000, condition(words, QStringLiteral("S")));
        conditions.last().value = QStringLiteral("Smith");
        QCOMPARE(found(RecordLevel::Patient, conditions),
            conditions.first().logic == QLatin1String("and") ? "CDE" : "CD");
    }
}

void TestInquiryFilter::usesTheIndexOfAColumn()
{
    for (const char *words : {"patient PatientBirthDate = Precise", "patient PatientBirthDate > Precise",
             "patient updated_time = Precise", "patient updated_time > Precise"}) {
        const SqlCondition sql = filter({condition(words, QStringLiteral("today"))}).of(RecordLevel::Patient);
        QSqlQuery plan(m_index.database());
        plan.prepare(QStringLiteral("EXPLAIN QUERY PLAN SELECT pk FROM patient WHERE ") + sql.text);
        for (const QVariant &value : sql.values) {
            plan.addBindValue(value);
        }
        QVERIFY(plan.exec() && plan.next());
        QVERIFY2(!plan.value(3).toString().startsWith(QLatin1String("SCAN")), words);
    }
}

void TestInquiryFilter::readsStoredInquiries()
{
    const QString name = QStringLiteral("Robert'); DROP TABLE andvancequiry;--");
    for (const char *group : {"patient", "imageformat"}) {
        m_index.query(
            QStringLiteral("INSERT INTO andvancequiry (InquiryName, GroupName, FieldName, Symbol, "
                           "FieldValue, Logic, QueryType) VALUES (?, ?, 'f', '=', 'v', 'or', 'Fuzzy')"),
            {name, QLatin1String(group)});
    }
    const InquiryConditions expected{condition("patient f = Fuzzy or", QStringLiteral("v")),
        condition("imageformat f = Fuzzy or", QStringLiteral("v"))};
    QCOMPARE(StoredInquiry::read(m_index.database(), name), expected);
    QSqlError error;
    QVERIFY(StoredInquiry::read(m_index.database(), QStringLiteral("robert"), &error).isEmpty());
    QVERIFY(!error.isValid());
    QCOMPARE(found(RecordLevel::Patient, StoredInquiry::updatedToday()), "ACE");
}

void TestInquiryFilter::startsWithSomeInquiries()
{
    QSqlQuery names(
        QStringLiteral("SELECT DISTINCT InquiryName FROM andvancequiry WHERE UserName = 'super'"));
    QStringList all;
    while (names.next()) {
        all.append(names.value(0).toString());
        const InquiryConditions conditions = StoredInquiry::read(m_index.database(), all.last());
        QVERIFY2(!filter(conditions).problem(), qPrintable(all.last()));
    }
    QCOMPARE(all.size(), 5);
    all.sort();
    QCOMPARE(found(RecordLevel::Patient, StoredInquiry::read(m_index.database(), all.first())), "AC");
}

PM_TEST_MAIN(TestInquiryFilter)
#include "tst_inquiryfilter.moc"
