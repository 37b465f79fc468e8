#include "inquiryeditor.h"

#include <QApplication>
#include <QSqlQuery>
#include <QtTest>

Editor::Editor()
{
    index.query(QStringLiteral("DELETE FROM andvancequiry"));
    kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
        ++(request.kind == kivMessageBoxForm::Kind::Warning ? warnings : questions);
        return answer;
    });
}

Editor::~Editor()
{
    kivMessageBoxForm::setAnswerer({});
    delete form;
}

void Editor::store(const QString &name, const InquiryConditions &conditions) const
{
    for (const InquiryCondition &row : conditions) {
        index.query(QStringLiteral("INSERT INTO andvancequiry VALUES (NULL, 'super', ?, ?, ?, ?, ?, ?, ?)"),
            {name, row.group, row.field, row.symbol, row.value, row.logic, row.queryType});
    }
}

void Editor::open(const QString &name)
{
    form = new AdvancedInquiryForm(nullptr, name);
    form->show();
    form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(form));
}

void Editor::click(const char *button) const
{
    QTest::mouseClick(part<QPushButton>(button), Qt::LeftButton);
}

void Editor::clickRow(const char *list, int row, bool twice) const
{
    auto *view = part<QListView>(list);
    const QPoint place = view->visualRect(view->model()->index(row, 0)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    if (twice) {
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    }
}

InquirySaveForm *Editor::saveForm()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        auto *found = qobject_cast<InquirySaveForm *>(window);
        if (found && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

void Editor::pick(int entry) const
{
    box()->setFocus();
    QTest::keyClick(box(), Qt::Key_Home);
    for (int i = 0; i < entry; ++i) {
        QTest::keyClick(box(), Qt::Key_Down);
    }
}

QModelIndex Editor::cell(int group, int row, int column) const
{
    return tree()->model()->index(row, column, tree()->model()->index(group, 0));
}

QString Editor::text(int group, int row) const
{
    QStringList texts;
    for (int column = 1; column < 6; ++column) {
        texts.append(cell(group, row, column).data().toString());
    }
    return texts.join(QLatin1Char('|'));
}

int Editor::conditions(int group) const
{
    return tree()->model()->rowCount(tree()->model()->index(group, 0));
}

QStringList Editor::stored(const QString &name) const
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

InquiryCondition InquiryEditorNames::condition(
    const QString &group, const QString &field, const QString &value)
{
    return {group, field, QStringLiteral("="), value, QStringLiteral("and"), QStringLiteral("Precise")};
}
