#include "imageformatform.h"
#include "patientform.h"
#include "patienttreeform.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QDockWidget>
#include <QSqlTableModel>
#include <QTableView>
#include <QTextBrowser>
#include <QTreeView>
#include <QtTest>

/// The patient tree beside the tables of the main window.
class WindowTreeTest : public WindowTest
{
    Q_OBJECT

private slots:
    void treeDockIsMadeOnce()
    {
        PatientManagerMainWindow &window = fixture->open();
        QPointer<PatientTreeForm> tree = window.getPatientTreeForm();
        QVERIFY(tree && !tree->parent());
        for (int round = 0; round < 2; ++round) {
            window.showPatientTreeForm();
            const auto docks = window.findChildren<QDockWidget *>();
            QCOMPARE(docks.size(), 1);
            QCOMPARE(docks[0]->objectName(), QStringLiteral("DockPatientTree"));
            QCOMPARE(docks[0]->widget(), static_cast<QWidget *>(tree));
            QCOMPARE(window.dockWidgetArea(docks[0]), Qt::LeftDockWidgetArea);
            QVERIFY(docks[0]->isVisible() && tree->isVisible());
            docks[0]->hide();
        }
        delete tree;
        window.showPatientTreeForm();
        QCOMPARE(window.findChildren<QDockWidget *>().size(), 1);
    }

    void titleOfTheTreeFloatsItsDock()
    {
        PatientManagerMainWindow &window = fixture->open();
        PatientTreeForm *tree = window.getPatientTreeForm();
        const auto doubleClick = [tree](const char *name) {
            auto *target = tree->findChild<QWidget *>(QLatin1String(name));
            QTest::mouseDClick(target, Qt::LeftButton, Qt::NoModifier, target->rect().center());
        };
        doubleClick("titleLabel"); // without a dock nothing happens
        window.showPatientTreeForm();
        auto *dock = window.findChild<QDockWidget *>();
        const auto children = [dock] {
            return dock->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        };
        const int childCount = children().size();
        QVERIFY(dock->titleBarWidget());
        doubleClick("termsLabel");
        QVERIFY(!dock->isFloating());
        doubleClick("titleLabel");
        QVERIFY(dock->isFloating() && !dock->titleBarWidget());
        doubleClick("titleLabel");
        QVERIFY(!dock->isFloating() && dock->titleBarWidget());
        QCOMPARE(children().size(), childCount);
    }

    void treeEndsWithItsWindow()
    {
        QPointer<PatientTreeForm> never = fixture->open().getPatientTreeForm();
        fixture->closeWindow();
        QTRY_VERIFY(!never);
        QPointer<PatientTreeForm> docked = fixture->open().getPatientTreeForm();
        fixture->open().showPatientTreeForm();
        fixture->closeWindow();
        QTRY_VERIFY(!docked);
        delete fixture->open().getPatientTreeForm();
        fixture->open().showPatientTreeForm();
        QPointer<PatientTreeForm> taken = fixture->open().getPatientTreeForm();
        QWidget host;
        taken->setParent(&host);
        fixture->closeWindow();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(taken);
        const std::unique_ptr<PatientTreeForm> ownWindow(fixture->open().getPatientTreeForm());
        ownWindow->show();
        fixture->closeWindow();
        const QPointer<PatientTreeForm> alive = ownWindow.get();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(alive);
    }

    void treeChoosesWhatTheTablesShow()
    {
        const qlonglong patient = fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        fixture->index.addPatient(
            QStringLiteral("C^D"), QStringLiteral("2"), QStringLiteral("2001-01-01 00:00:00"));
        const qlonglong study = fixture->index.addStudy(patient, QStringLiteral("1.1"));
        fixture->index.addSeries(study, QStringLiteral("1.1.1"));
        const qlonglong series = fixture->index.addSeries(study, QStringLiteral("1.1.2"));
        fixture->index.addImage(series, QStringLiteral("1.1.2.1"));
        fixture->index.query(QStringLiteral("DELETE FROM andvancequiry"));
        PatientManagerMainWindow &window = fixture->open();
        PatientTreeForm *tree = window.getPatientTreeForm();
        auto *view = tree->findChild<QTreeView *>();
        const auto *browser = window.getTableInfoForm()->findChild<QTextBrowser *>();
        const auto keys = [](const auto &form) {
            const QSqlTableModel *model = form->tableModel();
            QList<qlonglong> pks;
            for (int row = 0; row < model->rowCount(); ++row) {
                pks.append(model->index(row, 0).data().toLongLong());
            }
            return pks;
        };
        const auto shown = [&](QWidget *form, const char *text) {
            for (QWidget *other : recordForms(window)) {
                if (other->isVisible() != (other == form)) {
                    return false;
                }
            }
            return browser->isVisible() && browser->toPlainText() == QLatin1String(text);
        };

        window.getPatientForm()->onPatient({});
        tree->on_AdvancedInquiryPatient_clicked();
        QCOMPARE(keys(window.getPatientForm()), QList<qlonglong>{patient});
        QVERIFY(shown(window.getPatientForm(), "ALL Patient"));
        tree->on_AdvancedInquiryStudy_clicked();
        QCOMPARE(keys(window.getStudyForm()), QList<qlonglong>{study});
        QVERIFY(shown(window.getStudyForm(), "ALL Study"));
        tree->on_AdvancedInquirySeries_clicked();
        QCOMPARE(keys(window.getSeriesForm()), (QList<qlonglong>{series - 1, series}));
        QVERIFY(shown(window.getSeriesForm(), "ALL Series"));

        const QModelIndex top = view->model()->index(0, 0);
        const QModelIndex last = view->model()->index(1, 0, view->model()->index(0, 0, top));
        emit view->clicked(last);
        QCOMPARE(keys(window.getImagesForm()).size(), 1);
        QVERIFY(shown(window.getImagesForm(), "patientName:A^B; patientPK:1"));
        view->setCurrentIndex(last);
        emit view->doubleClicked(last);
        QCOMPARE(window.selectedTable(), QStringLiteral("generalseries"));
        QCOMPARE(window.selectedKeys(), QList<qlonglong>{series});
    }

    void fieldChangesInTheTreeReachTheTables()
    {
        PatientManagerMainWindow &window = fixture->open();
        for (const char *table : {"patient", "generalstudy", "generalseries", "imageformat"}) {
            fixture->index.query(QStringLiteral("UPDATE %1user SET pk = 1 - pk").arg(QLatin1String(table)));
        }
        const auto keyIsHidden = [&] {
            QList<bool> hidden;
            for (QWidget *form : recordForms(window)) {
                hidden.append(form->findChild<QTableView *>()->isColumnHidden(0));
            }
            return hidden;
        };
        const QList<bool> before = keyIsHidden();
        emit window.getPatientTreeForm()->updateFieldHeader();
        const QList<bool> after = keyIsHidden();
        for (int i = 0; i < before.size(); ++i) {
            QVERIFY(before[i] != after[i]);
        }
    }
};

PM_TEST_MAIN(WindowTreeTest)
#include "windowtreetest.moc"
