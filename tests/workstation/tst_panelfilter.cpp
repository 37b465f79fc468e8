#include "panelfilter.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlQuery>
#include <QtTest>

Q_DECLARE_METATYPE(PanelRows)

namespace {

const PanelRows nameOnly{true, false, false, false};
const PanelRows idOnly{false, true, false, false};
const QString days = QStringLiteral("updated_time >= '2024-02-28'&&updated_time <= '2024-02-29'");

QString nameText(const QString &name)
{
    return QStringLiteral("PatientName = '") + name + QStringLiteral("'&&") + days;
}

} // namespace

class PanelFilterTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto add = [this](const QString &name, const char *id, const char *time) {
            index.addPatient(name, QLatin1String(id), QLatin1String(time));
        };
        add(QStringLiteral("O'Brien^Mary"), "1", "2024-02-27 23:59:59");
        add(QStringLiteral("Yamada^Tarou=山田^太郎=やまだ^たろう"), "2", "2024-02-28 00:00:00");
        add(QStringLiteral("Müller^Jörg^^Dr."), "3'&&4", "2024-02-29 23:59:59");
        add(QStringLiteral("100%_ok^A&&B"), "x' or '1'='1", "2024-03-01 00:00:00");
    }

    void findsPeople_data()
    {
        QTest::addColumn<QString>("emitted");
        QTest::addColumn<PanelRows>("rows");
        QTest::addColumn<QString>("found");
        const auto name = [](const char *title, const QString &typed, const char *found) {
            QTest::newRow(title) << nameText(typed) << nameOnly << QString::fromLatin1(found);
        };
        name("a quote", QStringLiteral("O'Brien"), "1");
        name("parts in any order, case and accents", QStringLiteral("jorg, MULLER"), "3");
        name("ideographs in one piece", QStringLiteral("山田太郎"), "2");
        name("each word must be there", QStringLiteral("Yamada Jiro"), "");
        name("a part of a word, wide", QStringLiteral("ｙａｍａ"), "2");
        name("no wildcards", QStringLiteral("0%_o"), "4");
        name("wildcards find nobody", QStringLiteral("%b%"), "");
        name("what looks like a conjunction", QStringLiteral("A&&B"), "4");
        name("what looks like the ID row", QStringLiteral("x'&&PatientID = '2"), "");
        name("what looks like the days", QStringLiteral("x'&&updated_time >= '2024-02-28"), "");
        name("nothing but blanks and separators", QStringLiteral(" ^ "), "1234");
        const auto id = [](const char *title, const QString &typed, const char *found) {
            QTest::newRow(title) << "PatientID = '" + typed + "'&&" + days << idOnly
                                 << QString::fromLatin1(found);
        };
        id("an ID with blanks around", QStringLiteral(" 2 "), "2");
        id("a part of an ID", QStringLiteral("3"), "");
        id("an ID like the filter's own signs", QStringLiteral("3'&&4"), "3");
        id("a condition for an ID", QStringLiteral("x' or '1'='1"), "4");
        QTest::newRow("both") << "PatientName = 'yama'&&PatientID = '2'&&" + days
                              << PanelRows{true, true, false, false} << "2";
        QTest::newRow("no row") << days << PanelRows{false, false, false, false} << "1234";
        QTest::newRow("from a day on") << days << PanelRows{false, false, true, false} << "234";
        QTest::newRow("to the end of a leap day") << days << PanelRows{false, false, false, true} << "123";
        QTest::newRow("all four") << "PatientName = 'jörg'&&PatientID = '3'&&4'&&" + days
                                  << PanelRows{true, true, true, true} << "3";
    }

    void findsPeople()
    {
        QFETCH(QString, emitted);
        QFETCH(PanelRows, rows);
        const std::optional<QString> condition = PanelFilter::condition(emitted, rows);
        QVERIFY(condition);
        const QString where = condition->isEmpty() ? *condition : QStringLiteral(" WHERE ") + *condition;
        QTEST(index
                  .query(
                      QStringLiteral("SELECT coalesce(group_concat(pk, ''), '') FROM (SELECT pk FROM patient")
                      + where + QStringLiteral(" ORDER BY pk)"))
                  .toString(),
            "found");
    }

    void refusesWhatNoPanelEmits_data()
    {
        QTest::addColumn<QString>("emitted");
        QTest::newRow("another condition") << QStringLiteral("1 = 1");
        QTest::newRow("no days") << QStringLiteral("PatientName = 'Li'");
        QTest::newRow("a row that is not checked") << "PatientID = '1'&&" + days;
        QTest::newRow("no end of the value") << "PatientName = '&&" + days;
    }

    void refusesWhatNoPanelEmits()
    {
        QFETCH(QString, emitted);
        QVERIFY(!PanelFilter::condition(emitted, nameOnly));
    }

private:
    const TemporaryIndex index;
};

PM_TEST_MAIN(PanelFilterTest)
#include "tst_panelfilter.moc"
