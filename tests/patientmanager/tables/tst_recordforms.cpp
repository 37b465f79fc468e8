#include "imageformatform.h"
#include "ntableview.h"
#include "patientform.h"
#include "seriesform.h"
#include "studyform.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QtTest>

#include <memory>

namespace {

using Keys = QList<qlonglong>;

const char *const yesterday = "2001-02-03 04:05:06";

Keys shownKeys(const RecordForm &form)
{
    Keys keys;
    for (int row = 0; row < form.tableModel()->rowCount(); ++row) {
        keys.append(form.tableModel()->record(row).value(0).toLongLong());
    }
    return keys;
}

Keys keysOf(const QSignalSpy &spy)
{
    return spy.isEmpty() ? Keys{-1} : spy.last().at(0).value<Keys>();
}

qlonglong keyOf(const QSignalSpy &spy)
{
    return spy.isEmpty() ? -1 : spy.last().at(0).toLongLong();
}

/// As a user does it, on the first column that is shown.
void click(const RecordForm &form, int row, Qt::KeyboardModifiers modifiers = {})
{
    const QTableView *view = form.view();
    const int column = view->horizontalHeader()->logicalIndexAt(2);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers,
        view->visualRect(form.tableModel()->index(row, column)).center());
}

} // namespace

/// What the four record forms show, report and follow, on a small index; each test has one of its own.
class RecordFormsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        allowWarningsOfNamedSlots();
        qRegisterMetaType<QList<qlonglong>>("QList<qlonglong>");
    }

    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        m_old =
            m_index->addPatient(QStringLiteral("Old^Anna"), QStringLiteral("1"), QLatin1String(yesterday));
        m_today = m_index->addPatient(QStringLiteral("New^Bert"), QStringLiteral("2"));
        m_study = m_index->addStudy(m_today, QStringLiteral("1.1"));
        m_index->addStudy(m_today, QStringLiteral("1.2"));
        m_series = m_index->addSeries(m_study, QStringLiteral("1.1.2"), QStringLiteral("CT"), 12);
        m_index->addSeries(m_study, QStringLiteral("1.1.1"), QStringLiteral("CT"), 5);
        m_index->addImage(m_series, QStringLiteral("1.1.2.1"), 7, QStringLiteral("/data/it's 7.dcm"));
        m_index->addImage(m_series, QStringLiteral("1.1.2.2"), 8);
    }

    void cleanup() { m_index.reset(); }

    void startsWithTodaysPatients()
    {
        QCOMPARE(shownKeys(PatientForm()), Keys{m_today});
        QCOMPARE(shownKeys(StudyForm()), Keys());
        QCOMPARE(shownKeys(SeriesForm()), Keys());
        QCOMPARE(shownKeys(ImageformatForm()), Keys());
    }

    void showsPatientsOfASearch()
    {
        PatientForm form;
        QSignalSpy picked(&form, &PatientForm::selectPatient);
        form.onSearchPatient(QStringLiteral("PatientID = '1'"));
        QCOMPARE(shownKeys(form), Keys{m_old});
        QCOMPARE(keyOf(picked), 0);
        form.onSearchPatient(QString());
        QCOMPARE(shownKeys(form), (Keys{m_old, m_today}));
        form.onInquiryShow();
        QCOMPARE(shownKeys(form), Keys());
        QCOMPARE(form.tableModel()->filter(), QStringLiteral("pk ='-1'"));
    }

    void showsKeys_data()
    {
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<int>("rows");
        Keys chain;
        QStringList parts;
        for (int key = 1; key <= 500; ++key) {
            chain.append(key);
            parts.append(QStringLiteral("pk ='%1'").arg(key));
        }
        QTest::newRow("none") << Keys() << QStringLiteral("pk ='-1'") << 0;
        QTest::newRow("one") << Keys{2} << QStringLiteral("pk ='2'") << 1;
        QTest::newRow("two") << Keys{7, 9} << QStringLiteral("pk ='7' or pk ='9'") << 0;
        QTest::newRow("the longest chain") << chain << parts.join(QStringLiteral(" or ")) << 2;
        Keys run;
        for (int key = 200'000; key > 0; --key) {
            run.append(key);
        }
        QTest::newRow("a great many in a row") << run << QStringLiteral("pk between '1' and '200000'") << 2;
        parts.clear();
        Keys scattered{run.mid(run.size() - 600)};
        for (int key = 1000; key <= 200'000; key += 2) {
            scattered.append(key);
            parts.append(QStringLiteral("'%1'").arg(key));
        }
        QTest::newRow("a great many, scattered")
            << scattered
            << QStringLiteral("pk between '1' and '600' or pk in (%1)").arg(parts.join(QLatin1Char(',')))
            << 2;
    }

    void showsKeys()
    {
        QFETCH(Keys, keys);
        QFETCH(QString, filter);
        PatientForm patients;
        patients.onPatient(keys);
        QVERIFY(patients.tableModel()->filter() == filter);
        QTEST(patients.tableModel()->rowCount(), "rows");
        StudyForm studies;
        studies.onStudy(keys);
        QVERIFY(studies.tableModel()->filter() == filter);
        SeriesForm series;
        series.onSeries(keys);
        QVERIFY(series.tableModel()->filter() == filter);
    }

    void followsItsParent()
    {
        StudyForm studies;
        QSignalSpy study(&studies, &StudyForm::selectStudy);
        studies.onSelectPatient(m_today);
        QCOMPARE(studies.tableModel()->filter(), QStringLiteral("patient_fk ='%1'").arg(m_today));
        QCOMPARE(studies.tableModel()->rowCount(), 2);
        QCOMPARE(keyOf(study), m_study);
        studies.onSelectPatient(m_old);
        QCOMPARE(keyOf(study), 0);

        SeriesForm series;
        QSignalSpy emptied(&series, &SeriesForm::selectSeries);
        series.onSelectStudy(m_study);
        QCOMPARE(keyOf(emptied), 0);
        QCOMPARE(shownKeys(series), (Keys{m_series + 1, m_series})); // 5 before 12, as numbers
        series.onSelectStudy(0);
        QCOMPARE(shownKeys(series), Keys());
    }

    void reportsAClickedInstance()
    {
        const auto form = shown<ImageformatForm>();
        form->onSelectSeries(m_series);
        QCOMPARE(form->tableModel()->rowCount(), 2);
        QSignalSpy instance(form.get(), &ImageformatForm::selectInstance);
        QSignalSpy keys(form.get(), &RecordForm::selectPK);
        click(*form, 0);
        QCOMPARE(instance.count(), 1);
        QCOMPARE(instance.last().at(1).value<long>(), 7L);
        QCOMPARE(instance.last().at(2).toString(), QStringLiteral("/data/it's 7.dcm"));
        QCOMPARE(keysOf(keys), Keys{instance.last().at(0).toLongLong()});
        QCOMPARE(keys.last().at(1).toString(), QStringLiteral("imageformat"));
        form->onInstances(QStringLiteral("InstanceNumber = 8"));
        QCOMPARE(form->tableModel()->rowCount(), 1);
    }

    void reportsEachSelectedRowOnce()
    {
        const auto form = shown<SeriesForm>();
        form->onSelectStudy(m_study);
        QSignalSpy picked(form.get(), &SeriesForm::selectSeries);
        QSignalSpy keys(form.get(), &RecordForm::selectPK);
        QSignalSpy several(form.get(), &RecordForm::selectMutiPK);
        click(*form, 1);
        click(*form, 0, Qt::ControlModifier);
        QCOMPARE(keyOf(picked), m_series + 1);
        QCOMPARE(keysOf(keys), (Keys{m_series, m_series + 1})); // in the order of the selection
        QCOMPARE(form->getSelectList(), keysOf(keys));
        QCOMPARE(keys.last().at(1).toString(), QStringLiteral("generalseries"));
        QTest::mouseDClick(form->view()->viewport(), Qt::LeftButton, {},
            form->view()->visualRect(form->tableModel()->index(0, 3)).center());
        QCOMPARE(several.count(), 1);
        QVERIFY(keysOf(several).contains(m_series + 1));
    }

    void keepsTheSelectionOverAllPatients()
    {
        PatientForm form;
        form.view()->selectRow(0);
        form.onShowPatient();
        QCOMPARE(shownKeys(form), (Keys{m_old, m_today}));
        QCOMPARE(form.getSelectList(), Keys{m_today});
        QCOMPARE(form.view()->selectionMode(), QAbstractItemView::ContiguousSelection);
    }

    void selectsNearTheTopOnly()
    {
        for (int i = 0; i < 30; ++i) {
            m_index->addPatient(QStringLiteral("P"), QString::number(100 + i));
        }
        PatientForm form;
        form.onSearchPatient(QString());
        const int columns = form.tableModel()->columnCount();
        form.selectIdx(columns); // keys count from 1
        QCOMPARE(form.getSelectList(), Keys{columns});
        form.selectIdx(columns + 1);
        QCOMPARE(form.getSelectList(), Keys());
    }

    void reloadsOnlyItsOwnTable()
    {
        PatientForm patients;
        StudyForm studies;
        studies.onSelectPatient(m_today);
        m_index->query(QStringLiteral("DELETE FROM generalstudy"));
        m_index->query(QStringLiteral("DELETE FROM patient"));
        for (RecordForm *form : {static_cast<RecordForm *>(&patients), static_cast<RecordForm *>(&studies)}) {
            form->onDeletereflash(QStringLiteral("generalstudy"));
        }
        QCOMPARE(patients.tableModel()->rowCount(), 1);
        QCOMPARE(studies.tableModel()->rowCount(), 0);
    }

    void sortsByAHeaderClick()
    {
        const auto form = shown<PatientForm>();
        form->onSearchPatient(QString());
        QHeaderView *header = form->view()->horizontalHeader();
        const int name = form->tableModel()->fieldIndex(QStringLiteral("PatientName"));
        const QPoint place(header->sectionViewportPosition(name) + header->sectionSize(name) / 2, 5);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(header->sortIndicatorSection(), name);
        const Keys first = shownKeys(*form);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(shownKeys(*form), (Keys{first.value(1), first.value(0)}));
    }

    /// A click, a search or a refresh resets each model that it concerns exactly once.
    void runsNoStatementTwice()
    {
        PatientForm patients;
        StudyForm studies;
        SeriesForm series;
        ImageformatForm images;
        QObject::connect(&patients, &PatientForm::selectPatient, &studies, &StudyForm::onSelectPatient);
        QObject::connect(&studies, &StudyForm::selectStudy, &series, &SeriesForm::onSelectStudy);
        QObject::connect(&series, &SeriesForm::selectSeries, &images, &ImageformatForm::onSelectSeries);
        QSignalSpy patientResets(patients.tableModel(), &QAbstractItemModel::modelReset);
        QSignalSpy studyResets(studies.tableModel(), &QAbstractItemModel::modelReset);
        QSignalSpy seriesResets(series.tableModel(), &QAbstractItemModel::modelReset);
        QSignalSpy imageResets(images.tableModel(), &QAbstractItemModel::modelReset);
        const auto counts = [&] {
            return QList<int>{
                patientResets.count(), studyResets.count(), seriesResets.count(), imageResets.count()};
        };
        patients.selectIndex(patients.tableModel()->index(0, 0));
        QCOMPARE(counts(), (QList<int>{0, 1, 1, 1}));
        QCOMPARE(studies.tableModel()->rowCount(), 2);
        QCOMPARE(series.tableModel()->rowCount(), 2);
        series.selectIndex(series.tableModel()->index(1, 0));
        QCOMPARE(counts(), (QList<int>{0, 1, 1, 2}));
        QCOMPARE(images.tableModel()->rowCount(), 2);
        patients.onPatient({m_old});
        patients.on_reflash_clicked();
        QCOMPARE(counts(), (QList<int>{2, 1, 1, 2}));
        images.onInquiryShow();
        images.onInstances(QString());
        QCOMPARE(counts(), (QList<int>{2, 1, 1, 4}));
    }

    void hidesColumnsByTheirFlags()
    {
        PatientForm form;
        QVERIFY(form.view()->isColumnHidden(0));
        QVERIFY(!form.view()->isColumnHidden(1));
        m_index->query(QStringLiteral("UPDATE patientuser SET PatientName = 0, pk = 5"));
        form.updateFieldHeader();
        form.updateFieldHeader();
        QVERIFY(!form.view()->isColumnHidden(0));
        QVERIFY(form.view()->isColumnHidden(1));

        m_index->query(QStringLiteral("DROP TABLE patientuser"));
        m_index->query(QStringLiteral("CREATE TABLE patientuser AS SELECT 1 AS a, 1 AS b"));
        form.updateFieldHeader();
        QVERIFY(!form.view()->isColumnHidden(1));
        QVERIFY2(form.view()->isColumnHidden(2), "a flag that is missing hides");
        m_index->query(QStringLiteral("DELETE FROM patientuser"));
        form.updateFieldHeader();
        QCOMPARE(form.view()->horizontalHeader()->hiddenSectionCount(), form.tableModel()->columnCount());
    }

    void replacesAModelThatFails()
    {
        PatientForm form;
        form.onSearchPatient(QStringLiteral("PatientID = '1'"));
        form.on_reflash_clicked();
        QCOMPARE(form.tableModel()->filter(), QStringLiteral("PatientID = '1'"));
        const int shownColumns =
            form.tableModel()->columnCount() - form.view()->horizontalHeader()->hiddenSectionCount();

        form.onSearchPatient(QStringLiteral("NoSuchColumn = 1"));
        QCOMPARE(form.tableModel()->rowCount(), 0);
        form.on_reflash_clicked();
        QCOMPARE(form.tableModel()->filter(), QString());
        QCOMPARE(form.view()->model(), form.tableModel());
        QCOMPARE(shownKeys(form), (Keys{m_old, m_today}));
        QCOMPARE(form.tableModel()->editStrategy(), QSqlTableModel::OnManualSubmit);
        QCOMPARE(form.tableModel()->columnCount() - form.view()->horizontalHeader()->hiddenSectionCount(),
            shownColumns);
        QSignalSpy edits(&form, &RecordForm::editsChanged);
        form.tableModel()->setData(form.tableModel()->index(0, 1), QStringLiteral("Edited"));
        QCOMPARE(edits.count(), 1);
    }

    void passesOnThatFilesAreLoaded()
    {
        SeriesForm series;
        PatientForm patients;
        QObject::connect(
            &series, &SeriesForm::signalLoadFileFinished, &patients, &PatientForm::on_reflash_enable);
        m_index->addPatient(QStringLiteral("C"), QStringLiteral("3"));
        emit series.view()->fileFinished(false);
        QCOMPARE(patients.tableModel()->rowCount(), 1);
        emit series.view()->fileFinished(true);
        QCOMPARE(patients.tableModel()->rowCount(), 2);
        m_index->addPatient(QStringLiteral("D"), QStringLiteral("4"));
        emit patients.view()->fileFinished(true);
        QCOMPARE(patients.tableModel()->rowCount(), 3);
    }

    void keepsThePlaceOverAReload()
    {
        for (int i = 0; i < 1000; ++i) {
            m_index->addPatient(QStringLiteral("P"), QString::number(1000 + i));
        }
        const auto form = shown<PatientForm>();
        form->onSearchPatient(QString());
        QTableView *view = form->view();
        view->scrollTo(form->tableModel()->index(700, 1), QAbstractItemView::PositionAtTop);
        view->setCurrentIndex(form->tableModel()->index(705, 3));
        const qlonglong top = shownKeys(*form).value(view->rowAt(0));
        QVERIFY(view->rowAt(0) > 600);
        const Keys selected = form->getSelectList();
        QCOMPARE(selected.size(), 1);
        m_index->query(QStringLiteral("DELETE FROM patient WHERE pk < 100"));

        QSignalSpy reports(form.get(), &RecordForm::selectPK);
        form->reload();
        QCOMPARE(form->getSelectList(), selected);
        QCOMPARE(shownKeys(*form).value(view->currentIndex().row()), selected.first());
        QCOMPARE(view->currentIndex().column(), 3);
        QCOMPARE(shownKeys(*form).value(view->rowAt(0)), top);
        QCOMPARE(reports.count(), 0);

        view->scrollToTop();
        m_index->query(QStringLiteral("INSERT INTO patient (pk, PatientName) VALUES (50, 'Early')"));
        form->reload();
        QCOMPARE(shownKeys(*form).value(view->rowAt(0)), 50);
    }

private:
    template <typename Form>
    std::unique_ptr<Form> shown()
    {
        auto form = std::make_unique<Form>();
        form->setMaximumHeight(QWIDGETSIZE_MAX);
        form->resize(1200, 600);
        form->show();
        return form;
    }

    std::unique_ptr<TemporaryIndex> m_index;
    qlonglong m_old = 0;
    qlonglong m_today = 0;
    qlonglong m_study = 0;
    qlonglong m_series = 0;
};

PM_TEST_MAIN(RecordFormsTest)
#include "tst_recordforms.moc"
