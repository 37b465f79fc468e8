#include "qpatient.h"
#include "qpatients.h"
#include "qpatienttreeitem.h"
#include "qpatienttreemodel.h"
#include "qseries.h"
#include "qstudy.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QAbstractItemModelTester>
#include <QtTest>

#include <optional>

class PatientTreeModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        index.emplace();
        const qlonglong patient = index->addPatient(QStringLiteral("A^One"), QStringLiteral("1"));
        index->addPatient(QStringLiteral("B^Two"), QStringLiteral("2"));
        const qlonglong study = index->addStudy(patient, QStringLiteral("1.1"));
        index->addSeries(study, QStringLiteral("1.1.1"), QStringLiteral("CT"), 1);
        index->addSeries(study, QStringLiteral("1.1.2"), QStringLiteral("MR"), 2);
        result.emplace();
        QVERIFY(result->advanceQueryByName(QString()));
    }

    void cleanup()
    {
        result.reset();
        index.reset();
    }

    void rowsFillTheirOwnSection()
    {
        const QStringList columns{QStringLiteral("PatientName"), QStringLiteral("pk"),
            QStringLiteral("PatientName"), QStringLiteral("Pk"), QStringLiteral("pk"),
            QStringLiteral("ModalitiesInStudy"), QStringLiteral("pk"), QStringLiteral("Modality"),
            QStringLiteral("PatientName"), QStringLiteral("pk"), QStringLiteral("Modality")};
        result->getAllPatient().constFirst()->setProperty("Pk", 7); // a property the class does not declare
        QPatientTreeModel model(nullptr, {});
        model.setPatients(&*result, columns);
        const QVariant none(QStringLiteral(""));
        const auto row = [&](const QModelIndex &parent, int place) {
            QVariantList values;
            for (int column = 0; column < columns.size(); ++column) {
                values.append(model.data(model.index(place, column, parent)));
            }
            return values;
        };
        const QModelIndex patient = model.index(0, 0);
        const QModelIndex study = model.index(0, 0, patient);
        const QStudy *record = model.treeItem(study)->getStudy();
        const QSeries *second = record->getSeries().at(1);
        QCOMPARE(row({}, 0),
            (QVariantList{none, record->getPatient()->getPk(), QStringLiteral("A^One"), 7, none, none, none,
                none, none, none, none}));
        QCOMPARE(row({}, 1).at(3), QVariant());
        QCOMPARE(row(patient, 0),
            (QVariantList{none, none, none, none, record->getPk(), QStringLiteral("CT\\MR"), none, none, none,
                none, none}));
        QCOMPARE(row(study, 1),
            (QVariantList{none, none, none, none, none, none, second->getPk(), QStringLiteral("MR"),
                QVariant(), none, none}));
    }

    void shapeFollowsTheRecords()
    {
        const QStringList columns = titles(*result);
        QPatientTreeModel model(nullptr, columns);
        model.setPatients(&*result, columns);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QCOMPARE(model.rowCount(), 2);
        const QModelIndex patient = model.index(0, 0);
        const QModelIndex study = model.index(0, 0, patient);
        const QModelIndex series = model.index(1, 0, study);
        QCOMPARE(model.rowCount(patient), 1);
        QCOMPARE(model.rowCount(model.index(0, 1)), 0);
        QCOMPARE(model.rowCount(study), 2);
        QCOMPARE(model.rowCount(series), 0);
        QCOMPARE(model.parent(series), study);
        QCOMPARE(model.parent(model.index(1, 3, study)), study);
        QVERIFY(!model.parent(patient).isValid());
        QVERIFY(model.treeItem(patient)->getPatient() && !model.treeItem(patient)->getSeries());
        QVERIFY(model.treeItem(series)->getSeries() && !model.treeItem(series)->getStudy());
        QVERIFY(!model.treeItem(QModelIndex()));
        QCOMPARE(model.flags(series), Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        QCOMPARE(model.flags(QModelIndex()), Qt::NoItemFlags);
        QCOMPARE(model.data(series, Qt::EditRole), QVariant());
    }

    void emptyResultKeepsTheHeader()
    {
        QPatients none;
        const QStringList columns = titles(none);
        QPatientTreeModel model(nullptr, {});
        model.setPatients(&none, columns);
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(model.columnCount(), columns.size());
        QCOMPARE(model.headerData(columns.size() - 1, Qt::Horizontal).toString(), columns.constLast());
        QCOMPARE(model.headerData(columns.size(), Qt::Horizontal), QVariant());
        QCOMPARE(model.headerData(0, Qt::Vertical), QVariant());
    }

    void rowFollowsItsSiblings()
    {
        const QStringList columns{QStringLiteral("pk")};
        QPatientTreeItem root(QVariantList{1}, nullptr, columns);
        auto *first = new QPatientTreeItem(QStringList{QStringLiteral("a")}, &root, columns);
        auto *second = new QPatientTreeItem(QStringList{QStringLiteral("b")}, &root, columns);
        root.appendChild(first);
        root.appendChild(second);
        QCOMPARE(second->row(), 1);
        root.remove(first);
        QCOMPARE(second->row(), 0);
        QCOMPARE(root.childCount(), 1);
        root.remove(first);
        root.appendChild(first);
        QCOMPARE(first->row(), 1);
        QVERIFY(!root.child(-1) && !root.child(2));
        QCOMPARE(first->data(0), QVariant(QStringLiteral("a")));
        QCOMPARE(first->data(1), QVariant());
    }

    void copySharesWhatItShows()
    {
        const QStringList columns = titles(*result);
        const QPatientTreeItem original(result->getAllPatient().constFirst(), nullptr, columns);
        QPatientTreeItem copy(original);
        QCOMPARE(copy.child(0), original.child(0));
        copy = *original.child(0);
        QCOMPARE(copy.getStudy(), original.child(0)->getStudy());
        QCOMPARE(copy.childCount(), 2);
    }

private:
    static QStringList titles(const QPatients &patients)
    {
        return patients.getPatientTitleList() + patients.getStudyTitleList() + patients.getSeriesTitleList();
    }

    std::optional<TemporaryIndex> index;
    std::optional<QPatients> result; ///< two patients, the first with a study of two series
};

PM_TEST_MAIN(PatientTreeModelTest)
#include "tst_patienttreemodel.moc"
