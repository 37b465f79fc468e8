#include "archivemodel.h"
#include "archivequestion.h"
#include "archivesearch.h"
#include "archivetext.h"
#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "dicomservers.h"
#include "inifile.h"
#include "namedcontrols.h"
#include "objectspool.h"
#include "queryretrievewindow.h"
#include "receiveservice.h"
#include "retrievalservice.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

namespace {

using Maker = std::unique_ptr<DicomServer> (*)(const DicomServer::Peer &self);

std::unique_ptr<DicomServer> makeDcmqrscp(const DicomServer::Peer &self)
{
    return DicomServer::dcmqrscp({self});
}

std::unique_ptr<DicomServer> makeOrthanc(const DicomServer::Peer &self)
{
    return DicomServer::orthanc({self});
}

Archive archiveOf(const DicomServer &server, RetrieveMethod method)
{
    return {QStringLiteral("Archive"), {server.aeTitle(), DicomServer::host(), server.port()}, method};
}

/// Everything that an archive has, by one question at each level.
QVector<Retrieval> studiesOf(const Archive &archive)
{
    QueryScu scu(archive.node, Archive::ownOptions());
    QVector<Retrieval> retrievals;
    for (const QueryRecord &study : scu.find(ArchiveQuestion().attempt(0, 1000)).records) {
        Retrieval retrieval;
        retrieval.archive = archive;
        retrieval.request.patientId = study.value(QueryTag::patientId);
        retrieval.request.studyUid = study.value(QueryTag::studyUid);
        retrieval.request.modalities = study.value(QueryTag::modalitiesInStudy).split(QLatin1Char('\\'));
        retrievals.append(retrieval);
    }
    return retrievals;
}

QueryRecord studyOf(const char *name, const char *description = "", const char *modalities = "")
{
    return {{QueryTag::patientName, QString::fromUtf8(name)},
        {QueryTag::studyDescription, QString::fromUtf8(description)},
        {QueryTag::modalitiesInStudy, QString::fromLatin1(modalities)}};
}

} // namespace

Q_DECLARE_METATYPE(Maker)
Q_DECLARE_METATYPE(RetrieveMethod)

/// What is chosen in real archives comes into the index, by either way; and the window where that is done.
class RetrievalTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        ConfigLocation::setBase(m_folder->path());
        QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("config")));
        m_port = freePort();
        m_index = std::make_unique<TemporaryIndex>();
        m_receiving = std::make_unique<ReceiveService>();
        m_service = std::make_unique<RetrievalService>(m_receiving.get());
    }

    void cleanup()
    {
        m_service.reset();
        m_receiving.reset();
        m_index.reset();
        ConfigLocation::setBase({});
    }

    void bringsWhatIsThere_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<RetrieveMethod>("method");
        QTest::newRow("dcmqrscp, C-GET") << &makeDcmqrscp << RetrieveMethod::Get;
        QTest::newRow("dcmqrscp, C-MOVE") << &makeDcmqrscp << RetrieveMethod::Move;
        QTest::newRow("orthanc, C-GET") << &makeOrthanc << RetrieveMethod::Get;
        QTest::newRow("orthanc, C-MOVE") << &makeOrthanc << RetrieveMethod::Move;
    }

    /// Images of several classes, a compressed one among them.
    void bringsWhatIsThere()
    {
        if (sharedData().isEmpty()) {
            QSKIP("The shared corpus is not there.");
        }
        QFETCH(const Maker, make);
        QFETCH(const RetrieveMethod, method);
        receive(method == RetrieveMethod::Move);
        const auto archive = make({ReceiveSettings::ownAeTitle(), m_port});
        const QString patients = sharedData() + QStringLiteral("/01-series/ihe-multi-patient/");
        archive->fill({patients + QStringLiteral("IDS-DEPT027-a/images")});
        archive->fill({patients + QStringLiteral("IDS-DEPT024-a/images")});
        const bool takesCompressed = make == &makeOrthanc;
        if (takesCompressed) {
            archive->fill({patients + QStringLiteral("IDS-DEPT041-a/images")}, {QStringLiteral("-xs")});
        }
        const int expected = takesCompressed ? 31 : 30;
        const auto retrievals = studiesOf(archiveOf(*archive, method));
        QCOMPARE(retrievals.size(), takesCompressed ? 3 : 2);
        m_service->enqueue(retrievals);
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(), 60000);
        for (const Retrieval &retrieval : m_service->retrievals()) {
            QVERIFY2(retrieval.isGood(), qPrintable(retrieval.result.failure.detail));
            QCOMPARE(retrieval.used, method);
        }
        QTRY_COMPARE(images(), QVariant(expected));
        m_service->retry(m_service->retrievals().first().id);
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(), 60000);
        QTRY_COMPARE(m_receiving->status().waiting, 0);
        QCOMPARE(images(), QVariant(expected));
        QCOMPARE(m_receiving->status().counts.keptAside, 0); // the archive has sent the same once more
        if (method == RetrieveMethod::Get) {
            QFile stored(m_index->query(QStringLiteral("SELECT FilePath FROM imageformat")).toString());
            QVERIFY(stored.open(QIODevice::ReadOnly));
            constexpr int longestMeta = 512;
            QVERIFY(stored.read(longestMeta).contains(archive->aeTitle().toLatin1())); // where it came from
        }
    }

    void whatCannotBeFetchedIsSent_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<bool>("isKnown");
        QTest::addColumn<bool>("namesFailures");
        QTest::newRow("dcmqrscp") << &makeDcmqrscp << true << true;
        QTest::newRow("orthanc") << &makeOrthanc << true << false; // and stops at the first one
        QTest::newRow("we are unknown") << &makeDcmqrscp << false << true;
    }

    /// And only that, so that nothing comes twice, where an archive says what has failed.
    void whatCannotBeFetchedIsSent()
    {
        QFETCH(const Maker, make);
        QFETCH(const bool, isKnown);
        QFETCH(const bool, namesFailures);
        receive(true);
        const auto archive =
            make({isKnown ? ReceiveSettings::ownAeTitle() : QStringLiteral("ANOTHER"), m_port});
        archive->fill(mixedStudy(), {QStringLiteral("-R")});
        m_service->enqueue(studiesOf(archiveOf(*archive, RetrieveMethod::Auto)));
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(), 60000);
        const Retrieval ended = m_service->retrievals().first();
        QCOMPARE(ended.used, RetrieveMethod::Move);
        QCOMPARE(ended.isGood(), isKnown);
        QCOMPARE(ended.result.progress.completed, isKnown ? 4 : 2);
        QCOMPARE(ended.result.progress.failed, isKnown ? 0 : 2);
        QCOMPARE(ended.result.failedInstances.size(), isKnown ? 0 : 2);
        QCOMPARE(int(ended.result.status), isKnown ? 0 : 0xa801);
        QTRY_COMPARE(images(), QVariant(isKnown ? 4 : 2));
        QTRY_COMPARE(m_receiving->status().waiting, 0);
        if (namesFailures) {
            QCOMPARE(m_receiving->status().counts.received, qint64(isKnown ? 4 : 2));
        }
    }

    void tellsWhatIsMissing()
    {
        receive(false);
        const auto storage = DicomServer::storescp();
        Retrieval retrieval;
        retrieval.request.studyUid = QStringLiteral("1.2.3");
        retrieval.archive = archiveOf(*storage, RetrieveMethod::Auto);
        m_service->enqueue({retrieval});
        retrieval.archive.node.port = freePort();
        m_service->enqueue({retrieval});
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(), 60000);
        const auto &ended = m_service->retrievals();
        QVERIFY(ended[0].needsReceiver && !ended[0].isGood()); // no C-GET there, and nobody to send to
        QCOMPARE(ended[1].result.failure.problem, NetworkProblem::Refused);
        QVERIFY(!ended[1].isGood());
    }

    void findsPatientsAndTheirStudies_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<bool>("hasPatients");
        QTest::newRow("both models") << QStringList() << true;
        QTest::newRow("patient root only") << QStringList{QStringLiteral("-QS")} << true;
        QTest::newRow("study root only") << QStringList{QStringLiteral("-QP")} << false;
        QTest::newRow("orthanc") << QStringList{QStringLiteral("orthanc")} << true;
    }

    /// Patients are the archive's own, wherever it has that level; what is asked of studies holds for them.
    void findsPatientsAndTheirStudies()
    {
        QFETCH(const QStringList, options);
        QFETCH(const bool, hasPatients);
        const auto archive = options.contains(QStringLiteral("orthanc")) ? DicomServer::orthanc()
                                                                         : DicomServer::dcmqrscp({}, options);
        archive->fill({object(1, QStringLiteral("Yamada^Tarou")), object(2, QStringLiteral("YAMADA^HANAKO")),
            object(3, QStringLiteral("Other^One"))});
        ArchiveSearch search;
        QSet<QString> patients;
        QSet<QString> studies;
        connect(&search, &ArchiveSearch::foundPatients, this, [&](const QVector<QueryRecord> &found) {
            for (const QueryRecord &patient : found) {
                patients += patient[QueryTag::patientId];
                QVERIFY(
                    patient[QueryTag::patientName].startsWith(QStringLiteral("YAMADA"), Qt::CaseInsensitive));
            }
        });
        connect(&search, &ArchiveSearch::found, this, [&](const QVector<QueryRecord> &found) {
            for (const QueryRecord &study : found) {
                studies += study[QueryTag::patientId] + study[QueryTag::patientName].section('^', 1);
            }
        });
        ArchiveQuestion question;
        question.name = QStringLiteral("yamada");
        QSignalSpy ended(&search, &ArchiveSearch::ended);
        search.search(archiveOf(*archive, RetrieveMethod::Auto), question);
        QVERIFY(ended.wait(30000));
        const QSet<QString> both{QStringLiteral("Q1Tarou"), QStringLiteral("Q2HANAKO")};
        QCOMPARE(studies, both);
        QCOMPARE(patients,
            hasPatients ? QSet<QString>({QStringLiteral("Q1"), QStringLiteral("Q2")}) : QSet<QString>());

        patients.clear();
        studies.clear();
        question.dates = {StudyDates::Kind::Between, QDate(2024, 1, 31), QDate(2024, 1, 31)};
        search.search(archiveOf(*archive, RetrieveMethod::Auto), question);
        QVERIFY(ended.wait(30000));
        QCOMPARE(studies, both);
        QVERIFY(patients.isEmpty());
        question.dates.last = question.dates.first = QDate(2024, 2, 1);
        studies.clear();
        search.search(archiveOf(*archive, RetrieveMethod::Auto), question);
        QVERIFY(ended.wait(30000));
        QVERIFY(studies.isEmpty());
    }

    /// Else it would wait for ever.
    void endsWhereNothingCanBeKept()
    {
        QFile inTheWay(ObjectSpool::folderOf(m_index->path()));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        receive(false);
        QVERIFY(!m_receiving->status().spoolProblem.isEmpty()); // though nothing is to be received
        m_service->enqueue({Retrieval()});
        const Retrieval ended = m_service->retrievals().first();
        QVERIFY(ended.isOver() && !ended.isGood());
        QVERIFY(ArchiveText::noticeOf(ended).contains(ended.spoolProblem));
    }

    void endsWhenItIsCancelled()
    {
        receive(false);
        const auto archive = makeDcmqrscp({ReceiveSettings::ownAeTitle(), m_port});
        archive->fill({object(1, QStringLiteral("Some^One"))});
        const auto retrievals = studiesOf(archiveOf(*archive, RetrieveMethod::Get));
        archive->suspend();
        m_service->enqueue(retrievals + retrievals);
        QTRY_COMPARE(m_service->retrievals().first().used, RetrieveMethod::Get);
        m_service->cancel(m_service->retrievals().last().id);
        m_service->closeIndex();
        for (const Retrieval &retrieval : m_service->retrievals()) {
            QCOMPARE(retrieval.state, RetrievalState::Cancelled);
        }
        QVERIFY(!m_service->isRunning());
    }

    void matchesAsPeopleMeanIt()
    {
        ArchiveQuestion question;
        question.name = QStringLiteral("yamada taro");
        QVERIFY(question.matches(studyOf("Yamada^Tarou=山田^太郎")));
        QVERIFY(!question.matches(studyOf("Yamada^Hanako")));
        QCOMPARE(question.attempt(0, 1).keys[QueryTag::patientName], QStringLiteral("*YAMADA*"));
        // An archive that answers with another spelling minds no case; another one may have more.
        QVERIFY(question.isEnough(0, {studyOf("Yamada^Tarou")}));
        QVERIFY(!question.isEnough(0, {studyOf("YAMADA^TAROU")}));
        QVERIFY(!question.isEnough(0, {}));

        question.name = QStringLiteral("山田太郎");
        QVERIFY(question.matches(studyOf("Yamada^Tarou=山田^太郎")));
        QCOMPARE(question.attempt(0, 1).keys[QueryTag::patientName], QStringLiteral("*山*田*太*郎*"));
        question.name = QStringLiteral("müller");
        QVERIFY(question.matches(studyOf("Muller^Jo")));
        QCOMPARE(question.attempt(0, 1).keys[QueryTag::patientName], QStringLiteral("*M*LLER*"));
        question.name = QStringLiteral("Y?m*");
        QCOMPARE(question.attempt(0, 1).keys[QueryTag::patientName], QStringLiteral("Y?m*"));
        QCOMPARE(question.attempts(), 1);

        question = {};
        question.modality = QStringLiteral("ct mr");
        QVERIFY(question.matches(studyOf("A", "", "SR\\MR")) && question.matches(studyOf("A")));
        QVERIFY(!question.matches(studyOf("A", "", "US")));
        question.dates = {StudyDates::Kind::Between, QDate(2026, 1, 2), QDate()};
        QCOMPARE(question.attempt(0, 1).keys[QueryTag::studyDate], QStringLiteral("20260102-"));
    }

    /// By keyboard: a name as people type it, the study's series, and what of them is here already.
    void findsAndMarks()
    {
        receive(false);
        const auto archive = makeDcmqrscp({ReceiveSettings::ownAeTitle(), m_port});
        archive->fill(
            {object(1, QStringLiteral("Yamada^Tarou")), object(2, QStringLiteral("YAMADA^HANAKO"))});
        const QString group = QStringLiteral("Main archive/");
        writeIni("dicomsendservice.ini", group + QStringLiteral("AETitle"), archive->aeTitle());
        writeIni("dicomsendservice.ini", group + QStringLiteral("IP"), DicomServer::host());
        writeIni("dicomsendservice.ini", group + QStringLiteral("Port"), archive->port());
        QueryRetrieveWindow window(m_service.get());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.findChild<QComboBox *>(QStringLiteral("archive"))->currentText(),
            QStringLiteral("Main archive"));
        QCOMPARE(unnamedControl(window), QString());
        auto *name = window.findChild<QLineEdit *>(QStringLiteral("name"));
        auto *results = window.findChild<QTreeView *>(QStringLiteral("results"));
        const auto *state = window.findChild<QLabel *>(QStringLiteral("state"));
        const auto *search = window.findChild<QPushButton *>(QStringLiteral("search"));
        const auto found = [&](const char *text) {
            name->setFocus();
            name->setText(QString::fromLatin1(text));
            QTest::keyClick(name, Qt::Key_Return);
            return QTest::qWaitFor([search] { return search->isEnabled(); }, 30000)
                ? results->model()->rowCount()
                : -1;
        };
        QCOMPARE(found("nobody"), 0);
        QVERIFY(!state->text().isEmpty());
        QCOMPARE(found("yamada"), 2);
        QCOMPARE(found("taro yamada"), 1);

        const QModelIndex patient = results->model()->index(0, 0);
        const QModelIndex study = results->model()->index(0, 0, patient);
        results->expand(study);
        QTRY_COMPARE(results->model()->index(0, ArchiveModel::ModalityColumn, study).data().toString(),
            QStringLiteral("CT"));
        const QModelIndex held = results->model()->index(0, ArchiveModel::HeldColumn, study);
        QVERIFY(held.data().toString().isEmpty());
        results->setFocus();
        results->setCurrentIndex(patient);
        QTest::keyClick(results, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(images(), QVariant(1), 30000);
        window.onIndexChanged();
        QTRY_VERIFY(!held.data().toString().isEmpty());

        QTRY_VERIFY_WITH_TIMEOUT(m_service->retrievals().first().isGood(), 30000);

        archive->stop();
        QCOMPARE(found("yamada"), 0);
        QVERIFY(!state->text().isEmpty());
    }

private:
    QVariant images() const { return m_index->query(QStringLiteral("SELECT count(*) FROM imageformat")); }

    void writeIni(const char *file, const QString &key, const QVariant &value) const
    {
        const QString path = m_folder->filePath(QStringLiteral("config/") + QLatin1String(file));
        QFile made(path);
        QVERIFY(made.open(QIODevice::Append));
        QVERIFY(IniFile::setValue(path, key, value));
    }

    void receive(bool isOn)
    {
        writeIni("main.ini", QStringLiteral("dicom/placeholder"), 1);
        ReceiveSettings settings = ReceiveSettings::read();
        settings.enabled = isOn;
        settings.port = m_port;
        QVERIFY(settings.write());
        m_receiving->openIndex(m_index->path());
        QCOMPARE(m_receiving->status().listening, isOn);
    }

    QString object(int number, const QString &name) const
    {
        const QString uid = QStringLiteral("1.2.9.%1").arg(number);
        const QString path = m_folder->filePath(QStringLiteral("%1.dcm").arg(number));
        DicomFileBuilder()
            .patient(QStringLiteral("Q%1").arg(number), name)
            .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.1"))
            .write(path);
        return path;
    }

    /// Images in two series, of which two are of a class that nobody expects beside the others: an
    /// association has no room for all.
    QStringList mixedStudy() const
    {
        const QString unexpected = QStringLiteral("1.2.840.10008.5.1.4.1.1.12.3");
        QStringList paths;
        for (int number = 1; number <= 4; ++number) {
            const QString series = QStringLiteral("1.2.8.%1").arg(number % 2);
            DicomFileBuilder builder;
            builder.uids(QStringLiteral("1.2.8"), series, QStringLiteral("1.2.8.9.%1").arg(number));
            if (number <= 2) {
                builder.set(QueryTag::classUid, unexpected);
            }
            paths += m_folder->filePath(QStringLiteral("mixed%1.dcm").arg(number));
            builder.write(paths.constLast());
        }
        return paths;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<ReceiveService> m_receiving;
    std::unique_ptr<RetrievalService> m_service;
    quint16 m_port = 0;
};

PM_TEST_MAIN(RetrievalTest)
#include "tst_retrieval.moc"
