#include "indexconnection.h"
#include "longwrite.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientform.h"
#include "seriesform.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QStyledItemDelegate>
#include <QtTest>

#include <memory>

namespace {

/// The text that a cell shows.
QString shownText(const RecordForm &form, int row, const char *column)
{
    const QModelIndex index =
        form.tableModel()->index(row, form.tableModel()->fieldIndex(QLatin1String(column)));
    const auto *delegate = qobject_cast<QStyledItemDelegate *>(form.view()->itemDelegate(index));
    return delegate->displayText(index.data(), QLocale());
}

} // namespace

/// Values on screen, editors, and how edits reach the index or do not.
class RecordEditingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { allowWarningsOfNamedSlots(); }

    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        const qlonglong patient =
            m_index->addPatient(QStringLiteral("Yamada^Tarou=山田^太郎"), QStringLiteral("1"));
        m_index->addPatient(QStringLiteral("B"), QStringLiteral("2"));
        m_index->query(QStringLiteral("UPDATE patient SET PatientBirthDate = '19630517' WHERE pk = 1"));
        m_series = m_index->addSeries(m_index->addStudy(patient, QStringLiteral("1.1")),
            QStringLiteral("1.1.1"), QStringLiteral("CT"), 1001);
        m_form = std::make_unique<PatientForm>();
        m_form->show();
    }

    void cleanup()
    {
        m_form.reset();
        m_index.reset();
    }

    void showsValuesForPeople_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("name") << "OperatorsName" << QVariant("A^B\\C^D") << "A, B; C, D";
        QTest::newRow("date") << "SeriesDate" << QVariant("20240131") << "2024-01-31";
        QTest::newRow("no date") << "SeriesDate" << QVariant("20241331") << "20241331";
        QTest::newRow("old date") << "SeriesDate" << QVariant("2024.01.31") << "2024.01.31";
        QTest::newRow("time") << "SeriesTime" << QVariant("093015") << "09:30:15";
        QTest::newRow("time with a fraction") << "SeriesTime" << QVariant("093015.123456") << "09:30:15";
        QTest::newRow("time of a zone") << "SeriesTime" << QVariant("093015+0100") << "093015+0100";
        QTest::newRow("short time") << "SeriesTime" << QVariant("0930") << "0930";
        QTest::newRow("no time") << "SeriesTime" << QVariant(QVariant::String) << "";
        QTest::newRow("number") << "SeriesNumber" << QVariant(1234567) << "1234567";
        QTest::newRow("text") << "SeriesDescription" << QVariant("a^b=c") << "a^b=c";
    }

    void showsValuesForPeople()
    {
        QFETCH(QString, column);
        QFETCH(QVariant, stored);
        QFETCH(QString, shown);
        m_index->query(QStringLiteral("UPDATE generalseries SET %1 = ?").arg(column), {stored});
        SeriesForm form;
        form.onSeries({m_series});
        QCOMPARE(shownText(form, 0, column.toLatin1().constData()), shown);
    }

    void editsWhatIsStored_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("offered");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("changes");
        QTest::addColumn<QVariant>("saved");
        const QString name = QStringLiteral("Yamada^Tarou=山田^太郎");
        QTest::newRow("name") << "PatientName" << name << "Yamada^Jirou" << true << QVariant("Yamada^Jirou");
        QTest::newRow("name untouched") << "PatientName" << name << name << false << QVariant(name);
        QTest::newRow("date") << "PatientBirthDate"
                              << "19630517"
                              << "19630518" << true << QVariant("19630518");
        QTest::newRow("nothing stays nothing") << "PatientComments"
                                               << ""
                                               << "" << false << QVariant(QVariant::String);
        QTest::newRow("number") << "NumberOfPatientRelatedStudies"
                                << "1"
                                << " 12 " << true << QVariant(12LL);
        QTest::newRow("no number") << "NumberOfPatientRelatedStudies"
                                   << "1"
                                   << "many" << false << QVariant(1LL);
    }

    void editsWhatIsStored()
    {
        QFETCH(QString, column);
        QFETCH(QString, offered);
        QFETCH(QString, typed);
        QFETCH(bool, changes);
        QFETCH(QVariant, saved);
        const QByteArray name = column.toLatin1();
        m_form->view()->setColumnHidden(cell(0, name).column(), false);
        m_form->view()->setCurrentIndex(cell(0, name));
        m_form->view()->edit(cell(0, name));
        QVERIFY(m_form->isEditing());
        QCOMPARE(editor()->text(), offered);
        type(typed);
        QVERIFY(!m_form->isEditing());
        QCOMPARE(m_form->hasUnsavedEdits(), changes);
        m_form->submit();
        QCOMPARE(m_index->query(QStringLiteral("SELECT %1 FROM patient WHERE pk = 1").arg(column)), saved);
    }

    void submitsAndReverts()
    {
        QSignalSpy changes(m_form.get(), &RecordForm::editsChanged);
        m_form->tableModel()->setData(cell(1, "PatientName"), QStringLiteral("X"));
        m_form->tableModel()->setData(cell(1, "PatientSex"), QStringLiteral("F"));
        QVERIFY(m_form->hasUnsavedEdits());
        QCOMPARE(changes.count(), 1);
        m_form->on_reflash_enable(true); // files dropped meanwhile have been imported
        QVERIFY(m_form->hasUnsavedEdits());
        m_form->on_revertall_clicked();
        QVERIFY(!m_form->hasUnsavedEdits());
        QCOMPARE(changes.count(), 2);
        QCOMPARE(shownText(*m_form, 1, "PatientName"), QStringLiteral("B"));

        m_form->tableModel()->setData(cell(1, "PatientName"), QStringLiteral("Y^Z"));
        m_form->on_submit_clicked();
        QVERIFY(!m_form->hasUnsavedEdits());
        QCOMPARE(changes.count(), 4);
        const IndexConnection other(m_index->path());
        QSqlQuery query(other.database());
        QVERIFY(query.exec(QStringLiteral("SELECT PatientName FROM patient WHERE pk = 2")) && query.next());
        QCOMPARE(query.value(0).toString(), QStringLiteral("Y^Z"));
    }

    void keepsEditsThatTheDatabaseRefuses()
    {
        const MessageAnswers said;
        m_form->tableModel()->setData(cell(0, "PatientComments"), QStringLiteral("good"));
        m_form->tableModel()->setData(cell(1, "PatientName"), QVariant());
        m_form->submit();
        QCOMPARE(said.titles.value(0), QStringLiteral("Cached Table"));
        QVERIFY2(said.texts.value(0).startsWith(QLatin1String("The database reported an error: "))
                && said.texts.value(0).contains(QLatin1String("NOT NULL")),
            qPrintable(said.texts.value(0)));
        QVERIFY(m_form->hasUnsavedEdits());
        QVERIFY(m_index->query(QStringLiteral("SELECT PatientComments FROM patient WHERE pk = 1")).isNull());

        m_form->tableModel()->setData(cell(1, "PatientName"), QStringLiteral("C"));
        m_form->submit();
        QCOMPARE(said.count(), 1);
        QCOMPARE(m_index->query(QStringLiteral("SELECT PatientComments FROM patient WHERE pk = 1")),
            QVariant("good"));
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT PatientName FROM patient WHERE pk = 2")), QVariant("C"));

        // As a compaction does, for as long as the index is large.
        const IndexConnection other(m_index->path());
        const WriteTransaction writing(other.database());
        const LongWrite compacting(LongWrite::Work::Compaction);
        m_form->tableModel()->setData(cell(0, "PatientComments"), QStringLiteral("later"));
        m_form->submit();
        QVERIFY2(said.texts.last().contains(QLatin1String("compacted")), qPrintable(said.texts.last()));
        QVERIFY(m_form->hasUnsavedEdits());
    }

    void holdsOffAReload()
    {
        m_index->addPatient(QStringLiteral("C"), QStringLiteral("3"));
        m_form->tableModel()->setData(cell(0, "PatientComments"), QStringLiteral("unsaved"));
        m_form->reload();
        QVERIFY(m_form->hasUnsavedEdits());
        m_form->on_revertall_clicked();
        m_form->view()->setCurrentIndex(cell(0, "PatientComments"));
        m_form->view()->edit(cell(0, "PatientComments"));
        m_form->reload();
        QCOMPARE(m_form->tableModel()->rowCount(), 2);
        type(QString());
        m_form->reload();
        QCOMPARE(m_form->tableModel()->rowCount(), 3);
        m_form->tableModel()->setData(cell(2, "PatientName"), QStringLiteral("D"));
        QTest::ignoreMessage(QtWarningMsg, "edit: editing failed");
        m_form->view()->edit(cell(0, "pk"));
        QVERIFY2(!m_form->isEditing(), "a key has no editor");
    }

private:
    QModelIndex cell(int row, const char *column) const
    {
        return m_form->tableModel()->index(row, m_form->tableModel()->fieldIndex(QLatin1String(column)));
    }
    QLineEdit *editor() const { return m_form->view()->findChild<QLineEdit *>(); }
    /// Types into the open editor and leaves it by Return.
    void type(const QString &text) const
    {
        editor()->setText(text);
        QTest::keyClick(editor(), Qt::Key_Return);
        // The view lets go of an editor in the event loop.
        QTRY_VERIFY(!editor());
    }

    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<PatientForm> m_form;
    qlonglong m_series = 0;
};

PM_TEST_MAIN(RecordEditingTest)
#include "tst_recordediting.moc"
