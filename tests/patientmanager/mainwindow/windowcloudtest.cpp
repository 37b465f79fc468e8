#include "anonymizeform.h"
#include "downloadclouddataform.h"
#include "kivmessageboxform.h"
#include "loginform.h"
#include "ndockwidget.h"
#include "patientform.h"
#include "testfiles.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

namespace {

constexpr char browserName[] = "kivcloudbrowser.exe";

} // namespace

/// Who is signed in to the cloud, and the windows and programs that depend on it.
class WindowCloudTest : public WindowTest
{
    Q_OBJECT

private slots:
    void aLocalUserSignsInAnew()
    {
        fixture->writeIni(QStringLiteral("config/username.ini"),
            "[other]\nkey=1\n[currentusername]\nlogtype=1\ncloud=https://a.example\ncloudpassword=x\n"
            "remberPwd=true\ndbname=mine\nmore=1\n");
        window->setLoginInfo("ann", "secret", "session", 0);
        QSignalSpy wanted(window, &PatientManagerMainWindow::loginWanted);
        trigger("actionDownloadCloudData");
        QVERIFY(login());
        QCOMPARE(int(login()->windowFlags() & (Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint)), 0x40800);
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(bytesOf(fixture->path(QStringLiteral("config/username.ini"))),
            QByteArray(
                "[other]\nkey=1\n\n[currentusername]\nlogtype=2\ncloud=\ncloudpassword=\nremberPwd=true\n"
                "dbname=mine\n"));
    }

    void aLoginIsHeardOnceForEachOpening()
    {
        QSignalSpy heard(window, &PatientManagerMainWindow::loginInfo);
        trigger("actionUploadCloudData");
        trigger("actionDownloadCloudData");
        LoginForm *form = login();
        QVERIFY(form);
        emit form->loginInfo("ann", "secret", "session", 1);
        QCOMPARE(heard.count(), 2);
        QCOMPARE(heard[0], QVariantList({QByteArray("ann"), QByteArray("secret"), QByteArray("session"), 1}));
        QVERIFY(window->isMaximized());
        window->setLoginInfo("bob", "secret", "session", 1);
        QCOMPARE(heard.count(), 2); // the host knows already
    }

    void theDownloadWindowGetsTheSession()
    {
        window->setLoginInfo("ann", "secret", "session", 1);
        QSignalSpy told(window, &PatientManagerMainWindow::jessionInfo);
        trigger("actionDownloadCloudData");
        trigger("actionDownloadCloudData");
        QVERIFY(DownloadCloudDataForm::instance()->isVisible());
        QVERIFY(!login());
        QCOMPARE(told.count(), 2);
        QCOMPARE(told[0], QVariantList{QByteArray("session")});
    }

    void theDownloadThatAskedForTheLoginGoesOn()
    {
        DownloadCloudDataForm::instance()->hide();
        trigger("actionDownloadCloudData");
        login()->close();
        QVERIFY(!DownloadCloudDataForm::instance()->isVisible());
        trigger("actionDownloadCloudData");
        LoginForm *form = login();
        emit form->loginInfo("ann", "secret", "session", LoginForm::cloudUser);
        emit form->left();
        QVERIFY(DownloadCloudDataForm::instance()->isVisible());
    }

    void theEditorAsksForALogin()
    {
        int answer = kivMessageBoxForm::AnswerCancel;
        kivMessageBoxForm::setAnswerer([&answer](const kivMessageBoxForm::Request &) { return answer; });
        QSignalSpy cancelled(window, &PatientManagerMainWindow::loginCancelled);
        trigger("actionPatientInfoEdit");
        QVERIFY(!login());
        QVERIFY(window->isVisible());
        answer = kivMessageBoxForm::AnswerOk;
        trigger("actionPatientInfoEdit");
        QVERIFY(login());
        QVERIFY(!window->isVisible());
        login()->close();
        QCOMPARE(cancelled.count(), 1);
        QVERIFY(window->isVisible()); // nobody is left without a window

        // Signed in, with nothing selected: the user is asked to select, and no editor comes.
        QString said;
        kivMessageBoxForm::setAnswerer([&said](const kivMessageBoxForm::Request &request) {
            said = request.text;
            return int(kivMessageBoxForm::AnswerOk);
        });
        window->setLoginInfo("ann", "secret", "session", 1);
        trigger("actionPatientInfoEdit");
        QVERIFY(said.contains(QLatin1String("STUDY")));
    }

    void aFrameKeepsItsWindow()
    {
        QWidget frame;
        auto *layout = new QVBoxLayout(&frame);
        layout->addWidget(window);
        window->setWindowFlags(Qt::Widget);
        window->show();
        frame.show();
        window->close();
        window->onLoginInfo("ann", "secret", "session", 1);
        QCOMPARE(window->parentWidget(), &frame);
        QVERIFY(!window->isWindow());
        QVERIFY(window->isVisible());
        QVERIFY(!window->isMaximized());
        layout->removeWidget(window);
        window->setParent(nullptr);
    }

    void theBrowserIsStartedOnceByItsPath()
    {
        int warnings = 0;
        kivMessageBoxForm::setAnswerer([&warnings](const kivMessageBoxForm::Request &) {
            ++warnings;
            return int(kivMessageBoxForm::AnswerOk);
        });
        // The one of the working directory comes before the one beside the program.
        const QString program = QDir::current().absoluteFilePath(QLatin1String(browserName));
        writeFile(program, "no program");
        trigger("actionCloudBrower");
        QTRY_COMPARE(warnings, 1); // it cannot be started

        // It lives until its input ends, which is when this test does.
        const QString started = fixture->path(QStringLiteral("started"));
        writeFile(program,
            QByteArray("#!/bin/sh\necho \"$0\" >>'") + QFile::encodeName(started) + "'\nread line\n");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        trigger("actionCloudBrower");
        trigger("actionCloudBrower");
        QTRY_COMPARE(bytesOf(started), QFile::encodeName(program) + '\n');
        trigger("actionCloudBrower");
        QCOMPARE(bytesOf(started), QFile::encodeName(program) + '\n');
        QCOMPARE(warnings, 1);
    }

    void eachAnonymizerHasADockOfItsOwn()
    {
        trigger("actionAnonymize");
        trigger("actionAnonymize");
        const QList<NDockWidget *> docks = window->findChildren<NDockWidget *>();
        QCOMPARE(docks.size(), 2);
        for (const NDockWidget *dock : docks) {
            QVERIFY(dock->isFloating());
            QVERIFY(dock->isVisible());
            QVERIFY(qobject_cast<AnonymizeForm *>(dock->widget()));
            QCOMPARE(dock->pos(), QPoint(400, 100));
        }
    }

private:
    void prepare() override { window = &fixture->open(); }
    void trigger(const char *action) const
    {
        QVERIFY(QMetaObject::invokeMethod(window, (QByteArray("on_") + action + "_triggered").constData()));
    }
    static LoginForm *login() { return qobject_cast<LoginForm *>(visibleWindow("LoginForm")); }

    PatientManagerMainWindow *window = nullptr;
};

PM_TEST_MAIN(WindowCloudTest)
#include "windowcloudtest.moc"
