#include "importer.h"
#include "importprogresswidget.h"
#include "importreporttext.h"
#include "testmain.h"

#include <QFileDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// The widget is its own owner; here, a test is.
class Window
{
public:
    ~Window() { delete m_widget.data(); }
    ImportProgressWidget *operator->() const { return m_widget; }
    ImportProgressWidget *get() const { return m_widget; }
    QPushButton *button(const char *name) const
    {
        return m_widget->findChild<QPushButton *>(QLatin1String(name));
    }
    QLabel *label(const QString &name) const { return m_widget->findChild<QLabel *>(name); }
    bool isDeleted() const { return m_widget.isNull(); }

private:
    QPointer<ImportProgressWidget> m_widget = new ImportProgressWidget;
};

/// An importer that nobody runs: it stands still.
std::shared_ptr<Importer> importer()
{
    return std::make_shared<Importer>(ImportRequest());
}

ImportReport reportWith(int unreadable)
{
    ImportReport report;
    report.count(FileVerdict::New);
    for (int i = 0; i < unreadable; ++i) {
        report.count(
            {QStringLiteral("/data/%1").arg(i), FileVerdict::Unreadable, FileReason::Damaged, QString()});
    }
    return report;
}

QString chosenFile(const QWidget *window, const QString &path)
{
    auto *dialog = window->findChild<QFileDialog *>();
    dialog->selectFile(path);
    dialog->QDialog::accept();
    emit dialog->fileSelected(path);
    return path;
}

} // namespace

class ImportProgressWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void cancelAnswersAtOnce()
    {
        const Window window;
        window->watch(importer());
        window->begin();
        window->show();
        QVERIFY(window->isRunning());
        window.button("cancel")->click();
        QVERIFY(!window.button("cancel")->isEnabled());
        QCOMPARE(window.button("cancel")->text(), QStringLiteral("Cancelling…"));
        ImportReport report;
        report.end = ImportEnd::Cancelled;
        window->showReport(report);
        QVERIFY(!window->isRunning());
        QVERIFY(window.button("close")->isVisible());
        QVERIFY(!window.button("cancel")->isVisible());
    }

    void closingTheReportDeletes()
    {
        const Window window;
        window->watch(importer());
        window->show();
        window->showReport(reportWith(0));
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.button("close"), Qt::Key_Escape);
        QTRY_VERIFY(window.isDeleted());
    }

    void reportShowsCountsAndIssues()
    {
        const Window window;
        const ImportReport report = reportWith(100'000);
        window->watch(importer());
        window->showReport(report);
        window->show();
        const QLocale locale;
        QCOMPARE(window.label(QStringLiteral("found"))->text(), locale.toString(100'001));
        const QString unreadable = QStringLiteral("count%1").arg(int(FileVerdict::Unreadable));
        QCOMPARE(window.label(unreadable)->text(), locale.toString(100'000));
        QCOMPARE(window.label(QStringLiteral("headline"))->text(), importEndText(report));
        const auto *issues = window->findChild<QTableView *>();
        QVERIFY(issues->isVisible());
        const QAbstractItemModel *model = issues->model();
        QCOMPARE(model->rowCount(), 100'000);
        QCOMPARE(model->index(99'999, 0).data().toString(), QStringLiteral("/data/99999"));
        QCOMPARE(model->index(7, 2).data().toString(), reasonText(report.issues().at(7)));
    }

    void oneWidgetShowsSeveralImports()
    {
        const Window window;
        QStringList asked;
        window->setRetry([&](const QStringList &paths) {
            asked = paths;
            window->watch(importer());
        });
        window->watch(importer());
        window->begin();
        window->showReport(reportWith(2));
        window->show();
        window.button("retry")->click();
        QCOMPARE(asked, (QStringList{QStringLiteral("/data/0"), QStringLiteral("/data/1")}));
        QVERIFY(window.button("cancel")->isVisible());
        QVERIFY(window.button("cancel")->isEnabled());
        window->close();
        QVERIFY(!window.isDeleted());
        window->showReport(reportWith(0));
        QVERIFY(window->isVisible());
    }

    void savesTheReport()
    {
        const QTemporaryDir folder;
        const Window window;
        const ImportReport report = reportWith(3);
        window->watch(importer());
        window->showReport(report);
        window->show();
        window.button("save")->click();
        QFile file(chosenFile(window.get(), folder.filePath(QStringLiteral("报告.txt"))));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()), importReportText(report));
    }

    void nothingIsClippedAtALargeFont()
    {
        const Window window;
        QFont large = window->font();
        large.setPointSize(large.pointSize() * 2);
        window->setFont(large);
        window->watch(importer());
        window->showReport(reportWith(1));
        window->show();
        for (const QPushButton *button : window->findChildren<QPushButton *>()) {
            if (button->isVisible()) {
                QTRY_VERIFY(button->width() >= button->sizeHint().width());
                QTRY_VERIFY(button->height() >= button->sizeHint().height());
            }
        }
    }
};

PM_TEST_MAIN(ImportProgressWidgetTest)
#include "tst_importprogresswidget.moc"
