#include "configlocation.h"
#include "inquiryeditor.h"
#include "namedcontrols.h"
#include "testmain.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QSqlRecord>
#include <QTextDocument>
#include <QtTest>

using namespace InquiryEditorNames;

class AdvancedInquiryFormTest : public QObject
{
    Q_OBJECT

private slots:
    void composesAnInquiryByHand()
    {
        Editor editor;
        editor.open();
        QCOMPARE(unnamedControl(*editor.form), QString());
        QVERIFY(!editor.box()->isEnabled());
        QVERIFY(!editor.part<QPushButton>("Save")->isEnabled());
        QVERIFY(!editor.part<QPushButton>("SaveAs")->isEnabled());
        QSignalSpy added(editor.form.data(), &AdvancedInquiryForm::setComboBox);
        QSignalSpy current(editor.form.data(), &AdvancedInquiryForm::setComboBoxIdx);
        editor.clickRow("fieldsPD", 2);
        editor.clickRow("fieldsPD", 1);
        QTest::keyClick(editor.part<QComboBox>("levelSI"), Qt::Key_Down);
        editor.clickRow("fieldsSI", 3);
        editor.click("InquiryButton");
        editor.clickRow("fieldsSI", 4, true);
        QCOMPARE(editor.text(0, 0), QStringLiteral("PatientName|=||and|Precise"));
        QCOMPARE(editor.text(0, 1), QStringLiteral("PatientID|=||and|Precise"));
        QCOMPARE(editor.conditions(3), 2);
        QVERIFY(editor.tree()->columnWidth(3) >= 120);
        editor.tree()->setFocus();
        editor.tree()->setCurrentIndex(editor.cell(3, 0, 3));
        QTest::keyClick(editor.tree(), Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12"));
        editor.click("SaveAs");
        const QPointer<QWidget> asking = Editor::saveForm();
        QVERIFY(asking);
        QTest::keyClicks(asking->findChild<QLineEdit *>(), QStringLiteral("mine"));
        QTest::keyClick(asking->findChild<QLineEdit *>(), Qt::Key_Return);
        QTRY_VERIFY(!asking);
        QCOMPARE(added.value(0).value(0).toString(), QStringLiteral("mine"));
        QCOMPARE(current.value(0).value(0).toString(), QStringLiteral("mine"));
        QCOMPARE(editor.box()->currentText(), QStringLiteral("mine"));
        QVERIFY(editor.box()->isEnabled() && editor.part<QPushButton>("Save")->isEnabled());
        QCOMPARE(editor.stored(QStringLiteral("mine")),
            (QStringList{QStringLiteral("super|patient|PatientName|=||and|Precise"),
                QStringLiteral("super|patient|PatientID|=||and|Precise"),
                QStringLiteral("super|imageformat|InstanceNumber|=|12|and|Precise"),
                QStringLiteral("super|imageformat|SOPClassUID|=||and|Precise")}));
    }

    void listsLeaveOutTheLastColumn()
    {
        Editor editor;
        editor.open();
        const auto check = [&editor](const char *list, const QString &table) {
            const QSqlRecord fields = editor.index.database().record(table);
            const QAbstractItemModel *shown = editor.part<QListView>(list)->model();
            QCOMPARE(shown->rowCount(), fields.count() - 1);
            for (int row = 0; row < shown->rowCount(); ++row) {
                QCOMPARE(shown->index(row, 0).data().toString(), fields.fieldName(row));
            }
        };
        check("fieldsPD", QStringLiteral("patientuser"));
        check("fieldsSI", QStringLiteral("generalseriesuser"));
        editor.form->onListSelectPD(1);
        editor.form->onListSelectSI(1);
        editor.form->onListSelectSI(2);
        check("fieldsPD", QStringLiteral("generalstudyuser"));
        check("fieldsSI", QStringLiteral("imageformatuser"));
    }

    void editorsOpenOnTheirFirstWord()
    {
        Editor editor;
        editor.store(QStringLiteral("a"),
            {{patient, sex, QStringLiteral(">"), QStringLiteral("F"), QStringLiteral("or"),
                 QStringLiteral("Fuzzy")},
                condition(patient, sex, QString())});
        editor.open();
        QTreeView *tree = editor.tree();
        const auto edit = [&](int column) {
            tree->setFocus();
            tree->setCurrentIndex(editor.cell(0, 0, column));
            QTest::keyClick(tree, Qt::Key_F2);
            return qobject_cast<QComboBox *>(QApplication::focusWidget());
        };
        QComboBox *symbol = edit(2);
        QVERIFY(symbol);
        QCOMPARE(symbol->count(), 3);
        QCOMPARE(symbol->currentIndex(), 0);
        QTest::keyClick(symbol, Qt::Key_Escape);
        QCOMPARE(editor.text(0, 0), QStringLiteral(">|F|or|Fuzzy").prepend(sex + QLatin1Char('|')));
        QTest::keyClick(edit(2), Qt::Key_End);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(tree->hasFocus());
        for (const int column : {4, 5}) {
            QTest::keyClick(edit(column), Qt::Key_Return);
            QTRY_VERIFY(tree->hasFocus());
        }
        QCOMPARE(editor.text(0, 0), QStringLiteral("PatientSex|<|F|and|Precise"));
        // A field cannot be edited: its value is.
        QVERIFY(!edit(1));
        QCOMPARE(tree->currentIndex(), editor.cell(0, 0, 3));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("M"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(tree->currentIndex(), editor.cell(0, 0, 4));
        QVERIFY(tree->hasFocus());
        QTest::keyClick(tree, Qt::Key_Left);
        QTest::keyClick(tree, Qt::Key_Left);
        QTest::keyClick(tree, Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(editor.text(0, 0), QStringLiteral("PatientSex|=|M|and|Precise"));
        QCOMPARE(tree->currentIndex(), editor.cell(0, 0, 2));
        for (int step = 0; step < 3; ++step) {
            QTest::keyClick(tree, Qt::Key_Left);
        }
        QCOMPARE(tree->currentIndex(), tree->model()->index(0, 0));
        QTest::keyClick(tree, Qt::Key_Left);
        QVERIFY(!tree->isExpanded(tree->currentIndex()));
        tree->setCurrentIndex(tree->model()->index(0, 3));
        QTest::keyClick(tree, Qt::Key_F2);
        QVERIFY(tree->hasFocus());
    }

    void showsWhatIsStored()
    {
        Editor editor;
        const InquiryCondition strange{image, sex, QStringLiteral("~"), QStringLiteral("%1"),
            QStringLiteral("xor"), QStringLiteral("Odd")};
        editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
        editor.store(QStringLiteral("b %1"), {strange, condition(QStringLiteral("nowhere"), sex, QString())});
        editor.open(QStringLiteral("b %1"));
        QCOMPARE(editor.box()->currentText(), QStringLiteral("b %1"));
        QCOMPARE(editor.text(3, 0), QStringLiteral("PatientSex|~|%1|xor|Odd"));
        QCOMPARE(editor.conditions(0), 0);
        QVERIFY(editor.tree()->isExpanded(editor.tree()->model()->index(3, 0)));
        editor.form->getComboBoxIdx(QStringLiteral("A"));
        QCOMPARE(editor.text(0, 0), QStringLiteral("PatientSex|=|F|and|Precise"));
        QCOMPARE(editor.conditions(3), 0);
        editor.form->getComboBoxIdx(QStringLiteral("unknown"));
        QCOMPARE(editor.box()->currentText(), QStringLiteral("a"));
    }

    void removesConditionsNeverGroups()
    {
        Editor editor;
        InquiryConditions conditions;
        for (const char *value : {"0", "1", "2", "3"}) {
            conditions.append(condition(patient, sex, QLatin1String(value)));
            conditions.append(condition(image, sex, QLatin1String(value)));
        }
        editor.store(QStringLiteral("a"), conditions);
        editor.open();
        QItemSelectionModel *selection = editor.tree()->selectionModel();
        const auto choose = [&](const QModelIndex &index) {
            selection->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        };
        choose(editor.cell(3, 3, 0));
        choose(editor.tree()->model()->index(0, 0));
        choose(editor.cell(0, 0, 0));
        choose(editor.cell(0, 2, 0));
        choose(editor.cell(3, 0, 0));
        editor.tree()->setFocus();
        QTest::keyClick(editor.tree(), Qt::Key_Delete);
        QCOMPARE(editor.tree()->model()->rowCount(), 4);
        QCOMPARE(editor.cell(0, 0, 3).data().toString() + editor.cell(0, 1, 3).data().toString(),
            QStringLiteral("13"));
        QCOMPARE(editor.cell(3, 0, 3).data().toString(), QStringLiteral("1"));
        QCOMPARE(editor.conditions(0) + editor.conditions(3), 4);
        // Hidden columns belong to no selection.
        editor.tree()->setColumnHidden(5, true);
        editor.tree()->selectAll();
        editor.click("InquiryCancel");
        QCOMPARE(editor.conditions(0) + editor.conditions(3), 0);
        editor.form->on_Save_clicked();
        QVERIFY(editor.stored(QStringLiteral("a")).isEmpty());
    }

    void picksAndClosingAskForUnsavedChanges()
    {
        Editor editor;
        editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
        editor.store(QStringLiteral("b"), {condition(image, sex, QStringLiteral("M"))});
        editor.open();
        editor.pick(1);
        QCOMPARE(editor.questions, 0);
        editor.clickRow("fieldsPD", 1, true);
        QTest::keyClick(editor.box(), Qt::Key_Up);
        QCOMPARE(editor.questions, 1);
        QCOMPARE(editor.box()->currentText(), QStringLiteral("b"));
        QCOMPARE(editor.conditions(0), 1);
        editor.click("NewTree");
        QTest::keyClick(editor.form, Qt::Key_Escape);
        QCOMPARE(editor.questions, 3);
        QVERIFY(editor.form->isVisible());
        editor.answer = kivMessageBoxForm::AnswerOk;
        QTest::keyClick(editor.box(), Qt::Key_Up);
        QCOMPARE(editor.text(0, 0), QStringLiteral("PatientSex|=|F|and|Precise"));
        // A value that is still being typed counts.
        editor.tree()->setFocus();
        editor.tree()->setCurrentIndex(editor.cell(0, 0, 3));
        QTest::keyClick(editor.tree(), Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("other"));
        editor.form->close();
        QCOMPARE(editor.questions, 5);
        QTRY_VERIFY(!editor.form);
    }

    void escapeClosesTheInnermost_data()
    {
        QTest::addColumn<QString>("control");
        for (const char *name :
            {"inquiryBox", "levelPD", "fieldsSI", "conditionView", "Save", "symbol", "value"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    /// An open list first, then the cell that is being edited, then the window; keys go to where the system
    /// sends them.
    void escapeClosesTheInnermost()
    {
        QFETCH(QString, control);
        Editor editor;
        editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
        editor.open();
        const auto escape = [&editor] { QTest::keyPress(editor.form->windowHandle(), Qt::Key_Escape); };
        QPointer<QWidget> widget = editor.form->findChild<QWidget *>(control);
        if (!widget) {
            editor.tree()->setFocus();
            editor.tree()->setCurrentIndex(editor.cell(0, 0, control == QLatin1String("symbol") ? 2 : 3));
            QTest::keyClick(editor.tree(), Qt::Key_F2);
            widget = QApplication::focusWidget();
        }
        widget->setFocus();
        auto *box = qobject_cast<QComboBox *>(widget.data());
        if (box) {
            box->showPopup();
            QTRY_VERIFY(QApplication::activePopupWidget());
            escape();
            QTRY_VERIFY(!QApplication::activePopupWidget());
            QVERIFY(editor.form && editor.form->isVisible());
            editor.form->activateWindow();
        }
        if (widget && widget->parentWidget() == editor.tree()->viewport()) {
            escape();
            QTRY_VERIFY(editor.tree()->hasFocus());
            QVERIFY(editor.form->isVisible());
            QCOMPARE(editor.text(0, 0), QStringLiteral("PatientSex|=|F|and|Precise"));
        }
        escape();
        QTRY_VERIFY(!editor.form);
    }

    void slotsNeverAsk()
    {
        Editor editor;
        editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
        editor.store(QStringLiteral("b"), {condition(image, sex, QStringLiteral("M"))});
        editor.open();
        AdvancedInquiryForm *form = editor.form;
        const QVector<std::function<void()>> calls{[form] { form->onTreeView(1); },
            [form] { form->on_NewTree_clicked(); }, [form] { form->getComboBoxIdx(QStringLiteral("b")); },
            [form] { form->on_Delete_clicked(); }, [form] { form->on_Save_clicked(); }};
        for (const auto &call : calls) {
            editor.clickRow("fieldsPD", 1, true);
            call();
        }
        form->close();
        QCOMPARE(editor.questions, 0);
    }

    void manyAndLongNamesKeepTheListSmall()
    {
        Editor editor;
        const QString longName = QStringLiteral("0 <b>& ") + QString(300, QLatin1Char('n'));
        editor.store(longName, {condition(patient, sex, QString())});
        for (int i = 0; i < 150; ++i) {
            editor.store(QStringLiteral("name %1").arg(i), {condition(patient, sex, QString())});
        }
        editor.open();
        editor.box()->showPopup();
        const QWidget *list = QApplication::activePopupWidget();
        QVERIFY(list);
        QVERIFY2(list->width() <= editor.box()->width(), qPrintable(QString::number(list->width())));
        QVERIFY2(list->height() < 22 * editor.box()->view()->sizeHintForRow(0),
            qPrintable(QString::number(list->height())));
        editor.box()->hidePopup();
        QTextDocument tip;
        tip.setHtml(editor.box()->itemData(0, Qt::ToolTipRole).toString());
        QCOMPARE(tip.toPlainText(), longName);
    }

    void fieldsAreFoundByLettersAndExplained()
    {
        ConfigLocation::setBase(QStringLiteral(PM_SOURCE_DIR));
        Editor editor;
        editor.open();
        ConfigLocation::setBase(QString());
        editor.clickRow("fieldsPD", 1);
        auto *list = editor.part<QListView>("fieldsPD");
        QTest::keyClicks(list, QStringLiteral("patients"));
        QCOMPARE(list->currentIndex().data().toString(), QStringLiteral("PatientSex"));
        QCOMPARE(list->currentIndex().data(Qt::ToolTipRole).toString(), QStringLiteral("Sex"));
        QCOMPARE(list->selectionModel()->selectedIndexes(), QModelIndexList{list->model()->index(1, 0)});
    }
};

PM_TEST_MAIN(AdvancedInquiryFormTest)
#include "tst_advancedinquiryform.moc"
