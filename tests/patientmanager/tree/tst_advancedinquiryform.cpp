#include "advancedinquiryform.h"
#include "configlocation.h"
#include "indexconnection.h"
#include "inquirycondition.h"
#include "inquirysaveform.h"
#include "kivmessageboxform.h"
#include "namedcontrols.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardItemModel>
#include <QTextDocument>
#include <QTreeView>
#include <QtTest>

namespace {

/// An index whose inquiries are those of the test alone, and the editor on them. Questions and warnings are
/// counted and answered.
class Editor
{
public:
    Editor()
    {
        index.query(QStringLiteral("DELETE FROM andvancequiry"));
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
            ++(request.kind == kivMessageBoxForm::Kind::Warning ? warnings : questions);
            return answer;
        });
    }
    ~Editor()
    {
        kivMessageBoxForm::setAnswerer({});
        delete form;
    }

    void store(const QString &name, const InquiryConditions &conditions) const
    {
        for (const InquiryCondition &row : conditions) {
            index.query(
                QStringLiteral("INSERT INTO andvancequiry VALUES (NULL, 'super', ?, ?, ?, ?, ?, ?, ?)"),
                {name, row.group, row.field, row.symbol, row.value, row.logic, row.queryType});
        }
    }
    void open(const QString &name = QString())
    {
        form = new AdvancedInquiryForm(nullptr, name);
        form->show();
        form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(form));
    }

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }
    QTreeView *tree() const { return part<QTreeView>("conditionView"); }
    QComboBox *box() const { return part<QComboBox>("inquiryBox"); }
    void click(const char *button) const { QTest::mouseClick(part<QPushButton>(button), Qt::LeftButton); }
    void clickRow(const char *list, int row, bool twice = false) const
    {
        auto *view = part<QListView>(list);
        const QPoint place = view->visualRect(view->model()->index(row, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
        if (twice) {
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
        }
    }
    /// The window that asks for a name; null where there is none in sight.
    static InquirySaveForm *saveForm()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            auto *found = qobject_cast<InquirySaveForm *>(window);
            if (found && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    /// As the user picks in the combo box.
    void pick(int entry) const
    {
        box()->setFocus();
        QTest::keyClick(box(), Qt::Key_Home);
        for (int i = 0; i < entry; ++i) {
            QTest::keyClick(box(), Qt::Key_Down);
        }
    }

    QModelIndex cell(int group, int row, int column) const
    {
        return tree()->model()->index(row, column, tree()->model()->index(group, 0));
    }
    QString text(int group, int row) const
    {
        QStringList texts;
        for (int column = 1; column < 6; ++column) {
            texts.append(cell(group, row, column).data().toString());
        }
        return texts.join(QLatin1Char('|'));
    }
    int conditions(int group) const { return tree()->model()->rowCount(tree()->model()->index(group, 0)); }
    /// The inquiry as it is stored, in row order.
    QStringList stored(const QString &name) const
    {
        QStringList rows;
        QSqlQuery query;
        query.prepare(
            QStringLiteral("SELECT UserName, GroupName, FieldName, Symbol, FieldValue, Logic, QueryType "
                           "FROM andvancequiry WHERE InquiryName = ? ORDER BY pk"));
        query.addBindValue(name);
        query.exec();
        while (query.next()) {
            QStringList values;
            for (int i = 0; i < 7; ++i) {
                values.append(query.value(i).toString());
            }
            rows.append(values.join(QLatin1Char('|')));
        }
        return rows;
    }

    const TemporaryIndex index;
    QPointer<AdvancedInquiryForm> form;
    int questions = 0;
    int warnings = 0;
    int answer = kivMessageBoxForm::AnswerCancel;
};

InquiryCondition condition(const QString &group, const QString &field, const QString &value)
{
    return {group, field, QStringLiteral("="), value, QStringLiteral("and"), QStringLiteral("Precise")};
}

const QString patient = QStringLiteral("patient");
const QString image = QStringLiteral("imageformat");
const QString sex = QStringLiteral("PatientSex");

} // namespace

class AdvancedInquiryFormTest : public QObject
{
    Q_OBJECT

private slots:
    void composesAnInquiryByHand();
    void listsLeaveOutTheLastColumn();
    void editorsOpenOnTheirFirstWord();
    void showsWhatIsStored();
    void longAndStrangeValuesSurvive();
    void removesConditionsNeverGroups();
    void saveAsRefusesATakenName();
    void aLockedIndexLeavesAllAsItWas();
    void aNameGoesToNoOtherConditions();
    void newInquiryCannotOverwrite();
    void deletionShowsTheNextAndEndsEmpty();
    void quotedNamesTouchNoOther_data();
    void quotedNamesTouchNoOther();
    void picksAndClosingAskForUnsavedChanges();
    void escapeClosesTheInnermost_data();
    void escapeClosesTheInnermost();
    void slotsNeverAsk();
    void manyAndLongNamesKeepTheListSmall();
    void fieldsAreFoundByLettersAndExplained();
    void fiveHundredConditionsAreQuick();
    void nothingIsLeftBehind();
};

void AdvancedInquiryFormTest::composesAnInquiryByHand()
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

void AdvancedInquiryFormTest::listsLeaveOutTheLastColumn()
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

void AdvancedInquiryFormTest::editorsOpenOnTheirFirstWord()
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

void AdvancedInquiryFormTest::showsWhatIsStored()
{
    Editor editor;
    const InquiryCondition strange{
        image, sex, QStringLiteral("~"), QStringLiteral("%1"), QStringLiteral("xor"), QStringLiteral("Odd")};
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

void AdvancedInquiryFormTest::longAndStrangeValuesSurvive()
{
    Editor editor;
    const QStringList values{QStringLiteral("O'Brien; DROP TABLE patient;--"),
        QString(10000, QLatin1Char('x')), QString::fromUtf8("\u202Eשלום u\u0308 %2"), QString()};
    InquiryConditions conditions;
    for (const QString &value : values) {
        conditions.append(condition(patient, sex, value));
    }
    editor.store(QStringLiteral("a"), conditions);
    const QStringList before = editor.stored(QStringLiteral("a"));
    editor.open();
    editor.click("Save");
    QCOMPARE(editor.stored(QStringLiteral("a")), before);
    QVERIFY(editor.tree()->columnWidth(3) < editor.tree()->width());
}

void AdvancedInquiryFormTest::removesConditionsNeverGroups()
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

void AdvancedInquiryFormTest::saveAsRefusesATakenName()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    editor.open();
    QSignalSpy answers(editor.form.data(), &AdvancedInquiryForm::sameInquiryName);
    QSignalSpy added(editor.form.data(), &AdvancedInquiryForm::setComboBox);
    editor.form->getText(QStringLiteral("a"));
    QCOMPARE(answers.value(0).value(0).toString(), QStringLiteral("the name is exist"));
    QVERIFY(added.isEmpty());
    QCOMPARE(editor.box()->count(), 1);
    QCOMPARE(editor.stored(QStringLiteral("a")).size(), 1);
    for (const QString &name : {QStringLiteral("A"), QStringLiteral("b'")}) {
        editor.form->getText(name);
        QCOMPARE(answers.takeLast().value(0).toString(), QString());
        QCOMPARE(editor.stored(name), editor.stored(QStringLiteral("a")));
    }
    editor.form->getText(QStringLiteral("b'")); // whose look-up fails
    QCOMPARE(answers.takeLast().value(0).toString(), QStringLiteral("the name is exist"));
    QCOMPARE(editor.stored(QStringLiteral("b'")).size(), 1);
    // Names that differ only in case are two.
    editor.form->getComboBoxIdx(QStringLiteral("A"));
    QCOMPARE(editor.box()->currentText(), QStringLiteral("A"));
    editor.form->on_Delete_clicked();
    QVERIFY(editor.box()->findText(QStringLiteral("a"), Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0);
    QCOMPARE(editor.stored(QStringLiteral("a")).size(), 1);
}

/// Another program is writing: nothing waits for long, nothing is half done, and whoever pressed is told.
void AdvancedInquiryFormTest::aLockedIndexLeavesAllAsItWas()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    editor.open();
    editor.clickRow("fieldsPD", 1, true);
    const QStringList before = editor.stored(QStringLiteral("a"));
    const IndexConnection other(editor.index.path());
    WriteTransaction writing(other.database());
    QElapsedTimer clock;
    clock.start();
    editor.click("Save");
    editor.answer = kivMessageBoxForm::AnswerOk;
    editor.click("Delete");
    editor.answer = kivMessageBoxForm::AnswerCancel;
    QCOMPARE(editor.warnings, 2);
    editor.click("SaveAs");
    QTest::keyClicks(Editor::saveForm()->findChild<QLineEdit *>(), QStringLiteral("b"));
    QTest::keyClick(Editor::saveForm()->findChild<QLineEdit *>(), Qt::Key_Return);
    QCOMPARE(editor.warnings, 3);
    editor.form->on_Delete_clicked();
    QCOMPARE(editor.warnings, 3);
    QVERIFY2(clock.elapsed() < 9000, qPrintable(QString::number(clock.elapsed())));
    writing.rollback();
    QCOMPARE(editor.stored(QStringLiteral("a")), before);
    QCOMPARE(editor.box()->count(), 1);
    editor.form->close();
    QCOMPARE(editor.questions, 2); // of the deletion, and that the conditions are unsaved
    // Within a transaction of the host a change is a part of it.
    QVERIFY(editor.index.database().transaction());
    editor.click("Save");
    QCOMPARE(editor.stored(QStringLiteral("a")).size(), 2);
    QVERIFY(editor.index.database().rollback());
    QCOMPARE(editor.stored(QStringLiteral("a")), before);
}

void AdvancedInquiryFormTest::aNameGoesToNoOtherConditions()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    editor.store(QStringLiteral("b"), {condition(image, sex, QStringLiteral("M"))});
    editor.open();
    const QVector<std::function<void()>> ways{
        [&editor] { editor.pick(1); }, [&editor] { editor.click("NewTree"); }};
    for (const auto &leave : ways) {
        editor.click("SaveAs");
        QVERIFY(Editor::saveForm());
        leave();
        QVERIFY(!Editor::saveForm());
    }
    // One that waits for its deletion is not shown again.
    editor.clickRow("fieldsPD", 1, true);
    editor.click("SaveAs");
    Editor::saveForm()->close();
    editor.click("SaveAs");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(Editor::saveForm());
}

void AdvancedInquiryFormTest::newInquiryCannotOverwrite()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    editor.open();
    const QStandardItemModel *before = qobject_cast<QStandardItemModel *>(editor.tree()->model());
    editor.click("NewTree");
    QVERIFY(before != editor.tree()->model());
    QCOMPARE(editor.conditions(0), 0);
    QVERIFY(!editor.part<QPushButton>("Save")->isEnabled());
    QVERIFY(!editor.part<QPushButton>("Delete")->isEnabled());
    editor.pick(0);
    QCOMPARE(editor.conditions(0), 1);
    QVERIFY(editor.part<QPushButton>("Save")->isEnabled());
    editor.form->on_NewTree_clicked();
    editor.form->on_Save_clicked();
    QVERIFY(editor.stored(QStringLiteral("a")).isEmpty());
}

void AdvancedInquiryFormTest::deletionShowsTheNextAndEndsEmpty()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    editor.store(QStringLiteral("b"), {condition(image, sex, QStringLiteral("M"))});
    editor.open();
    QSignalSpy deleted(editor.form.data(), &AdvancedInquiryForm::setDeleteIdx);
    editor.click("Delete");
    QCOMPARE(editor.questions, 1);
    QVERIFY(deleted.isEmpty() && editor.stored(QStringLiteral("a")).size() == 1);
    editor.answer = kivMessageBoxForm::AnswerOk;
    editor.part<QPushButton>("Delete")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // once too often
    QCOMPARE(deleted.value(0).value(0).toString(), QStringLiteral("a"));
    QVERIFY(editor.stored(QStringLiteral("a")).isEmpty());
    QCOMPARE(editor.box()->currentText(), QStringLiteral("b"));
    QCOMPARE(editor.conditions(3), 1);
    editor.click("Delete");
    QCOMPARE(editor.tree()->model()->rowCount(), 4);
    QCOMPARE(editor.conditions(3), 0);
    QVERIFY(!editor.box()->isEnabled() && !editor.part<QPushButton>("Save")->isEnabled());
    QCOMPARE(editor.index.query(QStringLiteral("SELECT count(*) FROM andvancequiry")).toInt(), 0);
}

void AdvancedInquiryFormTest::quotedNamesTouchNoOther_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one quote") << "O'Brien";
    QTest::newRow("a condition of its own") << "x' or '1'='1";
    QTest::newRow("the name of another, quoted") << "O''Brien";
    QTest::newRow("a second statement") << "x'; DELETE FROM andvancequiry;--";
}

/// Such a name can be saved under, but neither be read, nor replaced, nor deleted.
void AdvancedInquiryFormTest::quotedNamesTouchNoOther()
{
    QFETCH(QString, name);
    Editor editor;
    const QString other =
        QStringLiteral("O'Brien") == name ? QStringLiteral("other") : QStringLiteral("O'Brien");
    editor.store(other, {condition(patient, sex, QStringLiteral("F"))});
    editor.store(name, {condition(patient, sex, QStringLiteral("M"))});
    editor.open(name);
    editor.form->on_NewTree_clicked();
    editor.clickRow("fieldsPD", 1, true);
    editor.form->on_Save_clicked();
    QCOMPARE(editor.stored(name).size(), 2);
    editor.form->on_Delete_clicked();
    QCOMPARE(editor.stored(name).size(), 2);
    QCOMPARE(editor.stored(other).size(), 1);
    QCOMPARE(editor.box()->findText(name), -1);
}

void AdvancedInquiryFormTest::picksAndClosingAskForUnsavedChanges()
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

void AdvancedInquiryFormTest::escapeClosesTheInnermost_data()
{
    QTest::addColumn<QString>("control");
    for (const char *name :
        {"inquiryBox", "levelPD", "fieldsSI", "conditionView", "Save", "symbol", "value"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

/// An open list first, then the cell that is being edited, then the window; keys go to where the system sends
/// them.
void AdvancedInquiryFormTest::escapeClosesTheInnermost()
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

void AdvancedInquiryFormTest::slotsNeverAsk()
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

void AdvancedInquiryFormTest::manyAndLongNamesKeepTheListSmall()
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

void AdvancedInquiryFormTest::fieldsAreFoundByLettersAndExplained()
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

void AdvancedInquiryFormTest::fiveHundredConditionsAreQuick()
{
    Editor editor;
    InquiryConditions conditions;
    for (int i = 0; i < 500; ++i) {
        conditions.append(condition(patient, sex, QString::number(i)));
    }
    editor.store(QStringLiteral("a"), conditions);
    editor.open();
    QElapsedTimer clock;
    clock.start();
    editor.form->onTreeView(0);
    editor.form->on_Save_clicked();
    editor.tree()->selectAll();
    editor.form->on_InquiryCancel_clicked();
    QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(editor.conditions(0), 0);
    QCOMPARE(editor.stored(QStringLiteral("a")).size(), 500);
}

void AdvancedInquiryFormTest::nothingIsLeftBehind()
{
    Editor editor;
    editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
    for (int i = 0; i < 6; ++i) {
        editor.open();
        editor.form->on_SaveAs_clicked();
        editor.form->on_SaveAs_clicked();
        QTest::keyClick(editor.form, Qt::Key_Escape);
        QTRY_VERIFY(!editor.form);
    }
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    // An open statement would keep the log from being emptied.
    QCOMPARE(editor.index.query(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")).toInt(), 0);
}

PM_TEST_MAIN(AdvancedInquiryFormTest)
#include "tst_advancedinquiryform.moc"
