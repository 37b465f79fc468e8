#include "qpatienttreemodel.h"
#include "testmain.h"
#include "treefixture.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QtTest>

/// How the tree of the panel behaves under hands and keys, and under a reload.
class PatientTreeViewTest : public TreeFixture
{
    Q_OBJECT

private slots:
    void columnsFollowTheConfiguration()
    {
        index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 1"));
        index->query(QStringLiteral("UPDATE patientuser SET PatientID = 0"));
        open();
        const auto columnsNamed = [this](const QString &name) {
            QList<int> columns;
            for (int column = 0; column < view()->model()->columnCount(); ++column) {
                if (view()->model()->headerData(column, Qt::Horizontal).toString() == name) {
                    columns.append(column);
                }
            }
            return columns;
        };
        const QList<int> keys = columnsNamed(QStringLiteral("pk"));
        QCOMPARE(keys.size(), 3);
        QCOMPARE(columnsNamed(QStringLiteral("PatientID")).size(), 0);
        QVERIFY(!view()->isColumnHidden(keys[0]) && view()->isColumnHidden(keys[1]));
        QVERIFY(!view()->isColumnHidden(keys[2]));
        index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 0"));
        index->query(QStringLiteral("UPDATE patientuser SET PatientID = 1"));
        press("AdvancedInquiry");
        const QList<int> later = columnsNamed(QStringLiteral("pk"));
        QCOMPARE(later[1], keys[1] + 1);
        QCOMPARE(view()->header()->hiddenSectionCount(), 2);
        QVERIFY(view()->isColumnHidden(later[1]) && view()->isColumnHidden(later[2]));
    }

    void fiftyQueriesUnderAView()
    {
        open();
        store(QStringLiteral("CT"), QStringLiteral("generalseries"), QStringLiteral("Modality"),
            QStringLiteral("CT"));
        form->getComboBox(QStringLiteral("CT"));
        QPointer<QAbstractItemModel> old;
        for (int round = 0; round < 50; ++round) {
            form->getComboBoxIdx(round % 2 ? all : QStringLiteral("CT"));
            press("AdvancedInquiry");
            QVERIFY(view()->model() != old);
            old = view()->model();
            new QAbstractItemModelTester(old, QAbstractItemModelTester::FailureReportingMode::Fatal, old);
            QCOMPARE(old->rowCount(), round % 2 ? 2 : 1);
            view()->expandAll();
            view()->selectAll();
            view()->setCurrentIndex(row({0, 0}));
            if (round % 3 == 0) {
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QCOMPARE(form->findChildren<QPatientTreeModel *>().size(), 1);
            }
        }
    }

    void enterDoesWhatAClickDoes()
    {
        open();
        view()->setFocus();
        view()->setCurrentIndex(row({0}));
        QTest::keyClick(view(), Qt::Key_Right);
        QVERIFY(view()->isExpanded(row({0})));
        QTest::keyClick(view(), Qt::Key_Down);
        QCOMPARE(log->take(), QStringList());
        QTest::keyClick(view(), Qt::Key_Return);
        const QStringList byReturn = log->take();
        QCOMPARE(byReturn.value(1), QStringLiteral("table: generalseries"));
        QTest::keyClick(view(), Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(log->take(), byReturn);
        QTest::mouseClick(
            view()->viewport(), Qt::LeftButton, Qt::NoModifier, view()->visualRect(row({0, 0})).center());
        QCOMPARE(log->take(), byReturn);
    }

    void cutTextsAreToldWhole()
    {
        const QString description = QStringLiteral("<b>Skull</b> ") + QString(200, QLatin1Char('x'));
        index->query(QStringLiteral("UPDATE generalstudy SET StudyDate = '20240229', StudyDescription = ?"),
            {description});
        open();
        view()->expand(row({0}));
        const auto tipAt = [this](const QModelIndex &place) {
            const QPoint point = view()->visualRect(place).center();
            QHelpEvent event(QEvent::ToolTip, point, view()->viewport()->mapToGlobal(point));
            QToolTip::hideText();
            QCoreApplication::sendEvent(view()->viewport(), &event);
            return QToolTip::text();
        };
        QCOMPARE(tipAt(row({0})), view()->toolTip());
        const QString tip = tipAt(row({0, 0}));
        QVERIFY2(tip.contains(QLatin1String("2024-02-29")), qPrintable(tip));
        QVERIFY(tip.contains(QLatin1String("CT, MR")) && tip.contains(description.toHtmlEscaped()));
    }

    void reloadLeavesEverythingInItsPlace()
    {
        for (int i = 0; i < 100; ++i) {
            index->addPatient(
                QStringLiteral("P^%1").arg(i, 3, 10, QLatin1Char('0')), QString::number(10 + i));
        }
        open();
        const auto scrolled = [this] {
            return QPair<int, int>(
                view()->verticalScrollBar()->value(), view()->horizontalScrollBar()->value());
        };
        view()->expand(row({0}));
        view()->header()->moveSection(2, 0);
        view()->setColumnWidth(2, 300);
        view()->setCurrentIndex(row({90}).siblingAtColumn(1));
        view()->scrollToTop();
        view()->horizontalScrollBar()->setValue(150);
        form->reload();
        QCOMPARE(scrolled(), qMakePair(0, 150));
        QCOMPARE(view()->currentIndex(), row({90}).siblingAtColumn(1));
        QVERIFY(view()->isExpanded(row({0})));
        view()->verticalScrollBar()->setValue(30);
        form->reload();
        QCOMPARE(scrolled(), qMakePair(30, 150));
        QCOMPARE(view()->header()->logicalIndex(0), 2);

        // As many columns, but others: neither their order nor what is hidden of them is taken over.
        index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 1"));
        form->reload();
        QCOMPARE(view()->header()->hiddenSectionCount(), 1);
        const int columns = view()->header()->count();
        index->query(QStringLiteral("UPDATE patientuser SET PatientID = 0, PatientBirthTime = 1"));
        form->reload();
        QCOMPARE(view()->header()->count(), columns);
        QCOMPARE(view()->header()->logicalIndex(0), 0);
        QCOMPARE(view()->header()->hiddenSectionCount(), 1);
    }

    void allOfVeryManyAreThePatients()
    {
        open();
        press("AdvancedInquirySeries");
        view()->selectAll();
        QCOMPARE(view()->selectionModel()->selectedRows().size(), 6);
        const auto chosenBy = [this](Qt::Key from, Qt::Key to) {
            QTest::keyClick(view(), from);
            QTest::keyClick(view(), to, Qt::ShiftModifier);
            return view()->selectionModel()->selectedRows().size();
        };
        const QString counting = QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 5009) ");
        index->query(
            counting + QStringLiteral("INSERT INTO patient (PatientName, PatientID) SELECT 'Z', i FROM n"));
        index->query(QStringLiteral("INSERT INTO generalstudy (patient_fk, StudyInstanceUID) "
                                    "SELECT pk, 'u' || pk FROM patient WHERE PatientName = 'Z'"));
        press("AdvancedInquiry");
        view()->setFocus();
        QCOMPARE(chosenBy(Qt::Key_Home, Qt::Key_End), 5002);
        QCOMPARE(chosenBy(Qt::Key_Up, Qt::Key_Home), 5001);
        press("AdvancedInquiryStudy");
        view()->selectAll();
        QCOMPARE(view()->selectionModel()->selectedRows().size(), 5002);
        QVERIFY(!view()->selectionModel()->isSelected(row({0, 0})));
        QCOMPARE(chosenBy(Qt::Key_Down, Qt::Key_End), 5002);
        QVERIFY(!view()->selectionModel()->isSelected(row({0, 0})));
        QCOMPARE(chosenBy(Qt::Key_Up, Qt::Key_Home), 5002);
        QVERIFY(chosenBy(Qt::Key_Down, Qt::Key_PageDown) > 2);
        QVERIFY(view()->selectionModel()->isSelected(row({0, 0})));
        view()->setCurrentIndex({});
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, {view()->width() / 2, 5});
        QCOMPARE(view()->selectionModel()->selectedRows().size(), 1);
    }
};

PM_TEST_MAIN(PatientTreeViewTest)
#include "tst_patienttreeview.moc"
