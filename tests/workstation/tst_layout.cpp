#include "createconnection.h"
#include "frame.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "searchbar.h"
#include "shownpatients.h"
#include "tablestage.h"
#include "testmain.h"
#include "treecontroller.h"

#include <QAction>
#include <QDockWidget>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QSettings>
#include <QSqlTableModel>
#include <QtTest>

/// What a user finds again at the next start.
class LayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QSettings().clear(); }

    void comesBack()
    {
        QRect geometry;
        QList<int> heights;
        {
            const Frame frame(3);
            frame.window->restoreLayout();
            frame.window->setGeometry(20, 30, 700, 550);
            QHeaderView *header = frame.patientView()->horizontalHeader();
            header->moveSection(header->visualIndex(column(frame, "PatientID")), 0);
            frame.patientView()->sortByColumn(column(frame, "PatientID"), Qt::DescendingOrder);
            frame.window->stage()->setHeights({50, 200, 100, 100, 120});
            frame.window->tree()->restore();
            tree(frame)->setFloating(true);
            frame.window->shownPatients()->show(QStringLiteral("start^0002"), DatePick::AllDates);
            geometry = frame.window->geometry();
            heights = frame.window->stage()->heights();
            frame.window->saveLayout();
        }
        const Frame frame(3);
        frame.window->restoreLayout();
        frame.window->tree()->restore();
        QCOMPARE(frame.window->geometry(), geometry);
        QCOMPARE(frame.window->stage()->heights(), heights);
        QVERIFY(tree(frame)->isFloating());
        const QHeaderView *header = frame.patientView()->horizontalHeader();
        QCOMPARE(header->visualIndex(column(frame, "PatientID")), 0);
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 1);
        QCOMPARE(frame.window->findChild<SearchBar *>()->text(), QStringLiteral("start^0002"));
        frame.window->shownPatients()->show({}, DatePick::AllDates);
        QCOMPARE(frame.patientView()->model()->index(0, column(frame, "PatientID")).data().toString(),
            QStringLiteral("S3"));
        // Another read of the rows leaves the columns where they are.
        QCOMPARE(header->visualIndex(column(frame, "PatientID")), 0);
    }

    /// A start without an index, or one that shows the first layout, does not cost the user's own.
    void keepsOnlyWhatWasThere()
    {
        {
            const Frame frame(1);
            frame.window->restoreLayout();
            frame.window->shownPatients()->show(QStringLiteral("kept"), DatePick::Week);
            frame.window->saveLayout();
        }
        const QStringList keys{QStringLiteral("tables/patient/columns"), QStringLiteral("search/text"),
            QStringLiteral("search/dates"), QStringLiteral("window/tableHeights")};
        const auto kept = [&keys] {
            QVariantList values;
            for (const QString &key : keys) {
                values.append(QSettings().value(key));
            }
            return values;
        };
        const QVariantList before = kept();
        QCOMPARE(before.at(1).toString(), QStringLiteral("kept"));
        {
            const Frame frame(1);
            frame.window->saveLayout();
        }
        QCOMPARE(kept(), before);
        const QTemporaryDir folder;
        setDatabasePath(folder.path()); // a folder is no index
        QVERIFY(!createConnection());
        WorkstationWindow window;
        QVERIFY(!window.hasIndex());
        window.restoreLayout();
        window.saveLayout();
        QCOMPARE(kept(), before);
    }

    /// Settings of another machine, another version or another program.
    void survivesForeignSettings()
    {
        {
            const Frame frame(1);
            frame.window->restoreLayout();
            frame.window->move(-5000, 9000);
            frame.window->saveLayout();
        }
        QSettings settings;
        settings.setValue(QStringLiteral("window/library"), QStringLiteral("no state"));
        settings.setValue(QStringLiteral("window/tableHeights"), QStringList{"1", "x"});
        settings.setValue(QStringLiteral("tables/patient/columns"),
            QStringList{"Gone", "PatientSex", "PatientSex", "PatientID"});
        settings.setValue(
            QStringLiteral("tables/patient/sortedBy"), QStringLiteral("Gone; DROP TABLE patient"));
        settings.setValue(QStringLiteral("search/dates"), 12);
        const Frame frame(1);
        frame.window->restoreLayout();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QRect place = frame.window->frameGeometry();
        QVERIFY(screen.top() <= place.top() && place.top() < screen.bottom() - 20);
        QVERIFY2(screen.intersected(place).width() > 100, qPrintable(QString::number(place.x())));
        const QHeaderView *header = frame.patientView()->horizontalHeader();
        QCOMPARE(header->visualIndex(column(frame, "PatientSex")), 0);
        QCOMPARE(header->visualIndex(column(frame, "PatientID")), 1);
        QCOMPARE(frame.patientView()->model()->rowCount(), 1);
        QCOMPARE(frame.window->shownPatients()->pick(), DatePick::ArrivedToday);
    }

private:
    static int column(const Frame &frame, const char *name)
    {
        return Frame::columnOf(frame.patientView(), QLatin1String(name));
    }
    static QDockWidget *tree(const Frame &frame)
    {
        return frame.window->library()->findChild<QDockWidget *>(
            QLatin1String(PatientManagerMainWindow::treeDockName));
    }
};

PM_TEST_MAIN(LayoutTest)
#include "tst_layout.moc"
