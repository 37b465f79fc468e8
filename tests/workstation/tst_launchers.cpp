#include "configlocation.h"
#include "frame.h"
#include "launchcommand.h"
#include "launchedprogram.h"
#include "launchercentre.h"
#include "launchersettings.h"
#include "launchfolder.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "recordform.h"
#include "runningprograms.h"
#include "selectionstatus.h"
#include "sessionservices.h"
#include "testfiles.h"
#include "testmain.h"

#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include <optional>

namespace {

const QString shell = QStringLiteral("/bin/sh");

} // namespace

/// A frame over three patients whose images have files, with a configuration of the test's own.
class LaunchersTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder.emplace();
        ConfigLocation::setBase(folder->path());
        m_answers.emplace();
        frame = std::make_unique<Frame>(3);
        frame->index.query(QStringLiteral("UPDATE imageformat SET FilePath = '/files/it''s ' || pk"));
    }

    void cleanup()
    {
        frame.reset();
        m_answers.reset();
        ConfigLocation::setBase(QString());
        folder.reset();
    }

    void placeholdersBecomeArguments()
    {
        const LaunchValues values{{QStringLiteral("/a b"), QStringLiteral("/{studyUID}")},
            QStringLiteral("/list"), QStringLiteral("1.2"), QStringLiteral("1.2.3"),
            QStringLiteral("$(id) {files}"), QStringLiteral("/index.db"), QStringLiteral("/bin/workstation")};
        const auto filled = [&values](const char *argument) {
            return LaunchCommand::arguments({QLatin1String(argument)}, values).join(QLatin1Char('|'));
        };
        QCOMPARE(filled("{files}"), QStringLiteral("/a b|/{studyUID}"));
        QCOMPARE(filled("-f={files},{seriesUID}"), QStringLiteral("-f=/a b,1.2.3|-f=/{studyUID},1.2.3"));
        QCOMPARE(filled("--list={fileList}"), QStringLiteral("--list=/list"));
        QCOMPARE(filled("{patientID}"), QStringLiteral("$(id) {files}"));
        QCOMPARE(filled("{index}{workstation}"), QStringLiteral("/index.db/bin/workstation"));
        QCOMPARE(filled("{other} {"), QStringLiteral("{other} {"));
        QCOMPARE(LaunchCommand::program(QStringLiteral("{workstation}"), values), values.workstation);
        QVERIFY(LaunchCommand::needsSelection({QStringLiteral("-x"), QStringLiteral("-l={fileList}")}));
        QVERIFY(!LaunchCommand::needsSelection({QStringLiteral("{index}"), QStringLiteral("{workstation}")}));
        // A value may not become an option of its own.
        LaunchValues hostile = values;
        hostile.patientId = QStringLiteral("--config=/evil");
        const auto stray = [&hostile](const char *argument) {
            return LaunchCommand::strayOption({QStringLiteral("-v"), QLatin1String(argument)}, hostile);
        };
        QCOMPARE(stray("{patientID}"), hostile.patientId);
        QCOMPARE(stray("{patientID}{files}"), hostile.patientId + QStringLiteral("/a b"));
        QCOMPARE(stray("--patient={patientID}"), QString());
        QCOMPARE(stray("{files}"), QString());
    }

    void settingsComeBack()
    {
        const Launcher launcher{QStringLiteral("/opt/a b/viewer"),
            {QStringLiteral("--x=1, 2"), QStringLiteral("{files}"), QString::fromUtf8("山\\田; \"q\"")}};
        QVERIFY(!LauncherSettings::read(LauncherId::Swi).isConfigured());
        QVERIFY(LauncherSettings::write(LauncherId::Swi, launcher));
        QCOMPARE(LauncherSettings::writtenFile(), folder->filePath(QStringLiteral("config/main.ini")));
        QVERIFY(LauncherSettings::read(LauncherId::Swi) == launcher);
        QVERIFY(!LauncherSettings::read(LauncherId::Vessel).isConfigured());
        ConfigLocation::setBase(QStringLiteral(PM_SOURCE_DIR)); // what is shipped
        const Launcher shipped = LauncherSettings::read(LauncherId::Compare);
        QCOMPARE(shipped.program, QStringLiteral("{workstation}"));
        QCOMPARE(shipped.arguments, (QStringList{QStringLiteral("--preview"), QStringLiteral("{fileList}")}));
    }

    void theSelectionReachesTheProgram()
    {
        const QString result = folder->filePath(QStringLiteral("result"));
        configure(shell,
            {QStringLiteral("-c"),
                QStringLiteral(
                    "{ cat \"$1\"; shift; printf '%s|' \"$@\"; } > \"$0.new\" && mv \"$0.new\" \"$0\""),
                result, QStringLiteral("{fileList}"), QStringLiteral("{files}"), QStringLiteral("{studyUID}"),
                QStringLiteral("{patientID}")});
        frame->patientView()->selectRow(0);
        Frame::click(frame->patientView(), 1, QStringLiteral("PatientName"));
        press();
        QTRY_VERIFY(QFile::exists(result));
        QCOMPARE(
            QString::fromUtf8(bytesOf(result)), QStringLiteral("/files/it's 2\n/files/it's 2|1.2.2|S2|"));
        QTRY_VERIFY(centre()->running().isEmpty());
        QCOMPARE(m_answers->texts, QStringList());
    }

    void refusalsSayWhatIsMissing()
    {
        press();
        QVERIFY2(m_answers->texts.value(0).contains(QLatin1String("Applications")),
            qPrintable(m_answers->texts.value(0)));
        configure(shell, {QStringLiteral("{files}")});
        press();
        QVERIFY2(m_answers->texts.value(1).contains(QLatin1String("Nothing is selected")),
            qPrintable(m_answers->texts.value(1)));
        frame->index.query(QStringLiteral("UPDATE imageformat SET FilePath = ''"));
        Frame::click(frame->patientView(), 0, QStringLiteral("PatientName"));
        centre()->start(LauncherId::Vessel);
        centre()->start(LauncherId::Vessel); // still looking for the files
        QTRY_COMPARE(m_answers->texts.size(), 3);
        QTRY_VERIFY(!centre()->isPreparing(LauncherId::Vessel));
        QVERIFY2(m_answers->texts.value(2).contains(QLatin1String("1 patient")),
            qPrintable(m_answers->texts.value(2)));
        configure(shell, {QStringLiteral("{patientID}")});
        frame->index.query(QStringLiteral("UPDATE imageformat SET FilePath = '/a'"));
        frame->index.query(QStringLiteral("UPDATE patient SET PatientID = '-c'"));
        press();
        QTRY_COMPARE(m_answers->texts.size(), 4);
        QVERIFY2(m_answers->texts[3].contains(QLatin1String("\"-c\"")), qPrintable(m_answers->texts[3]));
        QVERIFY(centre()->running().isEmpty());
    }

    void whatDoesNotComeUpIsTold_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("told");
        QTest::newRow("no such program") << "/no/such/program" << QString() << "/no/such/program";
        QTest::newRow("it dies") << shell
                                 << "i=0; while [ $i -lt 20 ]; do i=$((i+1)); echo line $i >&2; done; exit 3"
                                 << "code 3.\nline 13\n";
        QTest::newRow("it crashes") << shell << "kill -KILL $$"
                                    << "crashed";
    }

    void whatDoesNotComeUpIsTold()
    {
        QFETCH(QString, program);
        QFETCH(QString, script);
        QFETCH(QString, told);
        configure(program, {QStringLiteral("-c"), script});
        press();
        QTRY_COMPARE(m_answers->texts.size(), 1);
        QVERIFY2(m_answers->texts[0].contains(told), qPrintable(m_answers->texts[0]));
        QVERIFY(centre()->running().isEmpty());
        QTRY_VERIFY(centre()->findChildren<LaunchedProgram *>().isEmpty());
    }

    void runsTwiceAndStops()
    {
        configure(shell, {QStringLiteral("-c"), QStringLiteral("trap '' TERM; while :; do sleep 0.1; done")});
        const auto *entry = frame->window->findChild<QToolButton *>(QStringLiteral("runningPrograms"));
        QVERIFY(entry->isHidden());
        press();
        press();
        QTRY_COMPARE(centre()->running().size(), 2);
        QVERIFY(entry->isVisible());
        const auto *button = frame->window->findChild<QWidget *>(QStringLiteral("pushButton_vessel"));
        QVERIFY2(button->toolTip().contains(QLatin1String("running")), qPrintable(button->toolTip()));
        // What does not listen the first time is ended the second time.
        while (!centre()->running().isEmpty()) {
            const int left = centre()->running().size();
            for (int time = 0; time < 2; ++time) {
                QMetaObject::invokeMethod(entry->menu()->actions().constFirst(), "trigger");
            }
            QTRY_COMPARE(centre()->running().size(), left - 1);
        }
        QVERIFY(entry->isHidden());
        QCOMPARE(m_answers->texts, QStringList());
    }

    void outlivesTheWindow()
    {
        const QString gate = folder->filePath(QStringLiteral("gate"));
        const QString result = folder->filePath(QStringLiteral("result"));
        configure(shell,
            {QStringLiteral("-c"),
                QStringLiteral(
                    "while [ ! -e \"$1\" ]; do sleep 0.05; done; "
                    "echo x >&2 && echo \"$2\" > \"$0.new\" && stat -c %a \"${2%/*}\" >> \"$0.new\" && "
                    "cat \"$2\" >> \"$0.new\" && mv \"$0.new\" \"$0\""),
                result, gate, QStringLiteral("{fileList}")});
        auto services = std::make_unique<SessionServices>();
        frame->window = std::make_unique<WorkstationWindow>(services.get());
        frame->window->show();
        QVERIFY(QTest::qWaitForWindowExposed(frame->window.get()));
        Frame::click(frame->patientView(), 0, QStringLiteral("PatientName"));
        QCOMPARE(status()->current().text(), QStringLiteral("1 patient"));
        press();
        QTRY_COMPARE(services->programs()->running().size(), 1);
        QCOMPARE(m_answers->texts, QStringList());
        frame->window.reset();
        frame->window = std::make_unique<WorkstationWindow>(services.get()); // of another language
        QVERIFY(!frame->window->findChild<QWidget *>(QStringLiteral("runningPrograms"))->isHidden());
        frame.reset();
        services.reset();
        // The next start leaves alone what is still needed, and removes it once nobody needs it.
        LaunchFolder::sweep();
        writeFile(gate, {});
        QTRY_VERIFY(QFile::exists(result));
        const QStringList lines = QString::fromUtf8(bytesOf(result)).split(QLatin1Char('\n'));
        // As the program saw it: any workstation that starts now may sweep already.
        QCOMPARE(lines.value(1), QStringLiteral("700"));
        QCOMPARE(lines.value(2), QStringLiteral("/files/it's 1"));
        const QString kept = QFileInfo(lines.value(0)).path();
        QTRY_VERIFY((LaunchFolder::sweep(), !QFileInfo::exists(kept)));
    }

    void selectionIsNamed()
    {
        const auto text = [this] { return status()->current().text(); };
        const auto *button = frame->window->findChild<QWidget *>(QStringLiteral("pushButton_vessel"));
        QSignalSpy changed(status(), &SelectionStatus::changed);
        QCOMPARE(text(), QString());
        Frame::click(frame->patientView(), 0, QStringLiteral("PatientName"));
        QCOMPARE(text(), QStringLiteral("1 patient"));
        QTRY_VERIFY(button->toolTip().contains(QLatin1String("1 patient")));
        QCOMPARE(changed.size(), 1);
        frame->patientView()->selectAll();
        QCOMPARE(text(), QStringLiteral("3 patients"));
        Frame::click(frame->studyView(), 0, QStringLiteral("StudyInstanceUID"));
        Frame::click(frame->window->forms()[2]->view(), 0, QStringLiteral("Modality"));
        QCOMPARE(text(), QStringLiteral("1 series"));
        Frame::click(frame->window->forms()[3]->view(), 0, QStringLiteral("InstanceNumber"));
        QCOMPARE(text(), QStringLiteral("1 image"));
        QCOMPARE(status()->forActions().text(), QStringLiteral("1 series"));
        PatientTreeForm *tree = frame->window->library()->getPatientTreeForm();
        emit tree->selectMutiPK({1, 2}, QStringLiteral("generalstudy"));
        QCOMPARE(text(), QStringLiteral("2 studies"));
        // The pick in the tree ends with its records, and with a search.
        frame->index.query(QStringLiteral("DELETE FROM generalstudy WHERE pk = 2"));
        QTRY_COMPARE(text(), QStringLiteral("1 image"));
        emit tree->selectMutiPK({1}, QStringLiteral("generalstudy"));
        frame->action("actionAllPatients")->trigger();
        QTRY_COMPARE(text(), QStringLiteral("1 image"));
        emit tree->selectMutiPK({1}, QStringLiteral("generalstudy"));
        QCOMPARE(text(), QStringLiteral("1 study"));
        // A filter takes the rows away, and with them the selection.
        frame->patients()->onInquiryShow();
        emit frame->patients()->selectPK({}, QStringLiteral("patient"));
        for (RecordForm *form : frame->window->forms()) {
            form->onInquiryShow();
        }
        QCOMPARE(text(), QString());
        QTRY_VERIFY(button->toolTip().contains(QLatin1String("nothing")));
    }

private:
    void configure(const QString &program, const QStringList &arguments) const
    {
        QVERIFY(LauncherSettings::write(LauncherId::Vessel, {program, arguments}));
    }

    void press() const
    {
        QTest::mouseClick(
            frame->window->findChild<QWidget *>(QStringLiteral("pushButton_vessel")), Qt::LeftButton);
    }
    LauncherCentre *centre() const { return frame->window->findChild<LauncherCentre *>(); }
    SelectionStatus *status() const { return frame->window->findChild<SelectionStatus *>(); }

    std::optional<QTemporaryDir> folder;
    std::unique_ptr<Frame> frame;
    std::optional<MessageAnswers> m_answers;
};

PM_TEST_MAIN(LaunchersTest)
#include "tst_launchers.moc"
