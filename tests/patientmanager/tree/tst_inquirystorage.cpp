#include "indexconnection.h"
#include "inquiryeditor.h"
#include "testmain.h"

#include <QApplication>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QtTest>

using namespace InquiryEditorNames;

/// What the editor of inquiries keeps, replaces and deletes in the index.
class InquiryStorageTest : public QObject
{
    Q_OBJECT

private slots:
    void longAndStrangeValuesSurvive()
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

    void saveAsRefusesATakenName()
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

    /// Another program is writing: nothing is half done, and whoever pressed is told.
    void aLockedIndexLeavesAllAsItWas()
    {
        Editor editor;
        editor.store(QStringLiteral("a"), {condition(patient, sex, QStringLiteral("F"))});
        editor.open();
        editor.clickRow("fieldsPD", 1, true);
        const QStringList before = editor.stored(QStringLiteral("a"));
        const IndexConnection other(editor.index.path());
        WriteTransaction writing(other.database());
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

    void aNameGoesToNoOtherConditions()
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

    void newInquiryCannotOverwrite()
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

    void deletionShowsTheNextAndEndsEmpty()
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
        QCOMPARE(editor.index.count("andvancequiry"), 0);
    }

    void quotedNamesTouchNoOther_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("one quote") << "O'Brien";
        QTest::newRow("a condition of its own") << "x' or '1'='1";
        QTest::newRow("the name of another, quoted") << "O''Brien";
        QTest::newRow("a second statement") << "x'; DELETE FROM andvancequiry;--";
    }

    /// Such a name can be saved under, but neither be read, nor replaced, nor deleted.
    void quotedNamesTouchNoOther()
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

    void nothingIsLeftBehind()
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
};

PM_TEST_MAIN(InquiryStorageTest)
#include "tst_inquirystorage.moc"
