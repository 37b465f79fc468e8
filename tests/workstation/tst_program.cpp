#include "createconnection.h"
#include "dicomfilebuilder.h"
#include "testfiles.h"
#include "testmain.h"

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QSqlQuery>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int startTimeoutMs = 120'000;
constexpr int readOnlyFolder = 0555;

struct Run
{
    int code = -1;
    QString output;
    QString errors;
};

/// Starts the program in a home of its own. @param wrapper a program to start it with, such as one that drops
/// rights
Run runProgram(const QString &home, const QStringList &arguments, QStringList wrapper = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
        environment.insert(QLatin1String(variable), home);
    }
    process.setProcessEnvironment(environment);
    wrapper.append(QStringLiteral(PM_WORKSTATION));
    const QString program = wrapper.takeFirst();
    process.start(program, wrapper + arguments);
    Run run;
    if (process.waitForFinished(startTimeoutMs) && process.exitStatus() == QProcess::NormalExit) {
        run.code = process.exitCode();
    }
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

int coloursIn(const QString &picture)
{
    const QImage image(picture);
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
        }
    }
    return colours.size();
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void helpNeedsNoScreen()
    {
        qputenv("QT_QPA_PLATFORM", "nosuchplatform");
        const Run run = runProgram(path({}), {QStringLiteral("--help")});
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QCOMPARE(run.code, 0);
        QVERIFY(run.output.contains(QStringLiteral("--database")));
        qputenv("LANGUAGE", "zh_CN");
        QVERIFY(
            runProgram(path({}), {QStringLiteral("--help")}).output.contains(QStringLiteral("文件和文件夹")));
        qunsetenv("LANGUAGE");
    }

    void importsTheSamplesIntoAnEmptyIndexAndLeavesAPicture()
    {
        QCOMPARE(QProcess::execute(QStringLiteral(PM_SAMPLEGEN), {path(QStringLiteral("samples"))}), 0);
        const QString picture = path(QStringLiteral("picture.png"));
        const QStringList arguments{QStringLiteral("--database"), path(QStringLiteral("index.db")),
            QStringLiteral("--samples"), path(QStringLiteral("samples")), QStringLiteral("--screenshot"),
            picture, QStringLiteral("--quit-when-idle")};
        const Run run = runProgram(path({}), arguments);
        QVERIFY2(run.code == 0, qPrintable(run.errors));
        QVERIFY2(run.output.contains(QStringLiteral("109")), qPrintable(run.output));
        QVERIFY2(coloursIn(picture) > 30, "the picture is blank");
        QCOMPARE(namesIn(path(QStringLiteral("index.db"))),
            (QStringList{QStringLiteral("Dvořáková^Jiřina"), QStringLiteral("Müller^Jörg^^Dr."),
                QStringLiteral("Wang^XiaoMing=王^小明"),
                QStringLiteral("Yamada^Tarou=山田^太郎=やまだ^たろう"), QStringLiteral("Zhang^Li=张^丽")}));

        const Run again = runProgram(path({}), arguments);
        QCOMPARE(again.code, 0);
        QVERIFY2(!again.output.contains(QStringLiteral("109")), "a filled index imported the samples again");
    }

    void opensWithoutAnIndexAndSaysWhy()
    {
        const QString index = path(QStringLiteral("index.db"));
        const QByteArray other =
            QByteArray("not a database at all, but long enough to look at ").repeated(99);
        writeFile(index, other);
        expectRefusal(index, {});
        QCOMPARE(bytesOf(index), other);
    }

    void opensWithAReadOnlyFolder()
    {
        const QString folder = path(QStringLiteral("locked"));
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(::chmod(QFile::encodeName(path({})).constData(), 0777), 0);
        QCOMPARE(::chmod(QFile::encodeName(folder).constData(), readOnlyFolder), 0);
        QStringList asOrdinaryUser;
        if (::geteuid() == 0) {
            asOrdinaryUser = QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")};
            const QStringList probe =
                asOrdinaryUser.mid(1) + QStringList{QStringLiteral(PM_WORKSTATION), QStringLiteral("--help")};
            if (QProcess::execute(asOrdinaryUser.first(), probe) != 0) {
                QSKIP("the program cannot be started as an ordinary user here");
            }
        }
        expectRefusal(folder + QStringLiteral("/index.db"), asOrdinaryUser);
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    void expectRefusal(const QString &index, const QStringList &wrapper) const
    {
        const QString picture = path(QStringLiteral("picture.png"));
        const Run run = runProgram(path({}),
            {QStringLiteral("--database"), index, QStringLiteral("--screenshot"), picture,
                QStringLiteral("--quit-when-idle")},
            wrapper);
        QVERIFY2(run.code == 1, qPrintable(run.errors));
        QVERIFY2(run.errors.contains(index), qPrintable(run.errors));
        QVERIFY2(coloursIn(picture) > 10, "no window came up");
    }

    static QStringList namesIn(const QString &index)
    {
        setDatabasePath(index);
        QStringList names;
        if (createConnection()) {
            QSqlQuery query(QStringLiteral("SELECT PatientName FROM patient ORDER BY PatientName"));
            while (query.next()) {
                names.append(query.value(0).toString());
            }
        }
        QSqlDatabase::database().close();
        QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
        setDatabasePath({});
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

PM_TEST_MAIN(ProgramTest)
#include "tst_program.moc"
