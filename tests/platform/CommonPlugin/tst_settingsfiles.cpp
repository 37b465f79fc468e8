#include "dicomdestination.h"
#include "inifile.h"
#include "testfiles.h"
#include "testmain.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(DicomDestination)

class SettingsFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void changesOneLine_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const char *before, const char *key, const QVariant &value,
                             const char *after) {
            QTest::newRow(name) << QByteArray(before) << QString::fromUtf8(key) << value << QByteArray(after);
        };
        row("value", "; why\n[a]\n; what\nx=1\ny=2\n", "a/x", 0, "; why\n[a]\n; what\nx=0\ny=2\n");
        row("new key", "[a]\nx=1\n\n[b b]\ny=1, 2\n", "a/z", 3, "[a]\nx=1\nz=3\n\n[b b]\ny=1, 2\n");
        row("new group", "[a]\nx=1", "c/x", QStringLiteral("t"), "[a]\nx=1\n\n[c]\nx=t\n");
        row("new file", "", "c/x", 1, "[c]\nx=1\n");
        row("group with a blank", "[b b]\ny=1\n", "b b/y", 2, "[b b]\ny=2\n");
        row("line that goes on", "[a]\nx=1,\\\n2\ny=3\n", "a/x", 4, "[a]\nx=4\ny=3\n");
        row("list", "[a]\n; c\n", "a/x", QStringList{QStringLiteral("1;2"), QStringLiteral("é")},
            "[a]\n; c\nx=\"1;2\", \\xe9\n");
        row("same key elsewhere", "[b]\nx=1\n[a]\nx=1\n", "a/x", 2, "[b]\nx=1\n[a]\nx=2\n");
    }

    void changesOneLine()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        const QString path = write(before);
        QVERIFY(IniFile::setValue(path, key, value));
        QTEST(bytesOf(path), "after");
        const QVariant now = QSettings(path, QSettings::IniFormat).value(key);
        QCOMPARE(now.toStringList(),
            value.type() == QVariant::StringList ? value.toStringList() : QStringList{value.toString()});
    }

    void removesAGroup()
    {
        const QString path = write("; top\n[a]\nx=1\n[b]\n; inner\ny=1\n\n; of c\n[c]\nz=1\n");
        QVERIFY(IniFile::removeGroup(path, QStringLiteral("b")));
        QCOMPARE(bytesOf(path), QByteArray("; top\n[a]\nx=1\n\n; of c\n[c]\nz=1\n"));
        QVERIFY(IniFile::removeGroup(path, QStringLiteral("b")));
    }

    void refusesADestination_data()
    {
        QTest::addColumn<DicomDestination>("destination");
        QTest::addColumn<int>("fault");
        const auto row = [](const char *name, const DicomDestination &destination, DestinationFault fault) {
            QTest::newRow(name) << destination << int(fault);
        };
        const QString ip = QStringLiteral("192.0.2.1");
        const QString ae = QStringLiteral("AE");
        row("good", {QStringLiteral("B"), ae, ip, 65535}, DestinationFault::None);
        row("no name", {QString(), ae, ip, 104}, DestinationFault::NoName);
        row("slash", {QStringLiteral("a/b"), ae, ip, 104}, DestinationFault::BadName);
        row("reserved", {QStringLiteral("General"), ae, ip, 104}, DestinationFault::BadName);
        row("twice", {QStringLiteral("archive"), ae, ip, 104}, DestinationFault::SameName);
        row("AE of 17", {QStringLiteral("B"), QString(17, QLatin1Char('A')), ip, 104},
            DestinationFault::BadAeTitle);
        row("AE not ASCII", {QStringLiteral("B"), QStringLiteral("Ä"), ip, 104},
            DestinationFault::BadAeTitle);
        row("AE of blanks", {QStringLiteral("B"), QStringLiteral("  "), ip, 104},
            DestinationFault::BadAeTitle);
        row("no address", {QStringLiteral("B"), ae, QString(), 104}, DestinationFault::NoAddress);
        row("port 0", {QStringLiteral("B"), ae, ip, 0}, DestinationFault::BadPort);
        row("port too high", {QStringLiteral("B"), ae, ip, 65536}, DestinationFault::BadPort);
    }

    void refusesADestination()
    {
        QFETCH(DicomDestination, destination);
        QFETCH(int, fault);
        const QVector<DicomDestination> all{
            {QStringLiteral("Archive"), QStringLiteral("A"), QStringLiteral("a"), 104}, destination};
        QCOMPARE(int(DestinationSettings::faultOf(all, 1)), fault);
    }

private:
    QString write(const QByteArray &bytes) const
    {
        QString path =
            m_folder.filePath(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".ini"));
        writeFile(path, bytes);
        return path;
    }

    QTemporaryDir m_folder;
};

PM_TEST_MAIN(SettingsFilesTest)
#include "tst_settingsfiles.moc"
