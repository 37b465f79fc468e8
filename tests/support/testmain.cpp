#include "testmain.h"

#include <QApplication>
#include <QDir>
#include <QMutex>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cstdio>

namespace {

std::atomic<int> unexpected{0};
QtMessageHandler forward = nullptr;
QMutex allowedMutex;

QStringList &allowed()
{
    static QStringList parts;
    return parts;
}

bool isAllowed(const QString &text)
{
    const QMutexLocker lock(&allowedMutex);
    for (const QString &part : allowed()) {
        if (text.contains(part)) {
            return true;
        }
    }
    return false;
}

void countWarnings(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if ((type == QtWarningMsg || type == QtCriticalMsg) && !isAllowed(text)) {
        ++unexpected;
        std::fprintf(stderr, "unexpected warning: %s\n", qPrintable(text));
    }
    if (forward) {
        forward(type, context, text);
    }
}

} // namespace

void allowWarning(const QString &part)
{
    const QMutexLocker lock(&allowedMutex);
    allowed().append(part);
}

void allowWarningsOfNamedSlots()
{
    for (const char *slot : {"revertall_clicked()", "submit_clicked()", "Delete_clicked()",
             "reflash_clicked()", "reflash_enable(bool)"}) {
        allowWarning(QStringLiteral("QMetaObject::connectSlotsByName: No matching signal for on_")
            + QLatin1String(slot));
    }
}

QString sharedData()
{
    const QString folder = qEnvironmentVariable("PM_SHARED_DATA", QStringLiteral(PM_SHARED_DATA_DEFAULT));
    return QFileInfo::exists(folder) ? QDir(folder).canonicalPath() : QString();
}

int runTests(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &makeTest)
{
    const QTemporaryDir home;
    for (const char *variable :
        {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(variable, home.path().toLocal8Bit());
    }
    // The offscreen platform offers no cursor or drag support worth a warning.
    allowWarning(QStringLiteral("This plugin does not support"));
    forward = qInstallMessageHandler(countWarnings);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("test"));
    const std::unique_ptr<QObject> test = makeTest();
    const int failures = QTest::qExec(test.get(), argc, argv);
    if (unexpected > 0) {
        std::fprintf(stderr, "%d unexpected warnings\n", unexpected.load());
    }
    return failures + unexpected;
}
