#include "testmain.h"
#include "windowfixture.h"

#include <QAction>
#include <QDialog>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QTreeView>
#include <QtTest>

#include <functional>

/// The picker as a user meets it, through the window's action: the class itself is not exported.
class DirectoryViewerTest : public WindowTest
{
    Q_OBJECT

private slots:
    void listsFoldersOnly()
    {
        fixture->makeSeries(QStringLiteral("working/folder"), 1);
        fixture->writeIni(QStringLiteral("working/file.txt"), "text");
        PatientManagerMainWindow &window = fixture->open();
        withPicker(window, [&](QDialog &picker) {
            QVERIFY(window.isLoadFiles());
            QVERIFY(picker.isModal());
            auto *model = picker.findChild<QFileSystemModel *>();
            QVERIFY(model && model->isReadOnly());
            QCOMPARE(int(model->filter()), 0x6401);
            const QModelIndex here = model->index(QDir::currentPath());
            QTRY_COMPARE(model->rowCount(here), 1);
            QCOMPARE(model->fileName(model->index(0, 0, here)), QStringLiteral("folder"));
            QVERIFY(picker.findChild<QTreeView *>()->isExpanded(here));
            QCOMPARE(picker.minimumSize(), QSize(800, 400));
            const Qt::WindowFlags others =
                Qt::WindowMinMaxButtonsHint | Qt::WindowContextHelpButtonHint | Qt::WindowStaysOnTopHint;
            QCOMPARE(int(picker.windowFlags() & (0x0A001000 | others)), 0x0A001000);
        });
    }

    void okSaysThePath_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("said");
        QTest::newRow("folder") << QStringLiteral("/usr/share") << QStringLiteral("/usr/share");
        QTest::newRow("folder below the root") << QStringLiteral("/usr") << QStringLiteral("//usr");
        QTest::newRow("the root itself") << QStringLiteral("/") << QStringLiteral("//");
    }

    void okSaysThePath()
    {
        QFETCH(QString, chosen);
        PatientManagerMainWindow &window = fixture->open();
        QStringList said;
        withPicker(window, [&](QDialog &picker) {
            // The window's own slot is not to see it: what it does with a path is another test's matter.
            QVERIFY(disconnect(&picker, nullptr, &window, nullptr));
            QSignalSpy selected(&picker, SIGNAL(selectPath(QString)));
            makeCurrent(picker, chosen);
            button(picker, QStringLiteral("确定"))->click();
            for (const QVariantList &signal : selected) {
                said.append(signal[0].toString());
            }
            QVERIFY(!picker.isVisible());
        });
        QTEST(said.join(QLatin1Char('|')), "said");
    }

    void okWithoutCurrentFolderSaysNothing()
    {
        PatientManagerMainWindow &window = fixture->open();
        withPicker(window, [&](QDialog &picker) {
            QSignalSpy selected(&picker, SIGNAL(selectPath(QString)));
            picker.findChild<QTreeView *>()->setCurrentIndex(QModelIndex());
            button(picker, QStringLiteral("确定"))->click();
            QCOMPARE(selected.size(), 0);
            QVERIFY(!picker.isVisible());
        });
    }

    void cancelSaysNothing()
    {
        PatientManagerMainWindow &window = fixture->open();
        withPicker(window, [&](QDialog &picker) {
            QSignalSpy selected(&picker, SIGNAL(selectPath(QString)));
            makeCurrent(picker, QStringLiteral("/usr/share"));
            button(picker, QStringLiteral("取消"))->click();
            QCOMPARE(selected.size(), 0);
            QVERIFY(!picker.isVisible());
        });
    }

    /// Only the second picker's choice arrives, once, and the first picker is gone.
    void secondUseReplacesTheFirst()
    {
        fixture->writeIni(QStringLiteral("config/dicomsendservice.ini"), "[one]\nAETitle=ONE\n");
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 1);
        PatientManagerMainWindow &window = fixture->open();
        QSignalSpy offered(&window, &PatientManagerMainWindow::notifySendSelectData);
        QPointer<QDialog> first;
        withPicker(window, [&](QDialog &picker) { first = &picker; });
        QVERIFY(first);
        withPicker(window, [&](QDialog &picker) {
            makeCurrent(picker, folder);
            button(picker, QStringLiteral("确定"))->click();
        });
        QTRY_VERIFY(!first);
        QCOMPARE(offered.size(), 1);
        QCOMPARE(offered[0][0].toStringList(), QStringList{folder + QStringLiteral("/1.dcm")});
    }

private:
    void prepare() override
    {
        // Any mode but 0, 1 and 2: these tests are about the choice, not about the import.
        fixture->writeIni(QStringLiteral("config/main.ini"), "[dataCopyType]\ndataCopyType=9\n");
    }
    using Act = std::function<void(QDialog &)>;
    /// Triggers the action and lets `act` work on the picker while it is modal.
    void withPicker(PatientManagerMainWindow &window, const Act &act)
    {
        bool seen = false;
        QTimer::singleShot(0, &window, [&] {
            auto *picker = qobject_cast<QDialog *>(visibleWindow("DirectoryViewer"));
            seen = picker != nullptr;
            if (picker) {
                act(*picker);
                picker->close();
            }
        });
        window.findChild<QAction *>(QStringLiteral("actionLoadDir"))->trigger();
        QVERIFY(seen);
        QVERIFY(!window.isLoadFiles());
    }

    static QPushButton *button(const QDialog &picker, const QString &text)
    {
        for (auto *candidate : picker.findChildren<QPushButton *>()) {
            if (candidate->text() == text) {
                return candidate;
            }
        }
        qFatal("no button %s", qPrintable(text));
    }

    static void makeCurrent(const QDialog &picker, const QString &path)
    {
        auto *model = picker.findChild<QFileSystemModel *>();
        auto *tree = picker.findChild<QTreeView *>();
        QVERIFY(model && tree);
        tree->setCurrentIndex(model->index(path));
        QVERIFY(tree->currentIndex().isValid());
    }
};

PM_TEST_MAIN(DirectoryViewerTest)
#include "directoryviewertest.moc"
