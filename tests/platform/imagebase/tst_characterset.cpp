#include "characterset.h"
#include "testmain.h"

#include <QtTest>

class CharacterSetTest : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data()
    {
        QTest::addColumn<QByteArray>("set");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *set, const QByteArray &bytes,
                             const char *expected) {
            QTest::newRow(name) << QByteArray(set) << bytes << QString::fromUtf8(expected);
        };
        row("none, plain", "", "Smith^John", "Smith^John");
        row("none, yet UTF-8", "", "王^小东", "王^小东");
        row("none, no UTF-8", "", "M\xfcller", "Müller");
        row("Latin 1", "ISO_IR 100", "Buc^J\xe9r\xf4me", "Buc^Jérôme");
        row("Latin 1 by another spelling", "ISO-IR 100 ", "J\xe9", "Jé");
        row("Latin 2", "ISO_IR 101", "Wa\xb3\xeasa", "Wałęsa");
        row("Cyrillic", "ISO_IR 144", "\xbb\xee", "Лю");
        row("Turkish", "ISO_IR 148", "\xdd\xfe", "İş");
        row("Thai", "ISO_IR 166", "\xa1\xd2", "กา");
        row("UTF-8", "ISO_IR 192", "山田^太郎", "山田^太郎");
        row("broken UTF-8 as declared", "ISO_IR 192", "A\xff^B", "A\uFFFD^B");
        row("GB18030 with a separator as second byte", "GB18030", "\x81\x5e^\xcd\xf5", "乛^王");
        row("GBK", "GBK", "\xcd\xf5^\xd0\xa1\xb6\xab", "王^小东");
        row("Korean", "\\ISO 2022 IR 149", "Hong=\x1b$)C\xfb\xf3^\x1b$)C\xd1\xce", "Hong=洪^吉");
        row("Chinese by extension", "\\ISO 2022 IR 58", "Zhang=\x1b$)A\xd5\xc5^\x1b$)A\xd0\xa1",
            "Zhang=张^小");
        row("Japanese", "\\ISO 2022 IR 87", "Yamada=\x1b$B;3ED\x1b(B^\x1b$BB@O:\x1b(B", "Yamada=山田^太郎");
        row("Japanese, a separator as first byte", "\\ISO 2022 IR 87", "\x1b$B^\x24\x1b(B^A", "泙^A");
        row("half-width katakana", "ISO 2022 IR 13\\ISO 2022 IR 87", "\xd4\xcf\xc0\xde\x1b$B;3\x1b(J",
            "ﾔﾏﾀﾞ山");
        row("supplementary kanji", "\\ISO 2022 IR 159", "\x1b$(D\x30\x21\x1b(B", "丂");
        row("cut in a character", "\\ISO 2022 IR 87", "A\x1b$B;", "A\x1b$B;");
        row("unknown escape", "\\ISO 2022 IR 87", "A\x1b%Z", "A\x1b%Z");
        row("unknown set", "ISO_IR 999", "M\xfcller", "Müller");
        row("nonsense as set", "\x01\\\\\x02\\", "M\xfcller", "Müller");
    }

    void decodes()
    {
        QFETCH(QByteArray, set);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        CharacterSet characterSet;
        characterSet.select(set);
        QCOMPARE(
            characterSet.decode(bytes.constData(), bytes.size(), CharacterSet::Form::PersonName), expected);
    }

    void keepsSetsApart()
    {
        CharacterSet characterSet;
        const auto decode = [&](const QByteArray &set) {
            characterSet.select(set);
            return characterSet.decode("\xe4", 1, CharacterSet::Form::Values);
        };
        for (int round = 0; round < 100; ++round) {
            QCOMPARE(decode("ISO_IR 100"), QString::fromUtf8("ä"));
            QCOMPARE(decode("ISO_IR 126"), QString::fromUtf8("δ"));
            QCOMPARE(
                decode(QByteArray("ISO_IR 1") + QByteArray::number(200 + round)), QString::fromUtf8("ä"));
            QCOMPARE(decode("ISO_IR 144"), QString::fromUtf8("ф"));
            QCOMPARE(decode(""), QString::fromUtf8("ä"));
        }
    }
};

PM_TEST_MAIN(CharacterSetTest)
#include "tst_characterset.moc"
