#include "cloudstudymodel.h"
#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "downloadclouddataform.h"
#include "downloadengine.h"
#include "httpuploadfile.h"
#include "keptpicture.h"
#include "loginform.h"
#include "namedcontrols.h"
#include "retrynotice.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "websession.h"
#include "windowparts.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QtTest>

namespace {

constexpr int mostMs = 30000;

} // namespace

/// The windows of signing in and of downloads, at a real archive.
class CloudWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
        m_archive = WebArchive::start();
        const QTemporaryDir files;
        for (int image = 1; image <= 12; ++image) {
            const int study = image % 2 + 1;
            DicomFileBuilder()
                .patient(QString::number(study),
                    study == 1 ? QStringLiteral("Meyer^Anna") : QStringLiteral("Ode^Bob"))
                .uids(QStringLiteral("1.7.%1").arg(study),
                    QStringLiteral("1.7.%1.%2").arg(study).arg(image % 3),
                    QStringLiteral("1.7.%1.9.%2").arg(study).arg(image))
                .write(files.filePath(QString::number(image)));
        }
        m_archive->fill({files.path()}, {QStringLiteral("+sd")});
    }
    void init() { ConfigLocation::setBase(m_folder.filePath(QStringLiteral("app/bin"))); }
    void cleanup()
    {
        HttpUploadFile::instance()->endSession();
        QFile::remove(CloudAccount::file());
    }
    void cleanupTestCase() { ConfigLocation::setBase({}); }

    void signInThroughTheWindow()
    {
        LoginForm form;
        QSignalSpy told(&form, &LoginForm::loginInfo);
        QSignalSpy cancelled(&form, &LoginForm::cancelled);
        form.show();
        QCOMPARE(unnamedControl(form), QString());
        auto *submit = partOf<QPushButton>(&form, "submit");
        QVERIFY(!submit->isEnabled());
        typeInto(&form, "address", WebArchive::address(*m_archive));
        typeInto(&form, "user", QLatin1String(WebArchive::user));
        typeInto(&form, "password", QStringLiteral("wrong"));
        // Nothing can keep a password here, and the window says so.
        QTRY_VERIFY(!partOf<QCheckBox>(&form, "remember")->isEnabled());
        QVERIFY(!partOf<QLabel>(&form, "rememberHint")->text().isEmpty());
        keepPicture(form, QStringLiteral("login"));
        const QSize size = form.size();
        QTest::keyClick(&form, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!partOf<QLabel>(&form, "said")->text().isEmpty(), mostMs);
        QCOMPARE(form.size(), size);
        QVERIFY(told.isEmpty() && !HttpUploadFile::instance()->session().isOpen());
        keepPicture(form, QStringLiteral("login-refused"));

        typeInto(&form, "password", QLatin1String(WebArchive::password));
        submit->click();
        QTRY_COMPARE_WITH_TIMEOUT(told.size(), 1, mostMs);
        QTRY_VERIFY(!form.isVisible());
        QVERIFY(cancelled.isEmpty());
        QCOMPARE(told[0][0].toByteArray(), QByteArray(WebArchive::user));
        QCOMPARE(told[0][2].toByteArray(), HttpUploadFile::instance()->session().id);
        QCOMPARE(told[0][3].toInt(), LoginForm::cloudUser);
        QVERIFY(CloudAccount::isCloudUser());
        QVERIFY(!bytesOf(CloudAccount::file()).contains(WebArchive::password));
        form.show(); // and begins anew
        QVERIFY(partOf<QLineEdit>(&form, "password")->text().isEmpty());
        QCOMPARE(partOf<QLineEdit>(&form, "user")->text(), QLatin1String(WebArchive::user));
    }

    void plainHttpIsWarnedOf()
    {
        LoginForm form;
        form.show();
        typeInto(&form, "address", QStringLiteral("http://192.0.2.7/web"));
        typeInto(&form, "user", QStringLiteral("ann"));
        typeInto(&form, "password", QStringLiteral("x"));
        QVERIFY(partOf<QCheckBox>(&form, "plain")->isVisible()
            && partOf<QLabel>(&form, "plainHint")->isVisible());
        const int height = form.height();
        keepPicture(form, QStringLiteral("login-plain"));
        QTest::keyClick(&form, Qt::Key_Return);
        QTRY_VERIFY(!partOf<QLabel>(&form, "said")->text().isEmpty());
        typeInto(&form, "address", QStringLiteral("https://192.0.2.7/web"));
        QVERIFY(!partOf<QCheckBox>(&form, "plain")->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QVERIFY(form.height() >= height); // it never shrinks under the pointer
    }

    void localUserAndGivingUp()
    {
        LoginForm form;
        QSignalSpy told(&form, &LoginForm::loginInfo);
        QSignalSpy cancelled(&form, &LoginForm::cancelled);
        form.show();
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        QCOMPARE(cancelled.size(), 1);
        form.show();
        partOf<QRadioButton>(&form, "localUser")->click();
        keepPicture(form, QStringLiteral("login-local"));
        partOf<QPushButton>(&form, "submit")->click();
        QCOMPARE(told.size(), 1);
        QCOMPARE(told[0][2].toByteArray(), QByteArray());
        QCOMPARE(told[0][3].toInt(), LoginForm::localUser);
        QVERIFY(bytesOf(CloudAccount::file()).contains("logtype=2"));
        QCOMPARE(cancelled.size(), 1);
    }

    void studiesFoundAndBroughtIn()
    {
        const TemporaryIndex index;
        DownloadCloudDataForm *form = DownloadCloudDataForm::instance();
        form->show();
        keepPicture(*form, QStringLiteral("download-signed-out"));
        QVERIFY(!partOf<QPushButton>(form, "search")->isEnabled());
        const CloudSession session = webSessionAt(WebArchive::address(*m_archive));
        HttpUploadFile::instance()->setSession(session);
        for (int time = 0; time < 3; ++time) { // as often as a window connects
            form->onJessionInfo(session.id);
            form->reflesh();
        }
        QCOMPARE(unnamedControl(*form), QString());
        QSignalSpy imported(form, &DownloadCloudDataForm::imported);
        QTest::keyClick(partOf<QLineEdit>(form, "name"), Qt::Key_Return);
        auto *studies = partOf<QTreeView>(form, "studies");
        QTRY_COMPARE_WITH_TIMEOUT(studies->model()->rowCount(), 2, mostMs);
        studies->expand(studies->model()->index(0, 0));
        QTRY_VERIFY_WITH_TIMEOUT(studies->model()->rowCount(studies->model()->index(0, 0)) > 1, mostMs);
        studies->setCurrentIndex(studies->model()->index(1, 0));
        QTest::keyClick(studies, Qt::Key_Space); // a study whose series nobody has asked for
        studies->setCurrentIndex(studies->model()->index(0, 0, studies->model()->index(0, 0)));
        QTest::keyClick(studies, Qt::Key_Space);
        keepPicture(*form, QStringLiteral("download-found"));
        QTest::keyClick(studies, Qt::Key_Return);
        const QString images = QStringLiteral("SELECT count(*) FROM imageformat");
        QTRY_COMPARE_WITH_TIMEOUT(index.query(images).toInt(), 8, mostMs);
        const QModelIndex held = studies->model()->index(1, CloudStudyModel::IndexColumn);
        QTRY_COMPARE_WITH_TIMEOUT(held.data().toString(), QStringLiteral("all"), mostMs);
        QVERIFY(!imported.isEmpty());
        QTRY_COMPARE(partOf<QTreeView>(form, "downloads")->model()->rowCount(), 2);
        QTRY_VERIFY(!DownloadCloudDataForm::isDownloading());
        keepPicture(*form, QStringLiteral("download-done"));
        HttpUploadFile::instance()->endSession();
        QCOMPARE(studies->model()->rowCount(), 0);
        delete form;
        DownloadEngine::release();
    }

    /// It is said when that is, and who stops it presses nothing else by the next Space.
    void aServiceThatIsAwayIsAskedAgain()
    {
        const TemporaryIndex index;
        DownloadCloudDataForm *form = DownloadCloudDataForm::instance();
        form->show();
        CloudSession session;
        session.service.address = QUrl(QStringLiteral("http://127.0.0.1:%1/web").arg(freePort()));
        session.id = CloudSession::opaqueId();
        HttpUploadFile::instance()->setSession(session);
        form->reflesh();
        keepPicture(*form, QStringLiteral("download-empty"));
        DownloadEngine::current()->add({QStringLiteral("1.7"), QStringLiteral("Meyer, Anna"),
            {{QStringLiteral("1.7.1"), 4}, {QStringLiteral("1.7.2"), 2}}});
        auto *notice = partOf<RetryNotice>(form, "retryNotice");
        QTRY_VERIFY(notice->isVisible());
        QTRY_VERIFY(partOf<QLabel>(notice, "retryText")->text().contains(QLatin1String("0:0")));
        keepPicture(*form, QStringLiteral("download-away"));
        auto *downloads = partOf<QTreeView>(form, "downloads");
        auto *stop = partOf<QPushButton>(form, "stop");
        downloads->selectAll();
        stop->setFocus();
        stop->click();
        QTRY_VERIFY(!stop->isEnabled());
        QCOMPARE(form->focusWidget(), downloads);
        QTRY_VERIFY(!notice->isVisible());
        delete form;
        DownloadEngine::release();
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<DicomServer> m_archive;
};

PM_TEST_MAIN(CloudWindowsTest)
#include "tst_cloudwindows.moc"
