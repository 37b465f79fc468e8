#include "temporaryindex.h"
#include "testmain.h"
#include "textfold.h"

#include <QtTest>

/// How texts look to a search, alike in the program and in the database.
class TestTextFold : public QObject
{
    Q_OBJECT

private slots:
    void folds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("folded");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *title, const QString &text, const QString &folded,
                             const QString &name) { QTest::newRow(title) << text << folded << name; };
        row("plain", QStringLiteral("ABC  x^Y=Z, w"), QStringLiteral("abc  x^y=z, w"),
            QStringLiteral("abc x y z w"));
        row("accents", QStringLiteral("Müller^Jörg^^"), QStringLiteral("muller^jorg^^"),
            QStringLiteral("muller jorg"));
        row("combining", QStringLiteral("u\u0308\u0323"), QStringLiteral("u"), QStringLiteral("u"));
        row("width", QStringLiteral("ＭＵＬＬＥＲ"), QStringLiteral("muller"), QStringLiteral("muller"));
        row("letters of their own", QStringLiteral("ØŁĐĦÆŒIıİßẞ"), QStringLiteral("oldhaeoeiiissss"),
            QStringLiteral("oldhaeoeiiissss"));
        row("kana voicing", QStringLiteral("ｶﾞガ"), QStringLiteral("ガガ"), QStringLiteral("ガガ"));
        row("points", QStringLiteral("שָׁלוֹם مُحَمَّد"), QStringLiteral("שלום محمد"), QStringLiteral("שלום محمد"));
        row("virama", QStringLiteral("क्षि"), QStringLiteral("क्षि"), QStringLiteral("क्षि"));
        row("hangul", QStringLiteral("한글"), QStringLiteral("한글"), QStringLiteral("한글"));
        row("beyond the first plane", QStringLiteral("𝐀😀𠮷"), QStringLiteral("a😀𠮷"), QStringLiteral("a😀𠮷"));
        row("NUL", QString::fromUtf8("A\0B", 3), QString::fromUtf8("a\0b", 3), QString::fromUtf8("a\0b", 3));
    }

    void folds()
    {
        QFETCH(QString, text);
        QFETCH(QString, folded);
        QFETCH(QString, name);
        const TemporaryIndex index;
        QCOMPARE(foldedText(text), folded);
        QCOMPARE(foldedName(text), name);
        QCOMPARE(index.query(QStringLiteral("SELECT hex(folded(?))"), {text}).toByteArray().toLower(),
            folded.toUtf8().toHex());
        QCOMPARE(index.query(QStringLiteral("SELECT hex(foldedname(?))"), {text}).toByteArray().toLower(),
            name.toUtf8().toHex());
    }

    void keepsNullAndWhatHasNoLetters()
    {
        const TemporaryIndex index;
        QCOMPARE(
            index.query(QStringLiteral("SELECT folded(NULL) IS NULL AND foldedname(NULL) IS NULL")).toInt(),
            1);
        QCOMPARE(index.query(QStringLiteral("SELECT folded(12)")).toString(), QStringLiteral("12"));
        QCOMPARE(foldedText(QStringLiteral("\u0301")), QString());
    }
};

PM_TEST_MAIN(TestTextFold)
#include "tst_textfold.moc"
