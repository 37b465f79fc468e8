#include "personname.h"
#include "testmain.h"

#include <QtTest>

class PersonNameTest : public QObject
{
    Q_OBJECT

private slots:
    void display_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *title, const char *name, const char *expected) {
            QTest::newRow(title) << QString::fromUtf8(name) << QString::fromUtf8(expected);
        };
        row("empty", "", "");
        row("one word", "Anonymous", "Anonymous");
        row("family and given", "Smith^John", "Smith, John");
        row("all components", "Adams^John^Robert Quincy^Rev.^B.A. M.Div.",
            "Adams, Rev. John Robert Quincy, B.A. M.Div.");
        row("given alone", "^John", "John");
        row("family and prefix", "Smith^^^Dr.", "Smith, Dr.");
        row("family and suffix", "Smith^^^^Jr.", "Smith, Jr.");
        row("only separators", "^^=^=", "");
        row("three groups", "Yamada^Tarou=山田^太郎=やまだ^たろう",
            "Yamada, Tarou (山田 太郎, やまだ たろう)");
        row("two groups", "Yamada^Tarou=山田^太郎", "Yamada, Tarou (山田 太郎)");
        row("no alphabetic group", "=山田^太郎=やまだ^たろう", "山田 太郎 (やまだ たろう)");
        row("no ideographic group", "Hong^Gildong==홍^길동", "Hong, Gildong (홍 길동)");
        row("ideographs in the first group", "王^小东", "王 小东");
        row("same in two groups", "王^小东=王^小东", "王 小东");
        row("several names", "A^B\\C^D", "A, B; C, D");
        row("more components than there are", "A^B^C^D^E^F^G", "A, D B C, E, F, G");
        row("place marks of a format", "%1^%2=%s^%n", "%1, %2 (%s, %n)");
        row("blanks", "  Smith  ^ John ", "Smith, John");
    }

    void display()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QCOMPARE(personNameForDisplay(name), expected);
    }

    void typed()
    {
        for (const char *name : {"Smith, John", "Smith ,John", "Smith^John"}) {
            QCOMPARE(personNameFromTyped(QLatin1String(name)), QStringLiteral("Smith^John"));
        }
        QCOMPARE(personNameFromTyped(QStringLiteral("Smith^John, Dr.")), QStringLiteral("Smith^John, Dr."));
    }
};

PM_TEST_MAIN(PersonNameTest)
#include "tst_personname.moc"
