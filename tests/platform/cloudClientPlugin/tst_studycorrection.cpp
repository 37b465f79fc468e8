#include "dicomfilebuilder.h"
#include "dicomreader.h"
#include "objectcorrection.h"
#include "objectsretrieve.h"
#include "postgresserver.h"
#include "studycorrection.h"
#include "temporaryindex.h"
#include "testmain.h"
#include "websession.h"

#include <QSqlQuery>
#include <QTcpServer>
#include <QtTest>

Q_DECLARE_METATYPE(PatientChanges)

namespace {

using End = CorrectionReport::End;

const QString study = QStringLiteral("1.2.3.1");
const QString otherStudy = QStringLiteral("1.2.3.2");
const QString newName = QStringLiteral("山田^太郎");
constexpr quint32 characterSetTag = 0x00080005;
constexpr quint32 birthDateTag = 0x00100030;

/// Runs where a correction is meant to run.
template <typename Work>
void onDeepThread(const Work &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->setStackSize(correctionStack);
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec(); // what the work asks of this thread is done meanwhile
    thread->wait();
}

DicomHeader headerOf(const QString &path)
{
    return DicomReader().read(QFile::encodeName(path)).header;
}

} // namespace

/// Patient data in a real archive and in a real index: both or neither.
class StudyCorrectionTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<PostgresServer> m_database;
    std::unique_ptr<DicomServer> m_archive;
    std::unique_ptr<TemporaryIndex> m_index;
    QTemporaryDir m_folder;
    QTemporaryDir m_rules;
    std::atomic<bool> m_stop{false};

    /// Two studies of one patient, four objects; in the index and in the archive.
    void begin(bool overwrites = true, bool isInDatabase = false, QJsonObject settings = {})
    {
        m_stop = false;
        m_archive.reset();
        m_database = isInDatabase ? std::make_unique<PostgresServer>() : nullptr;
        settings.insert(QStringLiteral("OverwriteInstances"), overwrites);
        m_archive = WebArchive::start(settings, m_database.get());
        m_index.reset(); // there is one at a time
        m_index = std::make_unique<TemporaryIndex>();
        QDir(m_folder.path()).removeRecursively();
        for (int number = 1; number <= 4; ++number) {
            write(number, QStringLiteral("P1"));
        }
        m_index->import({m_folder.path()}, ImportMode::Copy);
        m_archive->fill({m_folder.path()});
    }

    QString write(int number, const QString &patientId) const
    {
        const QString uid = number == 4 ? otherStudy : study;
        const QString path = m_folder.filePath(QStringLiteral("%1.dcm").arg(number));
        DicomFileBuilder()
            .patient(patientId, QStringLiteral("Müller^Jörg"))
            .uids(uid, uid + QStringLiteral(".4"), QStringLiteral("%1.5.%2").arg(uid).arg(number))
            .set(birthDateTag, QStringLiteral("19700101"))
            .write(path);
        return path;
    }

    /// The archive gets one object more.
    void another(const QString &patientId) const { m_archive->fill({write(5, patientId)}); }

    /// An archive that refuses what a condition of its own language speaks of.
    void beginRefusing(const char *condition)
    {
        QFile rules(m_rules.filePath(QStringLiteral("rules.lua")));
        QVERIFY(rules.open(QIODevice::WriteOnly));
        rules.write(QByteArray("function IncomingHttpRequestFilter(method, uri) return not (") + condition
            + ") end\n");
        rules.close();
        begin(true, false, {{QStringLiteral("LuaScripts"), QJsonArray{rules.fileName()}}});
    }

    CorrectionRequest request(const PatientChanges &changes) const
    {
        CorrectionRequest request;
        request.databasePath = m_index->path();
        request.index.studyUid = study;
        request.index.changes = changes;
        return request;
    }

    CorrectionReport run(
        const CorrectionRequest &request,
        const std::function<void(CorrectionProgress)> &show = [](const CorrectionProgress &) {})
    {
        CorrectionReport report;
        onDeepThread([&] {
            report =
                StudyCorrection(webServiceAt(WebArchive::address(*m_archive)), m_stop, show).run(request);
        });
        return report;
    }

    QVector<CorrectionReport> finish(bool isSignedIn = true)
    {
        QVector<CorrectionReport> finished;
        const WebService service = isSignedIn ? webServiceAt(WebArchive::address(*m_archive)) : WebService();
        onDeepThread([&] {
            finished = StudyCorrection(service, m_stop, [](const auto &) {}).finishBegun(m_index->path());
        });
        return finished;
    }

    /// A stop ends what a service that takes connections and says nothing would hold up.
    QVector<CorrectionReport> finishStoppedByASilentService()
    {
        QTcpServer silent;
        if (!silent.listen(QHostAddress::LocalHost, quint16(m_archive->httpPort()))) {
            qFatal("the archive's port is taken");
        }
        connect(&silent, &QTcpServer::newConnection, this, [this] { m_stop = true; });
        QVector<CorrectionReport> finished = finish();
        m_stop = false;
        return finished;
    }

    /// "name/ID objects" of each study of the archive, by its REST interface, from the files themselves.
    QStringList inArchive() const
    {
        QStringList found;
        for (const QJsonValue &id : rest(QStringLiteral("/instances")).array()) {
            const QJsonDocument tags =
                rest(QStringLiteral("/instances/%1/simplified-tags").arg(id.toString()));
            found.append(tags[QLatin1String("PatientName")].toString() + QLatin1Char('/')
                + tags[QLatin1String("PatientID")].toString());
        }
        found.sort();
        return found;
    }

    QJsonDocument rest(const QString &path) const
    {
        const ToolRun answer = runTool(QStringLiteral("curl"),
            {QStringLiteral("-s"), QStringLiteral("-u"),
                QLatin1String(WebArchive::user) + QLatin1Char(':') + QLatin1String(WebArchive::password),
                QStringLiteral("http://%1:%2%3")
                    .arg(DicomServer::host())
                    .arg(m_archive->httpPort())
                    .arg(path)});
        return QJsonDocument::fromJson(answer.output);
    }

    QStringList inIndex() const
    {
        QStringList found;
        QSqlQuery query(QStringLiteral("SELECT PatientName || '/' || PatientID || ' ' || "
                                       "NumberOfPatientRelatedInstances FROM patient ORDER BY 1"));
        while (query.next()) {
            found.append(query.value(0).toString());
        }
        return found;
    }

    /// Patients' names in the index's own files.
    QSet<QString> inFiles() const
    {
        QSet<QString> found;
        QSqlQuery query(QStringLiteral("SELECT FilePath FROM imageformat"));
        while (query.next()) {
            found.insert(headerOf(query.value(0).toString())[Attribute::PatientName]);
        }
        return found;
    }

    QString journals() const { return m_index->folder() + QStringLiteral("/.corrections"); }
    bool isJournalGone() const { return !QFile::exists(journals()); }

    /// The archive's four objects, all of one patient.
    static QStringList four(const QString &patient) { return QVector<QString>(4, patient).toList(); }

    const QStringList m_oldArchive = four(QStringLiteral("Müller^Jörg/P1"));
    const QStringList m_oldIndex{QStringLiteral("Müller^Jörg/P1 4")};

private slots:
    void initTestCase() { allowWarning(QStringLiteral("must only be called once")); } // Qt's own

    void bothPlacesFollow_data()
    {
        QTest::addColumn<bool>("isInDatabase");
        QTest::newRow("an archive with SQLite") << false;
        QTest::newRow("an archive with PostgreSQL") << true;
    }

    void bothPlacesFollow()
    {
        QFETCH(const bool, isInDatabase);
        begin(true, isInDatabase);
        const CorrectionReport report =
            run(request({{PatientField::Name, newName}, {PatientField::Comments, QStringLiteral("größer")}}));
        QCOMPARE(report.end, End::Done);
        QCOMPARE(report.objects, 4);
        QCOMPARE(report.inService.size(), 2);
        QCOMPARE(report.inIndex.size(), 2);
        QCOMPARE(inArchive(), four(newName + QStringLiteral("/P1")));
        QCOMPARE(inIndex(), QStringList{newName + QStringLiteral("/P1 4")});
        QCOMPARE(report.files.corrected, 4);
        QCOMPARE(inFiles(), QSet<QString>{newName});
        QVERIFY(isJournalGone());
    }

    /// An archive that tells objects apart by the patient's ID does not keep them twice.
    void anotherIdLeavesNoDoubles()
    {
        begin();
        const CorrectionReport report = run(request({{PatientField::Id, QStringLiteral("P2")}}));
        QVERIFY2(report.end == End::Done, qPrintable(report.failure.detail + report.detail));
        QCOMPARE(inArchive(), four(QStringLiteral("Müller^Jörg/P2")));
        QCOMPARE(inIndex(), QStringList{QStringLiteral("Müller^Jörg/P2 4")});

        CorrectionRequest back = request({{PatientField::Id, QStringLiteral("P1")}});
        m_archive->fill({m_folder.filePath(QStringLiteral("1.dcm"))});
        QCOMPARE(run(back).end, End::SameStudyThere);
        // Now the study is there twice: neither of them is taken for none.
        const QStringList doubled = inArchive();
        const CorrectionReport refused = run(request({{PatientField::Name, newName}}));
        QCOMPARE(refused.end, End::Failed);
        QCOMPARE(refused.failure.problem, WebProblem::Conflict);
        QCOMPARE(inArchive(), doubled);
        QCOMPARE(inIndex(), QStringList{QStringLiteral("Müller^Jörg/P2 4")});
        QVERIFY(isJournalGone());
    }

    /// One study of a patient goes to the patient that the new values name, there or not.
    void oneStudyGoesToAnotherPatient()
    {
        begin();
        CorrectionRequest one = request({{PatientField::Name, newName}});
        one.index.scope = IndexCorrection::Scope::Study;
        QCOMPARE(run(one).end, End::Done);
        QStringList both{QStringLiteral("Müller^Jörg/P1 1"), newName + QStringLiteral("/P1 3")};
        QCOMPARE(inIndex(), both);
        // The patient's studies are now those of the new one: the old one's stay as they are.
        const CorrectionReport next = run(request({{PatientField::Comments, QStringLiteral("x")}}));
        QCOMPARE(next.end, End::Done);
        QCOMPARE(next.objects, 3);
        one.index.studyUid = otherStudy;
        const CorrectionReport report = run(one);
        QVERIFY(report.index.isMerged);
        QCOMPARE(inIndex(), QStringList{newName + QStringLiteral("/P1 4")});
    }

    /// Nothing is begun, and nothing of others' removed.
    void withoutRoomForAJournal()
    {
        begin();
        QTemporaryDir working;
        const QString kept = working.filePath(QStringLiteral("kept"));
        const QString before = QDir::currentPath();
        const auto back = qScopeGuard([&] { QDir::setCurrent(before); });
        QDir::setCurrent(working.path());
        for (const QString &path : {kept, m_index->folder() + QStringLiteral("/.corrections")}) {
            QVERIFY(QFile(path).open(QIODevice::WriteOnly));
        }
        QCOMPARE(run(request({{PatientField::Name, newName}})).end, End::Failed);
        QVERIFY(QFile::exists(kept));
        QCOMPARE(inIndex(), m_oldIndex);
    }

    void keptObjectsAreNoticed()
    {
        begin(false);
        QCOMPARE(run(request({{PatientField::Name, newName}})).end, End::KeptOld);
        QCOMPARE(inArchive(), m_oldArchive);
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }

    void stoppedBeforeTheFirstStoreChangesNothing()
    {
        begin();
        const CorrectionReport report =
            run(request({{PatientField::Name, newName}}), [this](const CorrectionProgress &progress) {
                m_stop = m_stop || progress.step == CorrectionProgress::Step::Writing;
            });
        QCOMPARE(report.end, End::Stopped);
        QCOMPARE(inArchive(), m_oldArchive);
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }

    /// What the service says to the storing counts for nothing: it has what it had.
    void refusedObjectsAreUndone()
    {
        beginRefusing("method == 'POST' and string.find(uri, '/studies')");
        const CorrectionReport report = run(request({{PatientField::Name, newName}}));
        QCOMPARE(report.end, End::Undone);
        QCOMPARE(report.failure.problem, WebProblem::Forbidden);
        QCOMPARE(inArchive(), m_oldArchive);
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }

    /// An archive that keeps both, and has no other interface, gets one object and no more.
    void oneObjectShowsThatAllWouldBeDoubled()
    {
        beginRefusing("uri == '/system'");
        QCOMPARE(run(request({{PatientField::Id, QStringLiteral("P2")}})).end, End::Doubled);
        QCOMPARE(inArchive(), m_oldArchive + QStringList{QStringLiteral("Müller^Jörg/P2")});
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }

    /// What a modality sends meanwhile, under the old ID, goes with no study that is removed.
    void whatComesMeanwhileStays()
    {
        begin();
        const CorrectionReport report =
            run(request({{PatientField::Id, QStringLiteral("P2")}}), [&](const CorrectionProgress &progress) {
                if (progress.step == CorrectionProgress::Step::Storing) {
                    QMetaObject::invokeMethod(
                        this, [&] { another(QStringLiteral("P1")); }, Qt::BlockingQueuedConnection);
                }
            });
        QCOMPARE(report.end, End::Undone);
        QCOMPARE(report.failure.problem, WebProblem::Incomplete);
        QCOMPARE(inArchive(), m_oldArchive + QStringList{QStringLiteral("Müller^Jörg/P1")});
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }

    /// A kill just after the index has followed; what is left then of one of the index alone needs no
    /// service.
    void whatTheIndexHasFollowedIsFinished_data()
    {
        QTest::addColumn<bool>("inService");
        QTest::newRow("index and service") << true;
        QTest::newRow("index alone") << false;
    }

    void whatTheIndexHasFollowedIsFinished()
    {
        QFETCH(const bool, inService);
        begin();
        CorrectionRequest asked = request({{PatientField::Name, newName}});
        asked.inService = inService;
        const QTemporaryDir kept;
        const CorrectionReport report = run(asked, [&](const CorrectionProgress &progress) {
            using Step = CorrectionProgress::Step;
            if (progress.step == (inService ? Step::Checking : Step::CorrectingCopies)) {
                runTool(QStringLiteral("cp"), {QStringLiteral("-rT"), journals(), kept.path()});
            }
        });
        QCOMPARE(report.end, End::Done);
        runTool(QStringLiteral("cp"), {QStringLiteral("-r"), kept.path(), journals()});
        for (const QString &journal : QDir(journals()).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile::remove(journals() + QLatin1Char('/') + journal + QStringLiteral("/lock"));
        }
        // None comes between, in the service or not: the earlier one would go over it.
        CorrectionRequest another = request({{PatientField::Name, QStringLiteral("Newer^Name")}});
        for (const bool isAnotherInService : {true, false}) {
            another.inService = isAnotherInService;
            QCOMPARE(run(another).end, End::EarlierPending);
        }
        {
            // A stop need not wait for whoever holds the index.
            QSqlQuery held(QStringLiteral("BEGIN IMMEDIATE"));
            QTimer::singleShot(0, this, [&] { m_stop = true; });
            QVERIFY(finish(inService).isEmpty());
            m_stop = false;
            QVERIFY(held.exec(QStringLiteral("ROLLBACK")));
        }
        // An index that cannot be read is not one that has not followed.
        QSqlQuery table;
        QVERIFY(table.exec(QStringLiteral("ALTER TABLE patient RENAME TO hidden")));
        QVector<CorrectionReport> finished = finish(inService);
        QVERIFY(table.exec(QStringLiteral("ALTER TABLE hidden RENAME TO patient")));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished[0].index.problem, IndexCorrectionResult::Problem::Database);
        QVERIFY(finished[0].isLeft);
        QVERIFY(!isJournalGone());
        finished = finish(inService);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished[0].end, End::Done);
        QVERIFY(!finished[0].isLeft);
        QCOMPARE(inArchive(), inService ? four(newName + QStringLiteral("/P1")) : m_oldArchive);
        QCOMPARE(inIndex(), QStringList{newName + QStringLiteral("/P1 4")});
        QVERIFY(isJournalGone());
    }

    /// Where the index had the new ID already it cannot tell how far the service has come: that has both.
    void anIdThatTheIndexHadIsFinishedOrUndone_data()
    {
        QTest::addColumn<bool>("comesAnother");
        QTest::newRow("all are under the new ID") << false;
        QTest::newRow("another came under the old one") << true;
    }

    void anIdThatTheIndexHadIsFinishedOrUndone()
    {
        QFETCH(const bool, comesAnother);
        begin();
        CorrectionRequest asked = request({{PatientField::Id, QStringLiteral("P2")}});
        asked.inService = false;
        QCOMPARE(run(asked).end, End::Done);
        asked.inService = true;
        const CorrectionReport report = run(asked, [&](const CorrectionProgress &progress) {
            if (progress.step == CorrectionProgress::Step::Storing) {
                QMetaObject::invokeMethod(
                    this, [&] { m_archive->stop(); }, Qt::BlockingQueuedConnection);
            }
        });
        QCOMPARE(report.end, End::UndoPending);
        m_archive->start();
        QStringList left = comesAnother ? m_oldArchive : four(QStringLiteral("Müller^Jörg/P2"));
        QCOMPARE(inArchive(), m_oldArchive + four(QStringLiteral("Müller^Jörg/P2")));
        if (comesAnother) {
            another(QStringLiteral("P1"));
            left.append(QStringLiteral("Müller^Jörg/P1"));
        }
        const QVector<CorrectionReport> finished = finish();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished[0].end, comesAnother ? End::Undone : End::Done);
        QCOMPARE(inArchive(), left);
        QVERIFY(isJournalGone());
    }

    /// What fails half-way is undone, at once or once the service is back; also under another ID.
    void halfWayIsUndone_data()
    {
        QTest::addColumn<bool>("isIndexLocked");
        QTest::addColumn<PatientChanges>("changes");
        const PatientChanges name{{PatientField::Name, newName}};
        const PatientChanges id{{PatientField::Id, QStringLiteral("P2")}};
        QTest::newRow("no index, name") << true << name;
        QTest::newRow("no index, ID") << true << id;
        QTest::newRow("no service, name") << false << name;
        QTest::newRow("no service, ID") << false << id;
    }

    void halfWayIsUndone()
    {
        QFETCH(const bool, isIndexLocked);
        QFETCH(const PatientChanges, changes);
        begin();
        QStringList left = m_oldArchive;
        const CorrectionReport report = run(request(changes), [&](const CorrectionProgress &progress) {
            if (progress.step == CorrectionProgress::Step::Checking && isIndexLocked) {
                QFile::rename(m_index->path(), m_index->path() + QStringLiteral(".away"));
            } else if (progress.step == CorrectionProgress::Step::Storing && !isIndexLocked) {
                QMetaObject::invokeMethod(
                    this, [&] { m_archive->stop(); }, Qt::BlockingQueuedConnection);
            }
        });
        QFile::rename(m_index->path() + QStringLiteral(".away"), m_index->path());
        if (!isIndexLocked) {
            QCOMPARE(report.end, End::UndoPending);
            QVERIFY(!isJournalGone());
            QCOMPARE(run(request(changes)).end, End::EarlierPending);
            QVERIFY(finishStoppedByASilentService().isEmpty());
            QVERIFY(!isJournalGone());
            m_archive->start();
            if (changes.contains(PatientField::Id)) {
                another(changes[PatientField::Id]); // others' stays where it is
                left.append(QStringLiteral("Müller^Jörg/") + changes[PatientField::Id]);
            }
            const QVector<CorrectionReport> finished = finish();
            QCOMPARE(finished.size(), 1);
            QCOMPARE(finished[0].end, End::Undone);
        } else {
            QCOMPARE(report.end, End::Undone);
        }
        QCOMPARE(inArchive(), left);
        QCOMPARE(inIndex(), m_oldIndex);
        QVERIFY(isJournalGone());
    }
};

PM_TEST_MAIN(StudyCorrectionTest)
#include "tst_studycorrection.moc"
