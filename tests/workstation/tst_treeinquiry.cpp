#include "advancedinquiryform.h"
#include "configlocation.h"
#include "datatruth.h"
#include "frame.h"
#include "inquirysaveform.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "recordform.h"
#include "statuspanel.h"
#include "testmain.h"
#include "treecontroller.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QSet>
#include <QSqlTableModel>
#include <QTreeView>
#include <QtTest>

namespace {

const QString inquiryName = QStringLiteral("Middle images of multi");

void press(QWidget *form, const char *button)
{
    auto *found = form->findChild<QPushButton *>(QLatin1String(button));
    QVERIFY2(found && found->isEnabled(), button);
    QTest::mouseClick(found, Qt::LeftButton);
}

QSet<QString> shown(const RecordForm *form, const char *column)
{
    const QSqlTableModel *model = form->tableModel();
    QSet<QString> values;
    for (int row = 0; row < model->rowCount(); ++row) {
        values.insert(model->index(row, model->fieldIndex(QLatin1String(column))).data().toString());
    }
    return values;
}

/// A click on the text of a row, as it stands on the screen.
void clickRow(QTreeView *view, const QModelIndex &index)
{
    view->scrollTo(index);
    const QRect row = view->visualRect(index.siblingAtColumn(1));
    QTest::mouseClick(
        view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(row.left() + 5, row.center().y()));
}

AdvancedInquiryForm *editorOnScreen()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        auto *editor = qobject_cast<AdvancedInquiryForm *>(window);
        if (editor && editor->isVisible()) {
            return editor;
        }
    }
    return nullptr;
}

/// For the documents, where a folder for them is named: the window with the editor before it.
void savePicture(WorkstationWindow &window, QWidget &editor)
{
    const QString folder = qEnvironmentVariable("PM_PICTURES");
    if (folder.isEmpty()) {
        return;
    }
    window.statusPanel()->setIndexPath(QStringLiteral("index.db"));
    QApplication::processEvents();
    QPixmap picture = window.grab();
    const QPixmap front = editor.grab();
    const QRect place(
        QPoint(picture.width() - front.width() - 30, picture.height() - front.height() - 40), front.size());
    QPainter painter(&picture);
    painter.fillRect(place.adjusted(-2, -2, 2, 2), Qt::darkGray);
    painter.drawPixmap(place.topLeft(), front);
    painter.end();
    QVERIFY(picture.save(folder + QStringLiteral("/inquiry.png")));
}

} // namespace

/// The way from a new inquiry to the images that it finds, by mouse and keyboard alone, on real files.
class TreeInquiryTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { ConfigLocation::setBase(QString()); }

    void composedInTheEditorItFindsWhatTheFilesHold()
    {
        if (sharedData().isEmpty()) {
            QSKIP("the corpus is not there");
        }
        ConfigLocation::setBase(QStringLiteral(PM_SOURCE_DIR));
        const Frame frame;
        QVERIFY(frame.index.import({sharedData() + QStringLiteral("/01-series")}).of(FileVerdict::New) > 300);

        // What independent readers found in the files, by the same conditions.
        QSet<QString> patients;
        QMap<QString, QSet<QString>> studiesOf, seriesOf, imagesOf;
        for (const DataTruth &truth : readDataTruth()) {
            const auto value = [&truth](Attribute attribute) { return truth.values.value(attribute); };
            const QString modality = value(Attribute::Modality);
            const int number = value(Attribute::InstanceNumber).toInt();
            const bool found = truth.verdict == QLatin1String("index")
                && truth.path.startsWith(QLatin1String("01-series/"))
                && value(Attribute::PatientName).contains(QLatin1String("multi"), Qt::CaseInsensitive)
                && value(Attribute::StudyInstanceUID).contains(QLatin1String("60402095"))
                && (modality == QLatin1String("PT") || modality == QLatin1String("MR")) && number > 2
                && number < 280;
            if (found) {
                patients.insert(value(Attribute::PatientID));
                studiesOf[value(Attribute::PatientID)].insert(value(Attribute::StudyInstanceUID));
                seriesOf[value(Attribute::StudyInstanceUID)].insert(value(Attribute::SeriesInstanceUID));
                imagesOf[value(Attribute::SeriesInstanceUID)].insert(value(Attribute::SOPInstanceUID));
            }
        }
        QCOMPARE(patients.size(), 2);

        frame.action("actionPatientTree")->trigger();
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        QTRY_VERIFY(panel->isVisible());
        press(panel, "AdvancedInquiryNew");
        AdvancedInquiryForm *editor = editorOnScreen();
        QVERIFY(editor && QTest::qWaitForWindowExposed(editor));
        press(editor, "NewTree");
        compose(editor);
        store(editor);

        press(panel, "AdvancedInquiry");
        QCOMPARE(shown(frame.patients(), "PatientID"), patients);
        auto *tree = panel->findChild<QTreeView *>();
        QCOMPARE(tree->model()->rowCount(), patients.size());
        for (int row = 0; row < tree->model()->rowCount(); ++row) {
            const QModelIndex patient = tree->model()->index(row, 0);
            clickRow(tree, patient);
            const QString id = tree->model()->index(row, 2).data().toString();
            QVERIFY(patients.contains(id));
            QCOMPARE(shown(frame.studies(), "StudyInstanceUID"), studiesOf[id]);
            QTest::keyClick(tree, Qt::Key_Right); // opens the patient
            QTest::keyClick(tree, Qt::Key_Right); // and goes to its study
            QTest::keyClick(tree, Qt::Key_Return);
            const QString study = *studiesOf[id].cbegin();
            const QSet<QString> series = shown(frame.window->forms()[2], "SeriesInstanceUID");
            QCOMPARE(series, seriesOf[study]);
            QTest::keyClick(tree, Qt::Key_Right);
            QSet<QString> seen;
            for (int child = 0; child < series.size(); ++child) {
                clickRow(tree, tree->model()->index(child, 0, tree->model()->index(0, 0, patient)));
                const QSet<QString> images = shown(frame.window->forms()[3], "SOPInstanceUID");
                const auto expected = std::find(imagesOf.cbegin(), imagesOf.cend(), images);
                QVERIFY(expected != imagesOf.cend() && series.contains(expected.key()));
                seen.insert(expected.key());
            }
            QCOMPARE(seen, series);
        }

        QTRY_VERIFY(!frame.window->statusPanel()->countsText().contains(QStringLiteral("Patients 0")));
        savePicture(*frame.window, *editor);
        editor->close();
    }

    void theTreeFollowsTheIndex()
    {
        const Frame frame(2);
        frame.action("actionPatientTree")->trigger();
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        auto *tree = panel->findChild<QTreeView *>();
        QTRY_COMPARE(tree->model()->rowCount(), 2);
        tree->expand(tree->model()->index(1, 0));
        const QModelIndex study = tree->model()->index(0, 0, tree->model()->index(1, 0));
        tree->setCurrentIndex(study);
        QSignalSpy told(panel, &PatientTreeForm::selectTable);
        frame.addFromOutside(QStringLiteral("Early^Bird"));
        QTRY_COMPARE(tree->model()->rowCount(), 3);
        // What was open and chosen still is, one row further down; nothing was told to the tables.
        QVERIFY(tree->isExpanded(tree->model()->index(2, 0)));
        QVERIFY(!tree->isExpanded(tree->model()->index(1, 0)));
        QCOMPARE(tree->currentIndex(), tree->model()->index(0, 0, tree->model()->index(2, 0)));
        QVERIFY(tree->selectionModel()->isSelected(tree->currentIndex()));
        QCOMPARE(told.count(), 0);

        // Inquiries of others come and go with F5; the chosen one stays in the list.
        frame.index.query(
            QStringLiteral("UPDATE andvancequiry SET InquiryName = '9 PT' WHERE InquiryName = '5 MR'"));
        frame.action("actionRefresh")->trigger();
        const auto *names = panel->findChild<QComboBox *>();
        QVERIFY(names->findText(QStringLiteral("9 PT")) >= 0 && names->findText(QStringLiteral("5 MR")) < 0);
        QCOMPARE(names->currentText(), QStringLiteral("1 Today"));

        // What comes in while the tree is closed is there when it is opened.
        frame.action("actionPatientTree")->trigger();
        frame.addFromOutside(QStringLiteral("Late^Owl"));
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 4);
        frame.action("actionPatientTree")->trigger();
        QCOMPARE(tree->model()->rowCount(), 4);
    }

    void whyThereIsNothingStandsInTheStatusBar()
    {
        const Frame frame(1);
        frame.index.query(
            QStringLiteral("UPDATE andvancequiry SET FieldName = 'ShoeSize' WHERE InquiryName = '4 CT'"));
        frame.action("actionPatientTree")->trigger();
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        auto *names = panel->findChild<QComboBox *>();
        const QString idle = frame.window->statusPanel()->activityText();
        for (const char *name : {"4 CT", "1 Today"}) {
            names->setCurrentText(QLatin1String(name));
            press(panel, "AdvancedInquiry");
            const bool isOdd = names->currentText() == QLatin1String("4 CT");
            QCOMPARE(frame.window->statusPanel()->activityText().contains(QStringLiteral("ShoeSize")), isOdd);
            QCOMPARE(names->toolTip().contains(QStringLiteral("ShoeSize")), isOdd);
        }
        QCOMPARE(frame.window->statusPanel()->activityText(), idle);
    }

    void aClickInTheTreeAsksBeforeItDropsEdits()
    {
        const Frame frame(2);
        frame.action("actionPatientTree")->trigger();
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        auto *tree = panel->findChild<QTreeView *>();
        QTRY_VERIFY(tree->isVisible());
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientName"));
        QSqlTableModel *studies = frame.studies()->tableModel();
        QVERIFY(studies->setData(
            studies->index(0, studies->fieldIndex(QStringLiteral("StudyID"))), QStringLiteral("new")));

        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        clickRow(tree, tree->model()->index(1, 0));
        QCOMPARE(questions.count(), 1);
        press(panel, "AdvancedInquirySeries");
        QCOMPARE(questions.count(), 2);
        panel->getDeleteIdx(QStringLiteral("5 MR")); // as the editor does
        QCOMPARE(questions.count(), 3);
        QVERIFY(frame.studies()->hasUnsavedEdits());
        QVERIFY(frame.patients()->isVisible());

        questions.answer = kivMessageBoxForm::AnswerOk;
        clickRow(tree, tree->model()->index(1, 0));
        QCOMPARE(questions.count(), 4);
        QVERIFY(!frame.studies()->hasUnsavedEdits());
        QVERIFY(!frame.patients()->isVisible());
        QCOMPARE(shown(frame.studies(), "StudyInstanceUID"), QSet<QString>{QStringLiteral("1.2.2")});
    }

    void quittingAsksForUnsavedConditions()
    {
        const Frame frame(1);
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        panel->on_AdvancedInquiryNew_clicked();
        const QPointer<AdvancedInquiryForm> editor = editorOnScreen();
        QVERIFY(editor);
        addCondition(editor, "levelPD", 0, "fieldsPD", QStringLiteral("PatientName"));
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        QVERIFY(!frame.window->close());
        QVERIFY(frame.window->isVisible() && editor->isVisible());
        questions.answer = kivMessageBoxForm::AnswerOk;
        QVERIFY(frame.window->close());
        QTRY_VERIFY(!editor);
    }

    void leavingTheTreeBringsTheTablesBack()
    {
        const Frame frame(2);
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientName"));
        QAction *toggle = frame.action("actionPatientTree");
        toggle->trigger();
        PatientTreeForm *panel = frame.window->library()->getPatientTreeForm();
        auto *tree = panel->findChild<QTreeView *>();
        clickRow(tree, tree->model()->index(1, 0));
        QVERIFY(!frame.patients()->isVisible());
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
            tree->visualRect(tree->model()->index(1, 1)).center());
        QVERIFY(tree->isExpanded(tree->model()->index(1, 0)));
        toggle->trigger();
        for (const RecordForm *form : frame.window->forms()) {
            QVERIFY(form->isVisible());
        }
        // The tables belong together again: these are the studies of the patient that is selected.
        QCOMPARE(shown(frame.studies(), "StudyInstanceUID"), QSet<QString>{QStringLiteral("1.2.1")});

        // Floating is not leaving; a floating dock is closed by its own button.
        toggle->trigger();
        press(panel, "AdvancedInquiryStudy");
        auto *dock = frame.window->library()->findChild<QDockWidget *>(
            QLatin1String(PatientManagerMainWindow::treeDockName));
        dock->setFloating(true);
        QApplication::processEvents();
        QVERIFY(toggle->isChecked() && !frame.patients()->isVisible());
        dock->close();
        QTRY_VERIFY(!toggle->isChecked());
    }

private:
    /// Selects a field in one of the two lists and adds it.
    void addCondition(QWidget *editor, const char *levels, int level, const char *list, const QString &field)
    {
        auto *levelBox = editor->findChild<QComboBox *>(QLatin1String(levels));
        levelBox->setFocus();
        QTest::keyClick(levelBox, level == 0 ? Qt::Key_Up : Qt::Key_Down);
        auto *view = editor->findChild<QListView *>(QLatin1String(list));
        const QModelIndexList found = view->model()->match(
            view->model()->index(0, 0), Qt::DisplayRole, field, 1, Qt::MatchExactly | Qt::MatchCaseSensitive);
        QVERIFY2(!found.isEmpty(), qPrintable(field));
        view->scrollTo(found.constFirst());
        QTest::mouseClick(
            view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(found.constFirst()).center());
        press(editor, "InquiryButton");
    }

    /// Opens the list of a cell, goes down in it and leaves the cell.
    void choose(QTreeView *view, const QModelIndex &cell, int stepsDown)
    {
        view->setCurrentIndex(cell);
        view->setFocus();
        QTest::keyClick(view, Qt::Key_F2);
        auto *box = view->viewport()->findChild<QComboBox *>();
        QVERIFY(box);
        for (int step = 0; step < stepsDown; ++step) {
            QTest::keyClick(box, Qt::Key_Down);
        }
        QTest::keyClick(box, Qt::Key_Tab);
        QTRY_VERIFY(!view->viewport()->findChild<QComboBox *>());
    }

    void type(QTreeView *view, const QModelIndex &cell, const QString &text)
    {
        view->scrollTo(cell);
        const QPoint place = view->visualRect(cell).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        auto *line = view->viewport()->findChild<QLineEdit *>();
        QVERIFY(line);
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_VERIFY(!view->viewport()->findChild<QLineEdit *>());
        QCOMPARE(cell.data().toString(), text);
    }

    /// Patients with "multi" in their name, studies by a part of their UID, PT or MR, images 3 to 279.
    void compose(AdvancedInquiryForm *editor)
    {
        addCondition(editor, "levelPD", 0, "fieldsPD", QStringLiteral("PatientName"));
        addCondition(editor, "levelPD", 1, "fieldsPD", QStringLiteral("StudyInstanceUID"));
        addCondition(editor, "levelSI", 0, "fieldsSI", QStringLiteral("Modality"));
        addCondition(editor, "levelSI", 0, "fieldsSI", QStringLiteral("Modality"));
        addCondition(editor, "levelSI", 1, "fieldsSI", QStringLiteral("InstanceNumber"));
        addCondition(editor, "levelSI", 1, "fieldsSI", QStringLiteral("InstanceNumber"));

        auto *view = editor->findChild<QTreeView *>(QStringLiteral("conditionView"));
        enum { Symbol = 2, Value, Logic, QueryType };
        const auto cell = [view](int group, int row, int column) {
            return view->model()->index(row, column, view->model()->index(group, 0));
        };
        type(view, cell(0, 0, Value), QStringLiteral("MULTI"));
        choose(view, cell(0, 0, QueryType), 1);
        type(view, cell(1, 0, Value), QStringLiteral("60402095"));
        choose(view, cell(1, 0, QueryType), 1);
        type(view, cell(2, 0, Value), QStringLiteral("PT"));
        choose(view, cell(2, 0, Logic), 1);
        type(view, cell(2, 1, Value), QStringLiteral("MR"));
        type(view, cell(3, 0, Value), QStringLiteral("2"));
        choose(view, cell(3, 0, Symbol), 1);
        type(view, cell(3, 1, Value), QStringLiteral("280"));
        choose(view, cell(3, 1, Symbol), 2);
        QCOMPARE(cell(3, 1, Symbol).data().toString(), QStringLiteral("<"));
    }

    void store(AdvancedInquiryForm *editor)
    {
        press(editor, "SaveAs");
        InquirySaveForm *question = nullptr;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            question = question ? question : qobject_cast<InquirySaveForm *>(window);
        }
        QVERIFY(question && question->isVisible());
        const QPointer<InquirySaveForm> guard(question);
        auto *name = question->findChild<QLineEdit *>();
        QTest::keyClicks(name, QStringLiteral("4 CT"));
        QTest::keyClick(name, Qt::Key_Return);
        QVERIFY(guard); // that name is taken
        name->clear();
        QTest::keyClicks(name, inquiryName);
        QTest::keyClick(name, Qt::Key_Return);
        QTRY_VERIFY(!guard);
    }
};

PM_TEST_MAIN(TreeInquiryTest)
#include "tst_treeinquiry.moc"
