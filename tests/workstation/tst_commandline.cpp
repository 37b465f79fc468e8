#include "commandline.h"
#include "configlocation.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void makesEveryPathAbsolute()
    {
        const CommandLine line = parse({QStringLiteral("--database"), QStringLiteral("a/b.db"),
            QStringLiteral("--screenshot=p.png"), QStringLiteral("one"), QStringLiteral("--config"),
            QStringLiteral("/etc/here"), QStringLiteral("--quit-when-idle"), QStringLiteral("/two")});
        const QDir here;
        QCOMPARE(line.database, here.absoluteFilePath(QStringLiteral("a/b.db")));
        QCOMPARE(line.screenshot, here.absoluteFilePath(QStringLiteral("p.png")));
        QCOMPARE(line.config, QStringLiteral("/etc/here"));
        QCOMPARE(line.imports,
            (QStringList{here.absoluteFilePath(QStringLiteral("one")), QStringLiteral("/two")}));
        QVERIFY(line.quitWhenIdle);
        QVERIFY(line.answer.isEmpty());
    }

    void takesWhatFollowsTwoDashesAsPaths()
    {
        QCOMPARE(parse({QStringLiteral("--"), QStringLiteral("--database")}).imports.size(), 1);
    }

    void answersInsteadOfStarting_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("part");
        QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << QStringLiteral("--screenshot");
        QTest::newRow("unknown option")
            << QStringList{QStringLiteral("--databse=x")} << 2 << QStringLiteral("databse");
        QTest::newRow("value missing")
            << QStringList{QStringLiteral("--database")} << 2 << QStringLiteral("database");
    }
    void answersInsteadOfStarting()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        QFETCH(QString, part);
        const CommandLine line = parse(arguments);
        QCOMPARE(line.answerCode, code);
        QVERIFY2(line.answer.contains(part), qPrintable(line.answer));
    }

    void listsOfFilesArePreviewed()
    {
        const QTemporaryDir folder;
        const QString list = folder.filePath(QStringLiteral("list.TXT"));
        writeFile(list, "/a b.dcm\r\n\r\n\n/c.dcm\n");
        const CommandLine line = parse({QStringLiteral("--preview"), list, QStringLiteral("/d.dcm")});
        QVERIFY(line.previewOnly);
        QVERIFY(line.imports.isEmpty());
        QCOMPARE(line.previews,
            (QStringList{QStringLiteral("/a b.dcm"), QStringLiteral("/c.dcm"), QStringLiteral("/d.dcm")}));
        QCOMPARE(parse({QStringLiteral("--preview")}).answerCode, 2);

        QFile::resize(list, 17 << 20); // zeros: no text, whatever it is called
        QCOMPARE(parse({QStringLiteral("--preview"), list}).previews, QStringList(list));
        writeFile(list, QByteArray(17 << 20, '\n'));
        QCOMPARE(parse({QStringLiteral("--preview"), list}).answerCode, 2);
    }

    /// The programs that the workstation starts look for their settings where it does.
    void theSettingsFolderIsHandedOn()
    {
        const QTemporaryDir folder;
        for (const QString &base : {folder.filePath(QStringLiteral("名 é")), QString()}) {
            ConfigLocation::setBase(base);
            const QString ours = ConfigLocation::base();
            ConfigLocation::handOn();
            ConfigLocation::setBase(QStringLiteral("/elsewhere"));
            ConfigLocation::takeHandedOn();
            QCOMPARE(ConfigLocation::base(), ours);
        }
    }

private:
    static CommandLine parse(const QStringList &arguments)
    {
        return CommandLine::parse(QStringList{QStringLiteral("workstation")} + arguments);
    }
};

PM_TEST_MAIN(CommandLineTest)
#include "tst_commandline.moc"
