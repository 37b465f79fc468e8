#include "configlocation.h"
#include "swimconfig.h"
#include "testmain.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
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

} // namespace

class SwimconfigTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsAndWritesWhereEachReaderLooks();
    void firstSettingMakesTheFile();
    void cancelWritesNothing();
    void valueOfNoChoiceIsLeftAlone();
    void saysThatAFileCannotBeWritten();

private:
    QString inFolder(const QString &path) const { return m_folder->filePath(path); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_workingDirectory;
    QString m_beside;
    QString m_above;
    QString m_working;
};

void SwimconfigTest::init()
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

void SwimconfigTest::cleanup()
{
    swimconfig::instance()->close();
    ConfigLocation::setBase(QString());
    QDir::setCurrent(m_workingDirectory);
}

void SwimconfigTest::showsAndWritesWhereEachReaderLooks()
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

void SwimconfigTest::firstSettingMakesTheFile()
{
    swimconfig::instance()->show();
    choose(ConfigKey::importMode, 1);
    pressOk();
    // Where the main window looks, which never is beside the program.
    QCOMPARE(valueIn(m_above, ConfigKey::importMode).toInt(), 1);
    swimconfig::instance()->show();
    QCOMPARE(group(ConfigKey::importMode)->checkedId(), 1);
}

void SwimconfigTest::cancelWritesNothing()
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

void SwimconfigTest::valueOfNoChoiceIsLeftAlone()
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

void SwimconfigTest::saysThatAFileCannotBeWritten()
{
    // A file where the folder should be stops even the superuser.
    QFile obstacle(inFolder(QStringLiteral("app/bin/config")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    obstacle.close();
    swimconfig::instance()->show();
    choose(ConfigKey::deleteMode, 1);
    pressOk();
    QVERIFY(swimconfig::instance()->isVisible());
    const auto *failure = swimconfig::instance()->findChild<QLabel *>(QStringLiteral("failure"));
    QVERIFY(failure->isVisible());
    QVERIFY(failure->text().contains(m_beside));
}

PM_TEST_MAIN(SwimconfigTest)
#include "tst_swimconfig.moc"
