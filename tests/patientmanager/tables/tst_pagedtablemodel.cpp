#include "indexconnection.h"
#include "pagedtablemodel.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

#include <memory>

namespace {

constexpr int many = 6000;

/// Patients numbered from 1: names in the opposite order of the keys, many equal sexes, a number column.
void addPatients(const TemporaryIndex &index, int count)
{
    index.query(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                               "INSERT INTO patient (PatientName, PatientID, PatientSex, "
                               "NumberOfPatientRelatedStudies) SELECT printf('Name%07d', 9999999 - i), "
                               "printf('ID%07d', i), substr('FMO', i % 3 + 1, 1), i % 1000 FROM n")
                    .arg(count));
}

QString firstPatients(int count)
{
    return QStringLiteral("pk <= %1").arg(count);
}

} // namespace

/// The model below the record forms, on an index with more rows than Qt reads at once.
class PagedTableModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        addPatients(*m_index, many);
        m_model = std::make_unique<PagedTableModel>();
        m_model->setTable(QStringLiteral("patient"));
        m_model->setEditStrategy(QSqlTableModel::OnManualSubmit);
    }

    void cleanup()
    {
        m_model.reset();
        m_index.reset();
    }

    void showsEveryRowAtOnce_data()
    {
        QTest::addColumn<int>("rows");
        for (const int rows : {0, 1, 254, 255, 256, 257, 383, 384, many}) {
            QTest::addRow("%d rows", rows) << rows;
        }
    }

    void showsEveryRowAtOnce()
    {
        QFETCH(int, rows);
        QVERIFY(m_model->selectWhere(firstPatients(rows)));
        QCOMPARE(m_model->rowCount(), rows);
        QVERIFY(!m_model->canFetchMore(QModelIndex()));
        for (int row = 0; row < rows; ++row) {
            QCOMPARE(m_model->key(row), qlonglong(row + 1));
            QCOMPARE(m_model->record(row).value(0).toLongLong(), qlonglong(row + 1));
        }
        if (rows > 0) {
            QCOMPARE(at(rows - 1, "PatientID").toString(), QString::asprintf("ID%07d", rows));
        }
        QCOMPARE(m_model->key(rows), 0);
        QVERIFY(m_model->record(rows).isNull(0));
    }

    void sortsTheWholeTable_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Qt::SortOrder>("order");
        for (const char *name : {"pk", "PatientName", "NumberOfPatientRelatedStudies", "PatientSex"}) {
            QTest::addRow("%s ascending", name) << QString::fromLatin1(name) << Qt::AscendingOrder;
            QTest::addRow("%s descending", name) << QString::fromLatin1(name) << Qt::DescendingOrder;
        }
    }

    void sortsTheWholeTable()
    {
        QFETCH(QString, column);
        QFETCH(Qt::SortOrder, order);
        m_model->sort(m_model->fieldIndex(column), order);
        QCOMPARE(m_model->rowCount(), many);

        QSqlQuery expected(m_index->database());
        const QString direction =
            order == Qt::AscendingOrder ? QStringLiteral("ASC") : QStringLiteral("DESC");
        QVERIFY(expected.exec(
            QStringLiteral("SELECT pk, %1 FROM patient ORDER BY %1 %2, pk %2").arg(column, direction)));
        for (int row = 0; expected.next(); ++row) {
            QCOMPARE(m_model->key(row), expected.value(0).toLongLong());
            QCOMPARE(m_model->index(row, m_model->fieldIndex(column)).data(), expected.value(1));
        }
    }

    void keepsTheKeyOfEveryRow()
    {
        QVERIFY(m_model->select());
        m_index->query(QStringLiteral("DELETE FROM patient WHERE pk IN (1000, 5000)"));
        m_index->addPatient(QStringLiteral("Late"), QStringLiteral("late"));

        QCOMPARE(m_model->rowCount(), many);
        QCOMPARE(m_model->key(5001), 5002);
        QCOMPARE(at(5001, "PatientID").toString(), QStringLiteral("ID0005002"));
        QVERIFY2(at(4999, "PatientID").isNull(), "a row that has gone reads as empty, not as its neighbour");
        QCOMPARE(m_model->keys({5999, 0, 4999}), (QList<qlonglong>{6000, 1, 5000}));

        QVERIFY(m_model->select());
        QCOMPARE(m_model->rowCount(), many - 1);
        QCOMPARE(m_model->rowOf(5002), 5000 - 1);
        QCOMPARE(m_model->rowOf(5000), -1);
    }

    void leavesTheConnectionFree_data()
    {
        QTest::addColumn<int>("rows");
        QTest::newRow("the base rows") << PagedTableModel::firstRows;
        QTest::newRow("an image series") << 1000;
        QTest::newRow("all") << many;
    }

    void leavesTheConnectionFree()
    {
        QFETCH(int, rows);
        QVERIFY(m_model->selectWhere(firstPatients(rows)));
        at(rows - 1, "PatientName");

        const IndexConnection other(m_index->path());
        QVERIFY(QSqlQuery(other.database())
                    .exec(QStringLiteral("UPDATE patient SET PatientSex = 'X' WHERE pk = %1").arg(rows)));
        QVERIFY(m_model->select());
        QCOMPARE(at(rows - 1, "PatientSex").toString(), QStringLiteral("X"));
        QSqlQuery query(m_index->database());
        QVERIFY2(query.exec(QStringLiteral("DELETE FROM patient WHERE pk = 1")),
            qPrintable(query.lastError().text()));
    }

    void reportsAFilterThatFails()
    {
        m_model->setHeaderData(1, Qt::Horizontal, QStringLiteral("Name"));
        QVERIFY(m_model->select());
        QVERIFY(!m_model->selectWhere(QStringLiteral("NoSuchColumn = 1")));
        QVERIFY(m_model->lastError().text().contains(QLatin1String("NoSuchColumn")));
        QCOMPARE(m_model->rowCount(), 0);
        QVERIFY(m_model->selectWhere(QString()));
        QVERIFY(!m_model->lastError().isValid());
        QCOMPARE(m_model->rowCount(), many);
        QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Name"));
    }

    void savesAndRevertsFarDown_data()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("first page") << 3;
        QTest::newRow("at the seam") << PagedTableModel::firstRows;
        QTest::newRow("far down") << 5000;
        QTest::newRow("last") << many - 1;
    }

    void savesAndRevertsFarDown()
    {
        QFETCH(int, row);
        QVERIFY(m_model->select());
        const QModelIndex comments = m_model->index(row, column("PatientComments"));
        const QString sexBefore = at(row, "PatientSex").toString();

        QVERIFY(m_model->setData(m_model->index(row, column("PatientSex")), sexBefore));
        QVERIFY2(!m_model->isDirty(), "the same value is no edit");
        QVERIFY(m_model->setData(comments, QStringLiteral("dropped")));
        QVERIFY(m_model->isDirty(comments));
        QCOMPARE(comments.data().toString(), QStringLiteral("dropped"));
        QCOMPARE(at(row, "PatientSex").toString(), sexBefore);
        m_model->revertAll();
        QVERIFY(!m_model->isDirty());
        QVERIFY(comments.data().isNull());

        QVERIFY(m_model->setData(comments, QStringLiteral("kept")));
        QVERIFY(edit(row, "PatientSex", QVariant()));
        QVERIFY2(m_model->submitAll(), qPrintable(m_model->lastError().text()));
        QVERIFY(!m_model->isDirty());
        QCOMPARE(at(row, "PatientComments").toString(), QStringLiteral("kept"));
        QCOMPARE(m_index
                     ->query(QStringLiteral("SELECT PatientComments || ifnull(PatientSex, '-') FROM patient "
                                            "WHERE pk = %1")
                                 .arg(row + 1))
                     .toString(),
            QStringLiteral("kept-"));
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT count(*) FROM patient WHERE PatientComments IS NOT NULL")),
            1);
    }

    void keepsAllEditsWhereOneFails()
    {
        QVERIFY(m_model->select());
        QVERIFY(edit(10, "PatientComments", QStringLiteral("first")));
        QVERIFY(edit(5000, "PatientName", QVariant())); // NOT NULL
        QVERIFY(edit(5500, "PatientComments", QStringLiteral("third")));

        QSqlDatabase db = m_model->database();
        QVERIFY(db.transaction());
        QVERIFY(!m_model->submitAll());
        QVERIFY(m_model->lastError().text().contains(QLatin1String("NOT NULL")));
        QVERIFY(db.rollback());

        const auto written = [this] {
            return m_index->query(QStringLiteral("SELECT group_concat(PatientComments) FROM patient"))
                .toString();
        };
        QCOMPARE(written(), QString());
        QVERIFY(m_model->isDirty(m_model->index(10, column("PatientComments"))));
        QCOMPARE(at(10, "PatientComments").toString(), QStringLiteral("first"));
        QVERIFY(edit(5000, "PatientName", QStringLiteral("Right^Name")));
        QVERIFY(m_model->submitAll());
        QCOMPARE(written(), QStringLiteral("first,third"));
        QCOMPARE(at(5000, "PatientName").toString(), QStringLiteral("Right^Name"));
    }

    void isReadOnlyInItsKeys()
    {
        QVERIFY(m_model->select());
        QVERIFY(!edit(0, "pk", 77));
        QVERIFY(!edit(5000, "pk", 77));
        QVERIFY(!m_model->insertRow(0));
        PagedTableModel images;
        images.setTable(QStringLiteral("imageformat"));
        for (int i = 0; i < images.columnCount(); ++i) {
            const bool isEditable = images.flags(images.index(0, i)) & Qt::ItemIsEditable;
            QVERIFY(!isEditable); // no rows yet
        }
        const qlonglong study = m_index->addStudy(1, QStringLiteral("1.2"));
        m_index->addImage(m_index->addSeries(study, QStringLiteral("1.2.3")), QStringLiteral("1.2.3.4"));
        QVERIFY(images.select());
        QVERIFY(!(images.flags(images.index(0, 1)) & Qt::ItemIsEditable));
        QVERIFY(images.flags(images.index(0, 3)) & Qt::ItemIsEditable);
    }

    void deletesFarDown()
    {
        QVERIFY(m_model->select());
        QVERIFY(edit(5000, "PatientComments", QStringLiteral("of no use")));
        QVERIFY(m_model->removeRows(5000, 2));
        QVERIFY2(m_model->submitAll(), qPrintable(m_model->lastError().text()));
        QCOMPARE(m_model->rowCount(), many - 2);
        QCOMPARE(m_model->key(5000), 5003);
        QCOMPARE(m_index->query(QStringLiteral("SELECT count(*) FROM patient WHERE pk IN (5001, 5002)")), 0);
    }

    /// Walking through a large table must not pile it up in memory.
    void keepsFewPages()
    {
        constexpr int rows = 100'000;
        m_index->query(QStringLiteral("DELETE FROM patient"));
        addPatients(*m_index, rows);
        QVERIFY(m_model->select());
        QCOMPARE(m_model->rowCount(), rows);
        const auto resident = [] {
            QFile status(QStringLiteral("/proc/self/statm"));
            return status.open(QIODevice::ReadOnly)
                ? status.readAll().split(' ').value(1).toLongLong() * 4 / 1024
                : 0;
        };
        const qlonglong before = resident();
        const int name = column("PatientName");
        for (int row = 0; row < m_model->rowCount(); row += RecordPages::pageRows / 2) {
            QVERIFY(!m_model->index(row, name).data().isNull());
        }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // sanitizers hold freed memory back
        QVERIFY2(resident() - before < 60, qPrintable(QString::number(resident() - before)));
#else
        Q_UNUSED(before)
#endif
        QCOMPARE(at(rows - 1, "PatientID").toString(), QString::asprintf("ID%07d", rows));
    }

    void survivesAClosedConnection()
    {
        QVERIFY(m_model->select());
        m_index->database().close();
        QVERIFY(at(5000, "PatientName").isNull());
        QCOMPARE(m_model->key(5000), 5001);
        QTest::ignoreMessage(QtWarningMsg, "QSqlQuery::exec: database not open");
        QVERIFY(!m_model->select());
        QCOMPARE(m_model->rowCount(), 0);
        QVERIFY(m_index->database().open());
        m_model->setTable(m_model->tableName());
        QVERIFY(m_model->select());
        QCOMPARE(m_model->rowCount(), many);
    }

private:
    int column(const char *name) const
    {
        return m_model->fieldIndex(QLatin1String(name));
    }
    QVariant at(int row, const char *name) const
    {
        return m_model->index(row, column(name)).data();
    }
    bool edit(int row, const char *name, const QVariant &value)
    {
        return m_model->setData(m_model->index(row, column(name)), value);
    }

    std::unique_ptr<TemporaryIndex> m_index;
    std::unique_ptr<PagedTableModel> m_model;
};

PM_TEST_MAIN(PagedTableModelTest)
#include "tst_pagedtablemodel.moc"
