#include "testmain.h"
#include "treeitem.h"
#include "treemodel.h"

#include <QAbstractItemModelTester>
#include <QtTest>

namespace {

using Reporting = QAbstractItemModelTester::FailureReportingMode;

const QStringList headers{QStringLiteral("Name"), QStringLiteral("Note")};

/// The tree as a text: one row a name, children in brackets.
QString shape(const QAbstractItemModel &model, const QModelIndex &parent = QModelIndex())
{
    QString text;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString below = shape(model, index);
        text += index.data().toString() + (below.isEmpty() ? QString() : QStringLiteral("(%1)").arg(below))
            + QLatin1Char(' ');
    }
    return text.trimmed();
}

} // namespace

class TreeModelTest : public QObject
{
    Q_OBJECT

private slots:
    void indentationMakesChildren_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tree");
        const auto row = [](const char *name, const char *text, const char *tree) {
            QTest::newRow(name) << text << tree;
        };
        row("nothing", "", "");
        row("empty lines", "a\n\n   \nb", "a b");
        row("levels", "a\n b\n  c\n d\ne", "a(b(c) d) e");
        row("first line indented", "  a\n  b", "a(b)");
        row("back to between two levels", "a\n    b\n  c\nd", "a(b) c d");
        row("tab is no indentation", "a\n\tb", "a b");
    }

    void indentationMakesChildren()
    {
        QFETCH(QString, text);
        const TreeModel model(headers, text);
        const QAbstractItemModelTester tester(const_cast<TreeModel *>(&model), Reporting::QtTest);
        QTEST(shape(model), "tree");
    }

    void tabsSeparateColumns()
    {
        const TreeModel model(headers, QStringLiteral("a\t\t one\ttoo many\nb"));
        QCOMPARE(model.index(0, 1).data(), QVariant(QStringLiteral(" one")));
        QVERIFY(!model.index(1, 1).data().isValid());
        QCOMPARE(model.columnCount(), 2);
        QCOMPARE(model.rowCount(model.index(0, 1)), 0);
    }

    void cellsAndHeadersAreEdited()
    {
        TreeModel model(headers, QStringLiteral("a"));
        const QAbstractItemModelTester tester(&model, Reporting::QtTest);
        qRegisterMetaType<Qt::Orientation>();
        QSignalSpy cells(&model, &TreeModel::dataChanged);
        QSignalSpy captions(&model, &TreeModel::headerDataChanged);
        const QModelIndex cell = model.index(0, 1);
        QVERIFY(model.setData(cell, 7));
        QVERIFY(!model.setData(cell, 8, Qt::DisplayRole));
        QVERIFY(!model.setData(QModelIndex(), 8));
        QCOMPARE(cell.data(Qt::EditRole), QVariant(7));
        QVERIFY(!cell.data(Qt::ToolTipRole).isValid());
        QVERIFY(model.setHeaderData(1, Qt::Horizontal, QStringLiteral("Remark")));
        QVERIFY(!model.setHeaderData(1, Qt::Vertical, QStringLiteral("x")));
        QVERIFY(!model.setHeaderData(2, Qt::Horizontal, QStringLiteral("x")));
        QCOMPARE(model.headerData(1, Qt::Horizontal), QVariant(QStringLiteral("Remark")));
        QCOMPARE(cells.size(), 1);
        QCOMPARE(captions.size(), 1);
        QVERIFY(model.flags(cell) & Qt::ItemIsEditable);
        QCOMPARE(model.flags(QModelIndex()), Qt::NoItemFlags);
    }

    void rowsComeAndGo()
    {
        TreeModel model(headers, QStringLiteral("a\n b\n c\nd"));
        const QAbstractItemModelTester tester(&model, Reporting::QtTest);
        const QModelIndex a = model.index(0, 0);
        const QPersistentModelIndex c = model.index(1, 0, a);
        QVERIFY(model.insertRows(1, 2, a));
        QVERIFY(model.setData(model.index(2, 0, a), QStringLiteral("new")));
        QCOMPARE(c.row(), 3);
        QCOMPARE(model.getItem(c)->childNumber(), 3);
        QVERIFY(model.removeRows(0, 2, a));
        QCOMPARE(shape(model), QStringLiteral("a(new c) d"));
        QVERIFY(!model.insertRows(3, 1, a) && !model.insertRows(-1, 1, a));
        QVERIFY(!model.removeRows(1, 2, a));
        QVERIFY(model.removeRows(0, 1));
        QVERIFY(!c.isValid());
        QCOMPARE(shape(model), QStringLiteral("d"));
        TreeItem root({1, 2});
        QVERIFY(root.insertChildren(0, 2, 2));
        QVERIFY(!root.setData(2, 3) && !root.child(2) && !root.data(-1).isValid());
        QVERIFY(root.removeColumns(0, 1));
        QCOMPARE(root.child(1)->columnCount(), 1);
    }

    void columnsComeAndGoOnEveryLevel()
    {
        TreeModel model(headers, QStringLiteral("a\tx\n b\ty"));
        const QAbstractItemModelTester tester(&model, Reporting::QtTest);
        const QPersistentModelIndex upper = model.index(0, 1);
        const QPersistentModelIndex lower = model.index(0, 1, model.index(0, 0));
        QVERIFY(model.insertColumns(1, 2));
        QCOMPARE(model.columnCount(), 4);
        QCOMPARE(upper.column(), 3);
        QCOMPARE(lower.column(), 3);
        QCOMPARE(lower.data(), QVariant(QStringLiteral("y")));
        QVERIFY(model.removeColumns(1, 1));
        QCOMPARE(lower.data(), QVariant(QStringLiteral("y")));
        QVERIFY(model.removeColumns(2, 1));
        QVERIFY(!upper.isValid());
        QVERIFY(!lower.isValid());
        QVERIFY(!model.removeColumns(1, 2));
        QVERIFY(!model.insertColumns(3, 1));
        QCOMPARE(shape(model), QStringLiteral("a(b)"));
        QVERIFY(model.removeColumns(0, 2));
        QCOMPARE(model.rowCount(), 0);
    }

    void copiesLeaveTheChildrenToTheOriginal()
    {
        TreeItem original({QStringLiteral("root")});
        original.insertChildren(0, 1, 1);
        TreeItem assigned({});
        assigned.insertChildren(0, 1, 1);
        {
            TreeItem copy(original);
            assigned = copy;
            QCOMPARE(copy.child(0), original.child(0));
            QVERIFY(!copy.removeChildren(0, 1));
            QVERIFY(!copy.insertColumns(0, 1));
        }
        QCOMPARE(assigned.data(0), QVariant(QStringLiteral("root")));
        QCOMPARE(original.child(0)->parent(), &original);
        TreeItem leaf(*original.child(0));
        QVERIFY(leaf.insertChildren(0, 1, 1));
        QCOMPARE(original.child(0)->childCount(), 0);
    }
};

PM_TEST_MAIN(TreeModelTest)
#include "tst_treemodel.moc"
