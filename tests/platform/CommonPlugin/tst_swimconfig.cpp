#include "appearancesettings.h"
#include "configlocation.h"
#include "dicomdestination.h"
#include "launchersettings.h"
#include "receivesettings.h"
#include "settingsnotifier.h"
#include "swimconfig.h"
#include "testfiles.h"
#include "testmain.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QButtonGroup *group(const char *key)
{
    return swimconfig::instance()->findChild<QButtonGroup *>(QLatin1String(key));
}

void choose(const char *key, int value)
{
    group(key)->button(value)->click();
}

void pressOk()
{
    swimconfig::instance()->findChild<QPushButton *>(QStringLiteral("ok"))->click();
}

QVariant valueIn(const QString &file, const char *key)
{
    return QSettings(file, QSettings::IniFormat).value(QLatin1String(key));
}

void write(const QString &file, const char *key, int value)
{
    QSettings(file, QSettings::IniFormat).setValue(QLatin1String(key), value);
}

template <typename Widget>
Widget *part(const char *name)
{
    return swimconfig::instance()->findChild<Widget *>(QLatin1String(name));
}

/// As keys do, so that the page hears of it.
void type(const char *name, const QString &text)
{
    auto *field = part<QLineEdit>(name);
    field->setText(text);
    emit field->textEdited(text);
}

} // namespace

class SwimconfigTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_workingDirectory = QDir::currentPath();
        for (const char *path : {"app/bin", "work"}) {
            QVERIFY(QDir(m_folder->path()).mkpath(QLatin1String(path)));
        }
        QDir::setCurrent(inFolder(QStringLiteral("work")));
        ConfigLocation::setBase(inFolder(QStringLiteral("app/bin")));
        m_beside = inFolder(QStringLiteral("app/bin/config/main.ini"));
        m_above = inFolder(QStringLiteral("app/config/main.ini"));
        m_working = inFolder(QStringLiteral("work/config/main.ini"));
    }

    void cleanup()
    {
        swimconfig::instance()->close();
        ConfigLocation::setBase(QString());
        QDir::setCurrent(m_workingDirectory);
    }

    void showsAndWritesWhereEachReaderLooks()
    {
        write(m_working, ConfigKey::importMode, 2);
        write(m_beside, ConfigKey::deleteMode, 1);
        write(m_above, ConfigKey::deleteMode, 0);
        swimconfig::instance()->show();
        QCOMPARE(group(ConfigKey::importMode)->checkedId(), 2);
        QCOMPARE(group(ConfigKey::deleteMode)->checkedId(), 1);
        QCOMPARE(group(ConfigKey::duplicatePolicy)->checkedId(), 0);
        choose(ConfigKey::importMode, 1);
        choose(ConfigKey::deleteMode, 0);
        choose(ConfigKey::duplicatePolicy, 1);
        pressOk();
        QVERIFY(!swimconfig::instance()->isVisible());
        QCOMPARE(valueIn(m_working, ConfigKey::importMode).toInt(), 1);
        QCOMPARE(valueIn(m_beside, ConfigKey::deleteMode).toInt(), 0);
        QCOMPARE(valueIn(m_beside, ConfigKey::duplicatePolicy).toInt(), 1);
        QVERIFY(!valueIn(m_above, ConfigKey::duplicatePolicy).isValid());
        QVERIFY(!valueIn(m_beside, ConfigKey::importMode).isValid());
    }

    void firstSettingMakesTheFile()
    {
        swimconfig::instance()->show();
        choose(ConfigKey::importMode, 1);
        pressOk();
        // Where the main window looks, which never is beside the program.
        QCOMPARE(valueIn(m_above, ConfigKey::importMode).toInt(), 1);
        swimconfig::instance()->show();
        QCOMPARE(group(ConfigKey::importMode)->checkedId(), 1);
    }

    void cancelWritesNothing()
    {
        swimconfig::instance()->show();
        QVERIFY(QTest::qWaitForWindowActive(swimconfig::instance()));
        choose(ConfigKey::deleteMode, 1);
        QTest::keyClick(swimconfig::instance(), Qt::Key_Escape);
        QVERIFY(!swimconfig::instance()->isVisible());
        QVERIFY(!QFile::exists(m_beside));
        swimconfig::instance()->show();
        QCOMPARE(group(ConfigKey::deleteMode)->checkedId(), 0);
    }

    void valueOfNoChoiceIsLeftAlone()
    {
        write(m_beside, ConfigKey::deleteMode, 1);
        swimconfig::instance()->show();
        swimconfig::instance()->close();
        write(m_beside, ConfigKey::deleteMode, 5);
        swimconfig::instance()->show();
        QCOMPARE(group(ConfigKey::deleteMode)->checkedId(), -1);
        pressOk();
        QCOMPARE(valueIn(m_beside, ConfigKey::deleteMode).toInt(), 5);
    }

    void saysThatAFileCannotBeWritten()
    {
        // A file where the folder should be stops even the superuser.
        writeFile(inFolder(QStringLiteral("app/bin/config")));
        swimconfig::instance()->show();
        choose(ConfigKey::deleteMode, 1);
        pressOk();
        QVERIFY(swimconfig::instance()->isVisible());
        const auto *failure = swimconfig::instance()->findChild<QLabel *>(QStringLiteral("failure"));
        QVERIFY(failure->isVisible());
        QVERIFY(failure->text().contains(m_beside));
    }

    void keepsDestinations()
    {
        const QString file = inFolder(QStringLiteral("app/config/dicomsendservice.ini"));
        writeFile(file,
            "; nodes\n[Archive]\nAETitle=ARCHIVE\nIP=192.0.2.10\nPort=104\nTLS=yes\n\n[Old "
            "one]\nAETitle=OLD\n"
            "IP=old\nPort=105\n");
        swimconfig::instance()->showPage(swimconfig::Destinations);
        auto *list = part<QListWidget>("destinations");
        QCOMPARE(list->count(), 2);
        list->setCurrentRow(1);
        part<QPushButton>("removeDestination")->click();
        list->setCurrentRow(0);
        type("ip", QStringLiteral("archive.example"));
        part<QPushButton>("addDestination")->click();
        type("destinationName", QStringLiteral("Zweigstelle Köln"));
        type("aeTitle", QStringLiteral("KOELN"));
        type("ip", QStringLiteral("192.0.2.11"));
        part<QSpinBox>("port")->setValue(11112);
        pressOk();
        QVERIFY(!swimconfig::instance()->isVisible());
        QVERIFY(!QFile::exists(inFolder(QStringLiteral("app/bin/config/dicomsendservice.ini"))));
        QVERIFY(bytesOf(file).startsWith("; nodes\n[Archive]\nAETitle=ARCHIVE\nIP=archive.example\n"));
        QCOMPARE(valueIn(file, "Archive/TLS").toString(), QStringLiteral("yes"));
        const QVector<DicomDestination> now = DestinationSettings::read();
        QCOMPARE(now.size(), 2);
        QVERIFY(now.contains({QStringLiteral("Zweigstelle Köln"), QStringLiteral("KOELN"),
            QStringLiteral("192.0.2.11"), 11112}));
    }

    void leavesHandWrittenDestinationsAlone()
    {
        const QString file = inFolder(QStringLiteral("app/config/dicomsendservice.ini"));
        writeFile(file, "[Bad]\nAETitle=BAD\nIP=bad\n\n[Good]\nAETitle=GOOD\nIP=good\nPort=104\nTLS=yes\n");
        swimconfig::instance()->showPage(swimconfig::Destinations);
        auto *list = part<QListWidget>("destinations");
        list->setCurrentRow(0);
        QCOMPARE(part<QSpinBox>("port")->value(), 0);
        list->setCurrentRow(1);
        type("destinationName", QStringLiteral("Better"));
        pressOk();
        QVERIFY2(!swimconfig::instance()->isVisible(), qPrintable(part<QLabel>("failure")->text()));
        QVERIFY(bytesOf(file).startsWith("[Bad]\nAETitle=BAD\nIP=bad\n\n"));
        QVERIFY(!bytesOf(file).contains("Good"));
        QCOMPARE(valueIn(file, "Better/TLS").toString(), QStringLiteral("yes"));
        QCOMPARE(valueIn(file, "Better/IP").toString(), QStringLiteral("good"));

        swimconfig::instance()->showPage(swimconfig::Destinations);
        list->setCurrentRow(0);
        type("ip", QStringLiteral("changed"));
        pressOk();
        QVERIFY2(
            part<QLabel>("failure")->text().contains(QStringLiteral("65535")), "it is judged once changed");
    }

    void keepsApplicationsAndCloud()
    {
        const QString users = inFolder(QStringLiteral("app/bin/config/username.ini"));
        writeFile(users, "[currentusername]\ndbname=me\nremberPwd=true\n");
        swimconfig::instance()->showPage(swimconfig::Applications);
        part<QComboBox>("launcher")->setCurrentIndex(LauncherSettings::all().indexOf(LauncherId::Vessel));
        type("program", QStringLiteral("/usr/bin/vessel tool"));
        part<QPlainTextEdit>("arguments")->setPlainText(QStringLiteral("--study\n{studyUID}\na, \"b\""));
        type("cloud", QStringLiteral("ftp://example.org"));
        pressOk();
        QVERIFY(swimconfig::instance()->isVisible());
        QVERIFY(part<QLabel>("failure")->isVisible());
        QCOMPARE(LauncherSettings::read(LauncherId::Vessel), Launcher());
        type("cloud", QStringLiteral("https://cloud.example.org/api"));
        pressOk();
        QVERIFY(!swimconfig::instance()->isVisible());
        const Launcher vessel = LauncherSettings::read(LauncherId::Vessel);
        QCOMPARE(vessel.program, QStringLiteral("/usr/bin/vessel tool"));
        QCOMPARE(vessel.arguments,
            (QStringList{
                QStringLiteral("--study"), QStringLiteral("{studyUID}"), QStringLiteral("a, \"b\"")}));
        QCOMPARE(bytesOf(users),
            QByteArray(
                "[currentusername]\ndbname=me\nremberPwd=true\ncloud=https://cloud.example.org/api\n"));
    }

    void tellsOfAnotherLookAtOnce()
    {
        QSignalSpy theme(SettingsNotifier::instance(), &SettingsNotifier::themeChanged);
        QSignalSpy language(SettingsNotifier::instance(), &SettingsNotifier::languageChanged);
        swimconfig::instance()->showPage(swimconfig::Appearance);
        part<QComboBox>("theme")->setCurrentIndex(part<QComboBox>("theme")->findData(int(Theme::Dark)));
        pressOk();
        QCOMPARE(theme.count(), 1);
        QCOMPARE(language.count(), 0);
        QCOMPARE(AppearanceSettings::theme(), Theme::Dark);
    }

    void keepsHowToReceiveAndTellsAtOnce()
    {
        ReceiveSettings before = ReceiveSettings::read();
        before.port = 70000; // more than the field can show
        QVERIFY(before.write());
        QSignalSpy told(SettingsNotifier::instance(), &SettingsNotifier::receivingChanged);
        swimconfig::instance()->showPage(swimconfig::Receiving);
        QVERIFY(!part<QCheckBox>("receive")->isChecked());
        QCOMPARE(part<QComboBox>("receiveAddress")->currentData().toString(), QStringLiteral("127.0.0.1"));
        pressOk();
        QCOMPARE(told.count(), 0);
        QCOMPARE(ReceiveSettings::read().port, 70000);

        swimconfig::instance()->showPage(swimconfig::Receiving);
        part<QCheckBox>("receive")->click();
        part<QSpinBox>("receivePort")->setValue(10104);
        type("receiveCallers", QStringLiteral("CT 1, too long for an AE title"));
        pressOk();
        QVERIFY(part<QLabel>("failure")->isVisible());
        part<QCheckBox>("receive")->click(); // what cannot be changed any more is not judged
        pressOk();
        QVERIFY2(!swimconfig::instance()->isVisible(), qPrintable(part<QLabel>("failure")->text()));
        swimconfig::instance()->showPage(swimconfig::Receiving);
        part<QCheckBox>("receive")->click();
        type("receiveCallers", QStringLiteral(" CT 1,, MR")); // a list in place of another
        pressOk();
        QVERIFY2(!swimconfig::instance()->isVisible(), qPrintable(part<QLabel>("failure")->text()));
        QCOMPARE(told.count(), 2);
        const ReceiveSettings settings = ReceiveSettings::read();
        QVERIFY(settings.enabled && settings.synced);
        QCOMPARE(settings.port, 10104);
        QCOMPARE(settings.callers, (QStringList{QStringLiteral("CT 1"), QStringLiteral("MR")}));
        QCOMPARE(settings.aeTitle, QStringLiteral("PATIENTMANAGER"));
    }

private:
    QString inFolder(const QString &path) const { return m_folder->filePath(path); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_workingDirectory;
    QString m_beside;
    QString m_above;
    QString m_working;
};

PM_TEST_MAIN(SwimconfigTest)
#include "tst_swimconfig.moc"
