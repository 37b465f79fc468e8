#include "dicomfilebuilder.h"
#include "exportcontroller.h"
#include "exportdialog.h"
#include "exportprogressdialog.h"
#include "exportqueue.h"
#include "filechooser.h"
#include "frame.h"
#include "importcentre.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "testfiles.h"
#include "testmain.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QtTest>

#include <optional>

/// "Export As…" and "Import Files…" as a user meets them.
class ExportingTest : public QObject
{
    Q_OBJECT

private slots:
    /// Two patients, each with an image that has a file.
    void init()
    {
        m_folder.emplace();
        m_frame.emplace(2);
        QDir(m_folder->path()).mkdir(QStringLiteral("target"));
        for (int i = 1; i <= 2; ++i) {
            const QString file = m_folder->filePath(QStringLiteral("%1.dcm").arg(i));
            const QString uid = QStringLiteral("1.2.%1").arg(i);
            DicomFileBuilder()
                .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.1"))
                .write(file);
            m_frame->index.query(
                QStringLiteral("UPDATE imageformat SET FilePath = ?, FileSize = ? WHERE pk = ?"),
                {file, QFileInfo(file).size(), i});
        }
        m_frame->patientView()->selectAll();
        QVERIFY(m_frame->action("actionExportAs")->isEnabled());
    }

    void cleanup()
    {
        FileChooser::setAnswerer({});
        m_frame.reset();
        m_folder.reset();
    }

    void whatIsSelectedIsExported()
    {
        const MessageAnswers said;
        m_frame->patientView()->clearSelection();
        QVERIFY(!openDialog());
        QCOMPARE(said.count(), 1);
        m_frame->patientView()->selectAll();
        ExportDialog *dialog = openDialog();
        QVERIFY(dialog);
        const auto *size = dialog->findChild<QLabel *>(QStringLiteral("exportSize"));
        QTRY_VERIFY2(size->text().startsWith(QStringLiteral("2 patients (Start, 0001; Start, 0002): 2 ")),
            qPrintable(size->text()));
        // A place that is not there is told, and nothing begins.
        auto *line = dialog->findChild<QLineEdit *>(QStringLiteral("exportTarget"));
        line->setText(target() + QStringLiteral("/nowhere"));
        dialog->accept();
        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->findChild<QLabel *>(QStringLiteral("exportProblem"))->text().contains(u"nowhere"));
        line->setText(target());
        dialog->accept();
        QVERIFY(progress());
        QTRY_VERIFY(!m_frame->window->exports()->isRunning());
        QVERIFY2(
            headline(progress()).startsWith(QStringLiteral("Exported 2 ")), qPrintable(headline(progress())));
        QVERIFY(headline(progress()).contains(target()));
        QVERIFY(headline(progress()).contains(QStringLiteral("read back")));
        QCOMPARE(exported(), 2);
        const auto *button = m_frame->window->findChild<QToolButton *>(QStringLiteral("exportButton"));
        QVERIFY(button->isVisible());
        QVERIFY2(button->toolTip().contains(target()), qPrintable(button->toolTip()));
        progress()->close(); // looked at: nothing is left to tell
        QVERIFY(!button->isVisible());
    }

    void whatFailsCanBeTriedAgain()
    {
        const QString lost = m_folder->filePath(QStringLiteral("2.dcm"));
        QVERIFY(QFile::rename(lost, lost + QStringLiteral(".away")));
        openDialog()->accept();
        QPointer<ExportProgressDialog> first = progress();
        first->close(); // and it goes on
        QTRY_VERIFY(!m_frame->window->exports()->isRunning());
        QTRY_VERIFY(first->isVisible()); // something is to be told
        QVERIFY(first->findChild<QPlainTextEdit *>()->toPlainText().contains(lost));
        QVERIFY2(!headline(first).contains(QStringLiteral("All of it")), qPrintable(headline(first)));
        QCOMPARE(exported(), 1);
        QVERIFY(QFile::rename(lost + QStringLiteral(".away"), lost));
        first->findChild<QPushButton *>(QStringLiteral("exportRetry"))->click();
        QTRY_VERIFY(!m_frame->window->exports()->isRunning());
        QCOMPARE(exported(), 2);
        QTRY_VERIFY(!first);
    }

    void quittingAsks()
    {
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        openDialog()->accept();
        QVERIFY(!m_frame->window->close());
        QVERIFY(questions.texts.value(0).contains(QStringLiteral("export")));
        QTRY_VERIFY(!m_frame->window->exports()->isRunning());
        QCOMPARE(exported(), 2);
        questions.answer = kivMessageBoxForm::AnswerOk;
        openDialog()->accept();
        QSignalSpy closed(m_frame->window.get(), &WorkstationWindow::closed);
        m_frame->window->close();
        QTRY_COMPARE(closed.size(), 1);
        QVERIFY(!m_frame->window->exports()->isRunning());
    }

    void anArchiveIsImportedByTheMenu()
    {
        const QString archive = m_folder->filePath(QStringLiteral("a.zip"));
        ExportRequest request;
        request.databasePath = m_frame->index.path();
        request.keys = {1, 2};
        request.format = ExportFormat::Zip;
        request.target = archive;
        QCOMPARE(Exporter(request).run().files, qint64(2));
        m_frame->index.query(QStringLiteral("DELETE FROM patient"));
        FileChooser::setAnswerer([archive](const FileChooser::Request &) { return archive; });
        QList<QAction *> actions = m_frame->window->findChildren<QAction *>();
        const auto found = std::find_if(actions.begin(), actions.end(),
            [](const QAction *action) { return action->text() == QStringLiteral("Import &Files…"); });
        QVERIFY(found != actions.end());
        (*found)->trigger();
        QTRY_VERIFY(!m_frame->window->imports()->isRunning());
        QTRY_COMPARE(m_frame->index.count("imageformat"), 2);
    }

private:
    /// The dialog of the action, with the target filled in.
    ExportDialog *openDialog() const
    {
        m_frame->action("actionExportAs")->trigger();
        auto *dialog = m_frame->window->findChild<ExportDialog *>();
        if (dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("exportTarget"))->setText(target());
        }
        return dialog;
    }

    ExportProgressDialog *progress() const { return m_frame->window->findChild<ExportProgressDialog *>(); }
    static QString headline(const ExportProgressDialog *dialog)
    {
        return dialog->findChild<QLabel *>(QStringLiteral("exportHeadline"))->text();
    }
    QString target() const { return m_folder->filePath(QStringLiteral("target")); }

    int exported() const { return filesBelow(target()).size(); }

    std::optional<QTemporaryDir> m_folder;
    std::optional<Frame> m_frame;
};

PM_TEST_MAIN(ExportingTest)
#include "tst_exporting.moc"
