#include "configlocation.h"
#include "createconnection.h"
#include "datasavetypeform.h"
#include "importprogresswidget.h"
#include "importscene.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "testmain.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QtTest>

namespace {

const QString patient = QStringLiteral("patient");

/// Drops a path on the view as a file manager would. @return whether the view took it
bool drop(const NTableView *view, const QUrl &url)
{
    QMimeData data;
    data.setUrls({url});
    const QPoint place(20, 20);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &enter);
    QDropEvent dropped(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &dropped);
    return enter.isAccepted() && dropped.isAccepted() && dropped.dropAction() == Qt::CopyAction;
}

bool isAnyProgressShown()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return qobject_cast<const ImportProgressWidget *>(window) && window->isVisible();
    });
}

/// What tells a copy from a reference.
QString markerIn(const ImportScene &scene)
{
    return scene.index.query(QStringLiteral("SELECT ifnull(max(IrradiationEventUID), '') FROM imageformat"))
        .toString();
}

/// Drags the right edge of a column, as a user does.
void drag(const NTableView *view, int column, int by)
{
    const QHeaderView *header = view->horizontalHeader();
    const QPoint edge(
        header->sectionViewportPosition(column) + header->sectionSize(column) - 1, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    for (const int step : {by / 2, by}) {
        QMouseEvent move(
            QEvent::MouseMove, edge + QPoint(step, 0), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(header->viewport(), &move);
    }
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(by, 0));
}

/// A view on a table of the index, on screen.
struct Shown
{
    explicit Shown(const QString &table)
    {
        model.setTable(table);
        model.select();
        view.setTableName(table);
        view.setModel(&model);
        view.resize(1200, 300);
        view.show();
        view.resizeColumnsToContents();
    }

    QSqlTableModel model;
    NTableView view;
};

/// Shows a name without its carets.
class NameDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &locale) const override
    {
        return QStyledItemDelegate::displayText(value, locale).replace(QLatin1Char('^'), QLatin1Char(' '));
    }
};

} // namespace

class NTableViewTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QFile::remove(QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("PatientManager"),
            QStringLiteral("columnwidths"))
                          .fileName());
    }

    void dropImportsInTheConfiguredMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("marker");
        QTest::newRow("nothing configured") << -1 << QString();
        QTest::newRow("by reference") << 0 << QString();
        QTest::newRow("by copy") << 1 << QStringLiteral("copy");
    }

    void dropImportsInTheConfiguredMode()
    {
        QFETCH(int, mode);
        const ImportScene scene;
        scene.addImage(1);
        scene.addImage(2);
        if (mode >= 0) {
            scene.configure(ConfigKey::importMode, mode);
        }
        NTableView view;
        QSignalSpy finished(&view, &NTableView::fileFinished);
        QVERIFY(drop(&view, QUrl::fromLocalFile(scene.folder())));
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), true);
        QCOMPARE(scene.imageCount(), 2);
        QTEST(markerIn(scene), "marker");
    }

    void dropAsks_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<int>("images");
        QTest::addColumn<QString>("marker");
        QTest::newRow("reference") << QStringLiteral("reference") << 1 << QString();
        QTest::newRow("copy") << QStringLiteral("copy") << 1 << QStringLiteral("copy");
        QTest::newRow("cancel") << QStringLiteral("cancel") << 0 << QString();
    }

    void dropAsks()
    {
        QFETCH(QString, choice);
        QFETCH(int, images);
        const ImportScene scene;
        scene.addImage(1);
        scene.configure(ConfigKey::importMode, 2);
        NTableView view;
        QSignalSpy finished(&view, &NTableView::fileFinished);
        drop(&view, QUrl::fromLocalFile(scene.imagePath(1)));
        DataSaveTypeForm *question = DataSaveTypeForm::instance();
        QVERIFY(question->isVisible());
        question->findChild<QPushButton *>(choice)->click();
        QVERIFY(!question->isVisible());
        if (images > 0) {
            QVERIFY(finished.wait());
        }
        QVERIFY(isAnyProgressShown() == (images > 0));
        QCOMPARE(scene.imageCount(), images);
        QTEST(markerIn(scene), "marker");
    }

    void questionOfADropIsNotTheWindows()
    {
        const ImportScene scene;
        scene.configure(ConfigKey::importMode, 2);
        QSignalSpy window(DataSaveTypeForm::instance(), &DataSaveTypeForm::dataType);
        auto view = std::make_unique<NTableView>();
        drop(view.get(), QUrl::fromLocalFile(scene.folder()));
        view.reset(); // the one who asked is gone
        auto *reference = DataSaveTypeForm::instance()->findChild<QPushButton *>(QStringLiteral("reference"));
        reference->click();
        QCOMPARE(window.size(), 0);
        DataSaveTypeForm::instance()->show(); // as the window asks
        reference->click();
        QCOMPARE(window.size(), 1);
        QCOMPARE(window.first().first().toInt(), 0);
    }

    void dropOfAnythingElseIsIgnored()
    {
        const NTableView view;
        QVERIFY(!drop(&view, QUrl(QStringLiteral("https://example.org/study"))));
    }

    void refusedIndexStaysAsItIs()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.index.query(QStringLiteral("PRAGMA user_version = 99"));
        QSqlDatabase::database().close();
        QVERIFY(!createConnection());
        const MessageAnswers said;
        NTableView view;
        QSignalSpy finished(&view, &NTableView::fileFinished);
        QVERIFY(drop(&view, QUrl::fromLocalFile(scene.folder())));
        QVERIFY(finished.wait());
        QVERIFY(said.texts.value(0).contains(scene.index.path()));
        QVERIFY(!isAnyProgressShown());
        QCOMPARE(scene.imageCount(), 0);
    }

    void deletedWhileItImports()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.lock();
        auto view = std::make_unique<NTableView>();
        drop(view.get(), QUrl::fromLocalFile(scene.folder()));
        QVERIFY(isAnyProgressShown());
        view.reset();
        QVERIFY(!isAnyProgressShown());
        scene.unlock();
        QCOMPARE(scene.imageCount(), 0);
    }

    void copiesWhatIsSeen()
    {
        QStandardItemModel model(3, 4);
        model.setHorizontalHeaderLabels({QStringLiteral("pk"), QStringLiteral("Name"),
            QStringLiteral("Comment"), QStringLiteral("Born")});
        for (int row = 0; row < 3; ++row) {
            model.setItem(row, 0, new QStandardItem(QString::number(row)));
            model.setItem(row, 1, new QStandardItem(QStringLiteral("Doe^J%1").arg(row)));
            model.setItem(row, 2, new QStandardItem(QStringLiteral("two\tcells\nor lines")));
            model.setItem(row, 3, new QStandardItem(QString()));
        }
        NTableView view;
        view.setModel(&model);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        view.setItemDelegateForColumn(1, new NameDelegate(&view));
        view.hideColumn(0);
        view.horizontalHeader()->moveSection(3, 1);
        view.setSelectionMode(QAbstractItemView::MultiSelection);
        view.selectRow(2);
        view.selectRow(0);
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(),
            QStringLiteral("Born\tName\tComment\n"
                           "\tDoe J0\ttwo cells or lines\n"
                           "\tDoe J2\ttwo cells or lines\n"));
    }

    void copiesNothingWithoutASelection()
    {
        QApplication::clipboard()->setText(QStringLiteral("kept"));
        NTableView view;
        view.copySelection();
        QStandardItemModel model(1, 1);
        view.setModel(&model);
        view.copySelection();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("kept"));
    }

    void keepsDraggedWidths()
    {
        const ImportScene scene;
        scene.index.addPatient(QStringLiteral("Doe^John"), QStringLiteral("1"));
        int narrow = 0;
        {
            const Shown first(patient);
            const int before = first.view.columnWidth(1);
            drag(&first.view, 1, -before / 2);
            narrow = first.view.columnWidth(1);
            QVERIFY(narrow < before);
        }
        Shown second(patient);
        QCOMPARE(second.view.columnWidth(1), narrow);
        second.model.setFilter(QStringLiteral("pk = -1"));
        second.view.resizeColumnsToContents();
        QCOMPARE(second.view.columnWidth(1), narrow);
        second.view.resizeColumnToContents(1);
        QCOMPARE(second.view.columnWidth(1), narrow);
    }

    void widthsAreKeptByTableAndColumn()
    {
        const ImportScene scene;
        const Shown before(QStringLiteral("generalstudy"));
        {
            const Shown patients(patient);
            drag(&patients.view, 1, 150);
        }
        const Shown studies(QStringLiteral("generalstudy"));
        const Shown patients(patient);
        for (int column = 0; column < studies.model.columnCount(); ++column) {
            QCOMPARE(studies.view.columnWidth(column), before.view.columnWidth(column));
        }
        // Only the column that was dragged is held; the others follow their contents.
        QCOMPARE(QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("PatientManager"),
                     QStringLiteral("columnwidths"))
                     .allKeys(),
            QStringList{QStringLiteral("patient/PatientName")});
    }

    void doubleClickForgetsAWidth()
    {
        const ImportScene scene;
        scene.index.addPatient(QStringLiteral("Doe^John"), QStringLiteral("1"));
        const Shown shown(patient);
        const int fitting = shown.view.columnWidth(1);
        drag(&shown.view, 1, 100);
        QVERIFY(shown.view.columnWidth(1) > fitting);
        const QHeaderView *header = shown.view.horizontalHeader();
        const QPoint edge(
            header->sectionViewportPosition(1) + header->sectionSize(1) - 1, header->height() / 2);
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
        QCOMPARE(shown.view.columnWidth(1), fitting);
        QCOMPARE(Shown(patient).view.columnWidth(1), fitting);
    }

    void contentsNeverTakeTheScreen()
    {
        const ImportScene scene;
        scene.index.addPatient(QStringLiteral("W").repeated(500), QStringLiteral("1"));
        const Shown shown(patient);
        QVERIFY(shown.view.columnWidth(1) < 600);
    }
};

PM_TEST_MAIN(NTableViewTest)
#include "tst_ntableview.moc"
