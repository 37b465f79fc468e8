#include "appearancesettings.h"
#include "configlocation.h"
#include "createconnection.h"
#include "dicomfilebuilder.h"
#include "editcontroller.h"
#include "importcentre.h"
#include "mainsetting.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "recordform.h"
#include "runningcorrection.h"
#include "sendnotifier.h"
#include "session.h"
#include "settingsnotifier.h"
#include "shownpatients.h"
#include "statuspanel.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "workstationwindow.h"

#include <QMenuBar>
#include <QSettings>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QTcpServer>
#include <QtTest>

#include <optional>

namespace {

QString firstMenu(const WorkstationSession &session)
{
    return session.window()->menuBar()->actions().first()->text();
}

int count(const char *table)
{
    QSqlQuery query(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table)));
    return query.next() ? query.value(0).toInt() : -1;
}

} // namespace

class SessionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        allowWarningsOfNamedSlots();
        AppearanceSettings::setLanguage(QStringLiteral("en"));
        ConfigLocation::setBase(m_config.filePath(QStringLiteral("bin")));
        m_said.emplace(kivMessageBoxForm::AnswerCancel);
        m_index = std::make_unique<TemporaryIndex>();
        for (int i = 1; i <= 3; ++i) {
            const qlonglong patient = m_index->addPatient(QStringLiteral("P%1").arg(i), QString::number(i));
            m_index->addSeries(
                m_index->addStudy(patient, QStringLiteral("1.%1").arg(i)), QStringLiteral("1.%1.1").arg(i));
        }
        m_session = std::make_unique<WorkstationSession>(CommandLine());
        m_session->start();
        m_rebuilt = std::make_unique<QSignalSpy>(m_session.get(), &WorkstationSession::rebuilt);
    }
    void cleanup()
    {
        m_session.reset();
        m_index.reset();
        m_said.reset();
        ConfigLocation::setBase({});
    }

    void speaksAnotherLanguageAndKeepsTheSelection()
    {
        choosePatient(1);
        const QList<qlonglong> study = forms()[1]->selectedKeys();
        QVERIFY(!study.isEmpty());
        speak(QStringLiteral("zh_CN"));
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QCOMPARE(firstMenu(*m_session), QStringLiteral("文件(&F)"));
        QCOMPARE(QLocale().language(), QLocale::Chinese);
        QCOMPARE(forms()[0]->selectedKeys(), QList<qlonglong>{2});
        QCOMPARE(forms()[1]->selectedKeys(), study);
        speak(QStringLiteral("en"));
        QTRY_COMPARE(m_rebuilt->count(), 2);
        QCOMPARE(firstMenu(*m_session), QStringLiteral("&File"));
    }

    /// Nobody arrived today: that all are listed is not the user's wish, and yet survives the new window.
    void keepsWhatIsListed()
    {
        m_index->query(QStringLiteral("UPDATE patient SET updated_time = '2015-01-01 10:00:00'"));
        QTRY_COMPARE(shown()->pick(), DatePick::AllDates);
        choosePatient(1);
        speak(QStringLiteral("zh_CN"));
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QCOMPARE(shown()->pick(), DatePick::AllDates);
        QCOMPARE(shown()->wish().pick, DatePick::ArrivedToday);
        QCOMPARE(forms()[0]->selectedKeys(), QList<qlonglong>{2});

        shown()->show(QStringLiteral("p1"), DatePick::AllDates);
        shown()->showCondition(QStringLiteral("PatientID > '1'"));
        QCOMPARE(shown()->pick(), DatePick::Other);
        choosePatient(1);
        speak(QStringLiteral("en"));
        QTRY_COMPARE(m_rebuilt->count(), 2);
        QCOMPARE(shown()->count(), 2);
        QCOMPARE(forms()[0]->selectedKeys(), QList<qlonglong>{3});
        QCOMPARE(shown()->wish().text, QStringLiteral("p1"));
        QSettings().clear();
    }

    void opensAnotherIndexAndKeepsItForTheNextStart()
    {
        const QString other = m_index->folder() + QStringLiteral("/other.db");
        emit SettingsNotifier::instance()->indexRequested(other);
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QCOMPARE(databasePath(), other);
        QVERIFY(m_session->window()->hasIndex());
        QCOMPARE(count("patient"), 0);
        QVERIFY(m_said->texts.isEmpty());
        QCOMPARE(MainSetting::databasePath().value().toString(), other);
        emit SettingsNotifier::instance()->indexRequested(m_index->path());
        QTRY_COMPARE(m_rebuilt->count(), 2);
        QCOMPARE(count("patient"), 3);
    }

    /// Retrievals end first, and nothing of the old index's transfers is left in the other one.
    void opensAnotherIndexBesideTransfers()
    {
        QTcpServer mute; // takes the connection and says nothing
        QVERIFY(mute.listen(QHostAddress::LocalHost));
        const DicomNode node{
            QStringLiteral("MUTE"), QStringLiteral("127.0.0.1"), static_cast<int>(mute.serverPort())};
        const SessionServices &services = m_session->services();
        Retrieval wanted;
        wanted.archive.node = node;
        wanted.request.studyUid = QStringLiteral("1.2");
        services.retrievals()->enqueue({wanted});
        QVERIFY(services.retrievals()->isRunning());
        const qint64 job = services.sending()->enqueue({m_index->path()}, node, SendSource::Dialog);
        QTRY_VERIFY(services.sending()->job(job).id == job && SendNotifier::instance()->job(job).id == job);
        emit SettingsNotifier::instance()->indexRequested(m_index->folder() + QStringLiteral("/other.db"));
        QVERIFY(m_session->window()->statusPanel()->activityText().contains(QStringLiteral("index")));
        QCOMPARE(m_rebuilt->count(), 0);
        services.retrievals()->closeIndex(); // as a person who cancels it
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QVERIFY(services.retrievals()->retrievals().isEmpty());
        QVERIFY(SendNotifier::instance()->jobs().isEmpty());
        QCOMPARE(services.sending()->job(job).id, 0);
    }

    void waitsForACorrection()
    {
        auto correction = std::make_unique<RunningCorrection>([] {});
        emit SettingsNotifier::instance()->indexRequested(m_index->folder() + QStringLiteral("/other.db"));
        QVERIFY(m_session->window()->statusPanel()->activityText().contains(QStringLiteral("index")));
        correction.reset();
        QTRY_COMPARE(m_rebuilt->count(), 1);
    }

    void goesBackWhereTheOtherIndexCannotBeOpened()
    {
        const QString other = m_index->folder() + QStringLiteral("/letter.db");
        writeFile(other, QByteArray(5000, 'x'));
        choosePatient(2);
        emit SettingsNotifier::instance()->indexRequested(other);
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QTRY_COMPARE(m_said->texts.size(), 1);
        QVERIFY(m_said->texts.first().contains(other));
        QCOMPARE(databasePath(), m_index->path());
        QCOMPARE(count("patient"), 3);
        QCOMPARE(forms()[0]->selectedKeys(), QList<qlonglong>{3});
    }

    void waitsForAnImport()
    {
        constexpr int files = 300;
        const QTemporaryDir folder;
        writePatients(folder.path(), files);
        m_session->window()->imports()->importUnattended({folder.path()});
        speak(QStringLiteral("zh_CN"));
        QVERIFY(m_session->window()->statusPanel()->activityText().contains(QStringLiteral("language")));
        QTRY_COMPARE(m_rebuilt->count(), 1);
        QCOMPARE(count("imageformat"), files);
    }

    void staysWhereTheUserKeepsUnsavedEdits()
    {
        QSqlTableModel *model = forms()[0]->tableModel();
        model->setData(
            model->index(0, model->fieldIndex(QStringLiteral("PatientID"))), QStringLiteral("edited"));
        QVERIFY(forms()[0]->hasUnsavedEdits());
        const WorkstationWindow *window = m_session->window();
        speak(QStringLiteral("zh_CN"));
        QTRY_COMPARE(m_said->texts.size(), 1);
        QCOMPARE(m_session->window(), window);
        QVERIFY(forms()[0]->hasUnsavedEdits());
        QCOMPARE(m_rebuilt->count(), 0);
        QTRY_COMPARE(AppearanceSettings::language(), QStringLiteral("en")); // at the next start, too
    }

private:
    const QVector<RecordForm *> &forms() const { return m_session->window()->forms(); }

    ShownPatients *shown() const { return m_session->window()->shownPatients(); }

    /// As a click does, down to the study.
    void choosePatient(int row) const
    {
        for (int level = 0; level < 2; ++level) {
            RecordForm *form = forms()[level];
            const QModelIndex cell = form->tableModel()->index(level == 0 ? row : 0, 1);
            form->view()->selectRow(cell.row());
            form->selectIndex(cell);
        }
    }
    static void speak(const QString &language)
    {
        AppearanceSettings::setLanguage(language);
        emit SettingsNotifier::instance()->languageChanged();
    }

    QTemporaryDir m_config;
    std::optional<MessageAnswers> m_said;
    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<WorkstationSession> m_session;
    std::unique_ptr<QSignalSpy> m_rebuilt;
};

PM_TEST_MAIN(SessionTest)
#include "tst_session.moc"
