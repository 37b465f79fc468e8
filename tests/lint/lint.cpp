#include "includerule.h"
#include "testmain.h"

#include <QDirIterator>
#include <QHash>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QDir project(QStringLiteral(PM_SOURCE_DIR));

QStringList sourcesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator walk(project.filePath(folder), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.append(project.relativeFilePath(walk.next()));
    }
    files.sort();
    return files;
}

QString textOf(const QString &file)
{
    QFile opened(project.filePath(file));
    return opened.open(QIODevice::ReadOnly) ? QString::fromUtf8(opened.readAll()) : QString();
}

QStringList matches(const QString &text, const QRegularExpression &pattern)
{
    QStringList found;
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured(1));
    }
    return found;
}

/// Public Qt headers by name, each with the folder of its module.
QHash<QString, QString> qtModules()
{
    QHash<QString, QString> modules;
    for (const char *name : {"QtGui", "QtWidgets", "QtSql", "QtNetwork"}) {
        const QString module = QLatin1String(name);
        for (const QString &header :
            QDir(QStringLiteral(PM_QT_HEADERS "/") + module).entryList(QDir::Files)) {
            modules.insert(header, module);
        }
    }
    return modules;
}

} // namespace

class LintTest : public QObject
{
    Q_OBJECT

private slots:
    void ruleKnowsTheFloors_data();
    void ruleKnowsTheFloors();
    void everyIncludeGoesDown();
    void everyQtModuleIsAllowed();
    void headerNamesAreUnique();
    void noTestSleeps();
};

void LintTest::ruleKnowsTheFloors_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("header");
    QTest::addColumn<bool>("allowed");
    const auto row = [](const char *name, const char *file, const char *header, bool allowed) {
        QTest::newRow(name) << QString::fromLatin1(file) << QString::fromLatin1(header) << allowed;
    };
    row("index below dialogs", "platform/CommonPlugin/a.cpp", "platform/imagebase/index/b.h", true);
    row("dialogs above index", "platform/imagebase/index/a.cpp", "platform/CommonPlugin/b.h", false);
    row("message box knows no patients", "platform/CommonWidgetPlugin/a.h", "platform/imagebase/dicom/b.h",
        false);
    row("index below cloud client", "platform/cloudClientPlugin/upload/a.cpp", "platform/imagebase/index/b.h",
        true);
    row("platform below library", "platform/CommonPlugin/a.cpp", "patientmanager/tables/b.h", false);
    row("library below host", "patientmanager/mainwindow/a.cpp", "workstation/b.h", false);
    row("window joins forms", "patientmanager/mainwindow/a.cpp", "patientmanager/tables/patientform.h", true);
    row("forms apart", "patientmanager/transfer/a.cpp", "patientmanager/tables/patientform.h", false);
    row("no form knows the window", "patientmanager/tables/a.cpp", "patientmanager/mainwindow/b.h", false);
    row("upload from the patient form", "patientmanager/tables/patientform.cpp",
        "patientmanager/transfer/uploadprogressform.h", true);
    row("upload from another form", "patientmanager/tables/studyform.cpp",
        "patientmanager/transfer/uploadprogressform.h", false);
    row("plugin stays small", "patientmanager/plugin/a.cpp", "patientmanager/mainwindow/b.h", false);
}

void LintTest::ruleKnowsTheFloors()
{
    QFETCH(QString, file);
    QFETCH(QString, header);
    QTEST(IncludeRule::allows(file, header), "allowed");
}

void LintTest::everyIncludeGoesDown()
{
    const QStringList sources = sourcesBelow(QStringLiteral("platform"))
        + sourcesBelow(QStringLiteral("patientmanager")) + sourcesBelow(QStringLiteral("workstation"));
    QHash<QString, QString> pathOf;
    for (const QString &file : sources) {
        pathOf.insert(file.section(QLatin1Char('/'), -1), file);
    }
    const QRegularExpression include(
        QLatin1String(R"~(^\s*#\s*include\s*"([^"]+)")~"), QRegularExpression::MultilineOption);
    int checked = 0;
    QStringList broken;
    for (const QString &file : sources) {
        for (const QString &name : matches(textOf(file), include)) {
            const QString header = pathOf.value(name.section(QLatin1Char('/'), -1));
            checked += header.isEmpty() ? 0 : 1;
            if (!header.isEmpty() && !IncludeRule::allows(file, header)) {
                broken.append(file + QStringLiteral(" includes ") + header);
            }
        }
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(QLatin1Char('\n'))));
    QVERIFY2(checked > 50, qPrintable(QStringLiteral("only %1 includes found").arg(checked)));
}

void LintTest::everyQtModuleIsAllowed()
{
    const QHash<QString, QString> modules = qtModules();
    QCOMPARE(modules.value(QStringLiteral("QDialog")), QStringLiteral("QtWidgets"));
    const QRegularExpression include(
        QLatin1String(R"(^\s*#\s*include\s*<([^>]+)>)"), QRegularExpression::MultilineOption);
    QStringList broken;
    for (const QString &file : sourcesBelow(QStringLiteral("platform"))) {
        for (const QString &name : matches(textOf(file), include)) {
            const QString module = modules.value(name.section(QLatin1Char('/'), -1));
            if (!IncludeRule::allowsQtModule(IncludeRule::floorOf(file), module)) {
                broken.append(file + QStringLiteral(" includes ") + name);
            }
        }
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(QLatin1Char('\n'))));
}

/// Headers are included by plain file name, so two of one name would hide each other.
void LintTest::headerNamesAreUnique()
{
    QHash<QString, QString> seen;
    for (const QString &file :
        sourcesBelow(QStringLiteral("platform")) + sourcesBelow(QStringLiteral("patientmanager"))) {
        const QString name = file.section(QLatin1Char('/'), -1);
        if (name.endsWith(QLatin1String(".h"))) {
            QVERIFY2(!seen.contains(name), qPrintable(file + QStringLiteral(" and ") + seen.value(name)));
            seen.insert(name, file);
        }
    }
}

void LintTest::noTestSleeps()
{
    const QRegularExpression sleep(
        QLatin1String(R"(\b(qWait|qSleep|m?sleep|usleep|nanosleep|sleep_for|sleep_until)\s*\()"));
    QCOMPARE(matches(QStringLiteral("QTest::qWait(50); QThread::msleep (5);"), sleep).size(), 2);
    QStringList broken;
    for (const QString &file : sourcesBelow(QStringLiteral("tests"))) {
        const QStringList found = matches(textOf(file), sleep);
        if (!found.isEmpty() && !file.startsWith(QLatin1String("tests/lint/"))) {
            broken.append(file + QStringLiteral(": ") + found.join(QStringLiteral(", ")));
        }
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(QLatin1Char('\n'))));
}

PM_TEST_MAIN(LintTest)
#include "lint.moc"
