#include "anonymisedfolders.h"
#include "anonymizeform.h"
#include "dicomfilebuilder.h"
#include "filestore.h"
#include "keptpicture.h"
#include "kivmessageboxform.h"
#include "ndockwidget.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeWidget>
#include <QtTest>

namespace {

constexpr int soon = 20 * 1000;

} // namespace

class AnonymizeFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        m_target = m_index->folder() + QStringLiteral("/out");
        QVERIFY(QDir().mkpath(m_target));
        add(QStringLiteral("a.dcm"), QStringLiteral("77001"));
        add(QStringLiteral("b.dcm"), QStringLiteral("77002"));
        add(QStringLiteral("c.dcm"), QStringLiteral("77003"), QStringLiteral("US"));
        m_index->import({m_index->folder() + QStringLiteral("/in")});
        m_form = std::make_unique<AnonymizeForm>();
        m_form->show();
    }

    void cleanup()
    {
        m_form.reset();
        m_index.reset();
    }

    void copiesGoIntoAFreshFolder()
    {
        QVERIFY(!find("start")->isEnabled());
        QVERIFY(!find<QLabel>("obstacle")->text().isEmpty());
        for (int round = 1; round <= 2; ++round) {
            choose("toFolder");
            find("start")->click();
            QTRY_VERIFY_WITH_TIMEOUT(find("leave")->isVisible(), soon);
            QCOMPARE(
                QDir(m_target).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden).size(), round);
            QCOMPARE(filesBelow(m_target, {QStringLiteral("*.dcm")}).size(), 2 * round);
            find("leave")->click();
        }
        for (const QString &file : filesBelow(m_target)) {
            QVERIFY2(!file.contains(QLatin1String("/7700")), qPrintable(file));
            for (const char *original : {"1.2.7700", "77001 ", "77002 "}) { // as they are padded
                QVERIFY2(!bytesOf(file).contains(original), qPrintable(file));
            }
            QVERIFY(!bytesOf(file).contains("Doe"));
        }
    }

    void copiesBecomeNewRecords()
    {
        choose("toIndex");
        find<QLineEdit>("namePattern")->setText(QStringLiteral("Trial^{code}"));
        const QSignalSpy imported(m_form.get(), &AnonymizeForm::imported);
        find("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("leave")->isVisible(), soon);
        QCOMPARE(imported.count(), 1);
        QCOMPARE(m_index->count("patient"), 5);
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT count(*) FROM patient WHERE PatientName LIKE 'Trial^%'"))
                .toInt(),
            2);
        QVERIFY(filesBelow(AnonymisedFolders::base(m_index->path())).isEmpty());
    }

    /// A file is where the store would be.
    void copiesThatTheIndexRefusesStay()
    {
        const QString base = AnonymisedFolders::base(m_index->path());
        const QSignalSpy imported(m_form.get(), &AnonymizeForm::imported);
        writeFile(storeFolder(m_index->path()));
        choose("toIndex");
        find("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("again")->isVisible(), soon);
        QVERIFY(imported.isEmpty());
        QCOMPARE(filesBelow(base).size(), 2);
        QVERIFY(find<QLabel>("notTaken")->text().contains(base));

        QVERIFY(QFile::remove(storeFolder(m_index->path())));
        find("again")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("leave")->isVisible(), soon);
        QCOMPARE(imported.count(), 1);
        QCOMPARE(m_index->count("patient"), 5);
        QVERIFY(filesBelow(base).isEmpty());
    }

    void namesInPicturesAreAskedAbout()
    {
        const QSignalSpy upload(m_form.get(), &AnonymizeForm::uploadRequested);
        const QSignalSpy send(m_form.get(), &AnonymizeForm::sendRequested);
        choose("toSend");
        choose(QList<qlonglong>{2, 3});
        find("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("leaveOut")->isVisible(), soon);
        QVERIFY(!find("keepAll")->isEnabled());
        auto *files = find<QTableView>("files");
        QCOMPARE(files->model()->rowCount(), 1);
        QVERIFY(send.isEmpty());
        const QSignalSpy pictures(m_form.get(), &AnonymizeForm::picturesWanted);
        QTest::keyClick(files, Qt::Key_Return);
        find("open")->click();
        QCOMPARE(pictures.count(), 2);
        QCOMPARE(pictures[0], pictures[1]);
        QCOMPARE(pictures[0][0].toStringList(), QStringList{m_index->folder() + QStringLiteral("/in/c.dcm")});
        keepPicture(*m_form, QStringLiteral("anonymize-doubtful"));
        find("leaveOut")->click();
        QTRY_COMPARE_WITH_TIMEOUT(send.count(), 1, soon);
        QCOMPARE(send[0][0].toStringList().size(), 1);
        QCOMPARE(send[0][1].toStringList().size(), 1);
        QCOMPARE(send[0][2].toStringList(), QStringList("CT"));

        find("leave")->click();
        find("toUpload")->setChecked(true);
        QTRY_VERIFY(find("start")->isEnabled());
        find("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("looked")->isVisible(), soon);
        find("looked")->setChecked(true);
        find("keepAll")->click();
        QTRY_COMPARE_WITH_TIMEOUT(upload.count(), 1, soon);
        QCOMPARE(upload[0][0].toStringList().size(), 2);
        for (const QString &file : upload[0][0].toStringList()) {
            QVERIFY(file.startsWith(AnonymisedFolders::base(m_index->path()) + QLatin1Char('/'))
                && QFile::exists(file));
        }
    }

    void nothingStaysOfWhatIsCancelled()
    {
        choose("toFolder");
        choose(QList<qlonglong>{3});
        find("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("leaveOut")->isVisible(), soon);
        find("cancel")->click();
        QTRY_VERIFY_WITH_TIMEOUT(find("leave")->isVisible(), soon);
        QVERIFY(QDir(m_target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));

        find("leave")->click();
        QTRY_VERIFY(find("start")->isEnabled());
        find("start")->click();
        QTRY_VERIFY(find("cancel")->isVisible());
        m_form.reset();
        QVERIFY(QDir(m_target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void closingAsksWhatRuns()
    {
        QMainWindow window;
        const QPointer<NDockWidget> dock(new NDockWidget(QStringLiteral("Anonymize"), &window));
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        dock->setWidget(m_form.release());
        m_form = nullptr;
        auto *form = static_cast<AnonymizeForm *>(dock->widget());
        const auto button = [form](const char *name) {
            return form->findChild<QAbstractButton *>(QLatin1String(name));
        };
        dock->setFloating(true);
        window.show();
        form->findChild<QLineEdit *>(QStringLiteral("folder"))->setText(m_target);
        form->choose(QStringLiteral("patient"), {3});
        QTRY_VERIFY(button("start")->isEnabled());
        button("start")->click();
        QTRY_VERIFY_WITH_TIMEOUT(button("leaveOut")->isVisible(), soon);
        QVERIFY(AnonymizeForm::isAnyRunning());

        int answer = kivMessageBoxForm::AnswerCancel;
        kivMessageBoxForm::setAnswerer([&answer](const kivMessageBoxForm::Request &) { return answer; });
        QVERIFY(!dock->close());
        QVERIFY(button("leaveOut")->isVisible());
        answer = kivMessageBoxForm::AnswerOk;
        QVERIFY(!dock->close());
        QTRY_VERIFY_WITH_TIMEOUT(!dock, soon);
        kivMessageBoxForm::setAnswerer({});
        QVERIFY(!AnonymizeForm::isAnyRunning());
        QVERIFY(QDir(m_target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    /// By words of the name as people write it, or a part of the ID; the newest are listed without.
    void patientsAreFound()
    {
        const auto *tree = find<QTreeWidget>("records");
        QTRY_COMPARE(tree->topLevelItemCount(), 3);
        for (const char *text : {"DOE JOHN", "7700", "77002"}) {
            const int found = qstrcmp(text, "77002") == 0 ? 1 : 3;
            find<QLineEdit>("search")->setText(QLatin1String(text));
            QTest::keyClick(find<QLineEdit>("search"), Qt::Key_Return);
            QTRY_COMPARE(tree->topLevelItemCount(), found);
        }
        QCOMPARE(tree->topLevelItem(0)->text(1), QStringLiteral("77002"));
        tree->topLevelItem(0)->setCheckState(0, Qt::Checked);
        find<QLineEdit>("search")->clear();
        QTRY_COMPARE(tree->topLevelItemCount(), 3);
        QCOMPARE(tree->topLevelItem(0)->text(1), QStringLiteral("77002"));
        QCOMPARE(tree->topLevelItem(0)->child(0)->checkState(0), Qt::Checked);
    }

    void previewShowsWhatChanges()
    {
        choose("toFolder");
        find("descriptors")->setChecked(true);
        find("preview")->click();
        const QAbstractItemModel *model = find<QTableView>("changes")->model();
        QTRY_VERIFY_WITH_TIMEOUT(model->rowCount() > 0, soon);
        const auto cell = [model](const char *attribute, int column) {
            const QModelIndexList found =
                model->match(model->index(0, 1), Qt::DisplayRole, QLatin1String(attribute));
            return found.size() == 1 ? found[0].siblingAtColumn(column).data().toString() : QString();
        };
        QCOMPARE(cell("PatientName", 2), QStringLiteral("Doe^John"));
        QVERIFY(cell("PatientName", 3).startsWith(QLatin1String("Anonymous^")));
        QCOMPARE(cell("StudyDescription", 2), QStringLiteral("Knee"));
        QCOMPARE(cell("StudyDescription", 3), QStringLiteral("stays"));
        QVERIFY(QDir(m_target).isEmpty());
    }

    void whatIsToBeSentStaysAMonth()
    {
        const QString base = AnonymisedFolders::base(m_index->path());
        for (const char *name : {"old", "needed", "new"}) {
            writeFile(base + QLatin1Char('/') + QLatin1String(name) + QStringLiteral("/1"));
        }
        const QDateTime now = QDateTime::currentDateTime();
        const auto isNeeded = [](const QString &folder) { return folder.endsWith(QLatin1String("needed")); };
        QCOMPARE(AnonymisedFolders::sweep(m_index->path(), now.addDays(30), isNeeded), 0);
        QCOMPARE(AnonymisedFolders::sweep(m_index->path(), now.addDays(31), isNeeded), 2);
        QCOMPARE(filesBelow(base), QStringList(base + QStringLiteral("/needed/1")));
    }

private:
    void add(const QString &file, const QString &id, const QString &modality = QStringLiteral("CT"))
    {
        const QString uid = QStringLiteral("1.2.%1").arg(id);
        DicomFileBuilder()
            .patient(id, QStringLiteral("Doe^John"))
            .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.1"))
            .set(0x00080060, modality)
            .set(0x00081030, QStringLiteral("Knee"))
            .write(m_index->folder() + QStringLiteral("/in/") + file);
    }

    template <typename Widget = QAbstractButton>
    Widget *find(const char *name) const
    {
        return m_form->findChild<Widget *>(QLatin1String(name));
    }

    void choose(const QList<qlonglong> &patients)
    {
        m_form->choose(QStringLiteral("patient"), patients);
        QVERIFY(!find("start")->isEnabled());
        QTRY_VERIFY(find("start")->isEnabled());
    }

    /// The first two patients, and where their copies go.
    void choose(const char *output)
    {
        find<QLineEdit>("folder")->setText(m_target);
        find(output)->setChecked(true);
        choose(QList<qlonglong>{1, 2});
    }

    QString said() const { return find<QLabel>("title")->text(); }

    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<AnonymizeForm> m_form;
    QString m_target;
};

PM_TEST_MAIN(AnonymizeFormTest)
#include "tst_anonymizeform.moc"
