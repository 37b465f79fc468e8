#include "indexconnection.h"
#include "ntableview.h"
#include "patientform.h"
#include "temporaryindex.h"
#include "testmain.h"
#include "uploadmark.h"
#include "uploadstatus.h"

#include <QLineEdit>
#include <QLoggingCategory>
#include <QPainter>
#include <QScrollBar>
#include <QSet>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QtTest>

#include <memory>
#include <optional>

namespace {

/// What stands in the transfer tables of one series; NULL where there is nothing.
struct Counters
{
    QVariant received;
    QVariant uploaded;
    QString state = UploadStatus::notUploaded();
};

} // namespace

Q_DECLARE_METATYPE(QVector<Counters>)

/// Upload states: what they are made of, the workers that a click sets to it, and how the table shows it.
class UploadStatesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        allowWarningsOfNamedSlots();
        QLoggingCategory::setFilterRules(QStringLiteral("patientmanager.uploadstates=false"));
    }

    void init() { m_index = std::make_unique<TemporaryIndex>(); }

    void cleanup()
    {
        m_form.reset();
        m_index.reset();
    }

    void statesFollowTheCounters_data()
    {
        QTest::addColumn<QVector<Counters>>("series");
        QTest::addColumn<QString>("firstSeries");
        QTest::addColumn<QString>("patient");
        const QString no = UploadStatus::notUploaded();
        const QString partly = UploadStatus::uploading();
        const QString yes = UploadStatus::uploaded();
        using List = QVector<Counters>;
        QTest::newRow("queued") << List{{12, 0}} << partly << partly;
        QTest::newRow("half") << List{{12, 5}} << partly << partly;
        QTest::newRow("whole") << List{{12, 12}} << yes << yes;
        QTest::newRow("never queued") << List{{12, {}}} << no << no;
        QTest::newRow("nothing known") << List{{{}, {}}} << no << no;
        QTest::newRow("one of two") << List{{12, 12}, {3, {}}} << yes << partly;
        QTest::newRow("both") << List{{12, 12}, {3, 3}} << yes << yes;
        QTest::newRow("uploaded before") << List{{12, {}, yes}} << yes << yes;
        QTest::newRow("another word")
            << List{{12, 12, QStringLiteral("?")}, {1, 1}} << QStringLiteral("?") << partly;
    }

    void statesFollowTheCounters()
    {
        QFETCH(QVector<Counters>, series);
        const qlonglong patient = addPatient(series);
        const qlonglong uploaded = addPatient({{1, {}}});
        m_index->query(QStringLiteral("UPDATE patient SET Status = ? WHERE pk = ?"),
            {UploadStatus::uploaded(), uploaded});
        open();
        QSignalSpy refreshed(m_form.get(), &PatientForm::uploadStatesRefreshed);
        click(0);
        QTRY_COMPARE(refreshed.count(), 1);
        QTEST(stateOf("generalseries", 1), "firstSeries");
        QTEST(stateOf("patient", patient), "patient");
        QTEST(stateOf("generalstudy", 1), "patient"); // of all its studies, whatever their series say
        QTEST(cell(0, "Status").data().toString(), "patient");
        // A patient that is uploaded is left alone.
        click(1);
        QTRY_COMPARE(refreshed.count(), 2);
        QCOMPARE(stateOf("patient", uploaded), UploadStatus::uploaded());
        QCOMPARE(stateOf("generalstudy", 3), UploadStatus::notUploaded());
    }

    void sixthClickStartsNothing()
    {
        QVector<qlonglong> patients;
        for (int i = 0; i <= PatientForm::workerCount; ++i) {
            patients.append(addPatient({{12, 5}}));
        }
        open();
        QSignalSpy selected(m_form.get(), &PatientForm::selectPatient);
        {
            const IndexConnection other(m_index->path());
            WriteTransaction lock(other.database());
            QVERIFY(lock.isActive());
            for (int i = 0; i < PatientForm::workerCount; ++i) {
                click(i);
                QTRY_COMPARE(m_form->refreshCount(), i + 1);
            }
            click(PatientForm::workerCount);
            QCOMPARE(m_form->refreshCount(), PatientForm::workerCount);
            QCOMPARE(selected.count(), PatientForm::workerCount + 1); // answered all the same
        }
        QTRY_COMPARE(m_form->refreshCount(), 0);
        // All were asked to stop, and the sixth never began.
        for (const qlonglong patient : patients) {
            QCOMPARE(stateOf("patient", patient), UploadStatus::notUploaded());
        }
        // A stop that came after the end of a run does not last.
        click(0);
        QTRY_COMPARE(stateOf("patient", patients[0]), UploadStatus::uploading());
    }

    void quickClicksLeaveNoWorkerBehind()
    {
        constexpr int series = 500;
        const qlonglong patient = addPatient(QVector<Counters>(series, Counters{2, 2}));
        open();
        for (int i = 0; i < 10; ++i) {
            click(0);
        }
        QTRY_COMPARE(m_form->refreshCount(), 0);
        // The form goes while a refresh runs, and another waits for the lock of a writer.
        m_index->query(QStringLiteral("UPDATE generalseries SET Status = ?"), {UploadStatus::notUploaded()});
        m_index->query(QStringLiteral("UPDATE patient SET Status = ?"), {UploadStatus::notUploaded()});
        const IndexConnection other(m_index->path());
        WriteTransaction lock(other.database());
        click(0);
        QTRY_COMPARE(m_form->refreshCount(), 1);
        m_form.reset();
        lock.rollback();
        QVERIFY(stateOf("patient", patient) != UploadStatus::uploaded());
    }

    void whatIsBeingEditedStays()
    {
        for (int i = 0; i < 300; ++i) {
            addPatient({{12, 5}});
        }
        open();
        NTableView *view = m_form->view();
        QVERIFY(m_form->tableModel()->setData(cell(1, "PatientComments"), QStringLiteral("unsaved")));
        view->selectRow(2);
        view->verticalScrollBar()->setValue(1);
        view->edit(cell(2, "PatientName"));
        auto *editor = view->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->setText(QStringLiteral("typed"));

        QSignalSpy refreshed(m_form.get(), &PatientForm::uploadStatesRefreshed);
        click(2);
        QTRY_COMPARE(refreshed.count(), 1);
        QCOMPARE(cell(2, "Status").data().toString(), UploadStatus::uploading());
        QCOMPARE(cell(1, "PatientComments").data().toString(), QStringLiteral("unsaved"));
        QVERIFY(m_form->hasUnsavedEdits());
        QCOMPARE(editor->text(), QStringLiteral("typed"));
        QCOMPARE(m_form->selectedKeys().size(), 1);
        QCOMPARE(view->verticalScrollBar()->value(), 1);
        // Rows that the model does not hold are read when they come into sight.
        m_index->query(
            QStringLiteral("UPDATE patient SET Status = ? WHERE pk = 290"), {UploadStatus::uploaded()});
        click(2);
        QTRY_COMPARE(refreshed.count(), 2);
        QCOMPARE(cell(289, "Status").data().toString(), UploadStatus::uploaded());
    }

    /// Told apart without colours.
    void marksHaveTheirOwnShapes()
    {
        QSet<QByteArray> shapes;
        for (const QString &state :
            {UploadStatus::notUploaded(), UploadStatus::uploading(), UploadStatus::uploaded()}) {
            const QImage mark =
                uploadMark(state, QPalette()).pixmap(32, 32).toImage().convertToFormat(QImage::Format_Alpha8);
            shapes.insert(
                QByteArray(reinterpret_cast<const char *>(mark.constBits()), int(mark.sizeInBytes())));
        }
        QCOMPARE(shapes.size(), 3);
        QVERIFY(uploadMark(QStringLiteral("?"), QPalette()).isNull());
    }

private:
    /// A patient with two studies; the series are in the second.
    qlonglong addPatient(const QVector<Counters> &series) const
    {
        const QString id = QString::number(m_index->count("patient") + 1);
        m_index->database().transaction();
        const qlonglong patient = m_index->addPatient(id, id);
        m_index->addStudy(patient, QStringLiteral("1.2.%1.1").arg(id));
        const qlonglong study = m_index->addStudy(patient, QStringLiteral("1.2.%1.2").arg(id));
        for (int i = 0; i < series.size(); ++i) {
            const QString uid = QStringLiteral("1.2.%1.2.%2").arg(id).arg(i + 1);
            m_index->addSeries(study, uid);
            m_index->query(QStringLiteral("UPDATE generalseries SET Status = ? WHERE SeriesInstanceUID = ?"),
                {series[i].state, uid});
            m_index->query(
                QStringLiteral("INSERT INTO series (seriesUID, recvnum, upCloudnum) VALUES (?, ?, ?)"),
                {uid, series[i].received, series[i].uploaded});
        }
        m_index->database().commit();
        return patient;
    }

    QString stateOf(const char *table, qlonglong pk) const
    {
        return m_index->query(QStringLiteral("SELECT Status FROM %1 WHERE pk = %2").arg(table).arg(pk))
            .toString();
    }
    QModelIndex cell(int row, const char *column) const
    {
        return m_form->tableModel()->index(row, m_form->tableModel()->fieldIndex(QLatin1String(column)));
    }
    void click(int row) const { m_form->selectIndex(cell(row, "PatientID")); }

    void open()
    {
        m_form = std::make_unique<PatientForm>();
        m_form->resize(900, 300);
        m_form->show();
        m_form->onShowPatient();
    }

    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<PatientForm> m_form;
};

PM_TEST_MAIN(UploadStatesTest)
#include "tst_uploadstates.moc"
