#include "cloudcontroller.h"
#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "dicomreader.h"
#include "exportrequest.h"
#include "frame.h"
#include "httpuploadfile.h"
#include "keptpicture.h"
#include "kivmessageboxform.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "testfiles.h"
#include "testmain.h"
#include "uploadstatus.h"
#include "websession.h"
#include "windowparts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

namespace {

constexpr int mostMs = 60000;
constexpr int imagesEach = 3;
const QString corrected = QStringLiteral("Dritte^Jürgen");

QByteArray &said()
{
    static QByteArray all;
    return all;
}

QtMessageHandler handlerBefore = nullptr;

void keepMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    said() += text.toUtf8() + '\n';
    handlerBefore(type, context, text);
}

/// The files below a folder that hold a text.
QStringList filesWith(const QString &folder, const QByteArray &text)
{
    QStringList found;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (bytesOf(path).contains(text)) {
            found.append(path);
        }
    }
    return found;
}

/// The command lines of this process and its children.
QByteArray ownCommandLines()
{
    QByteArray lines;
    for (const QString &process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QByteArray status = bytesOf(QStringLiteral("/proc/%1/status").arg(process));
        const QByteArray own = QByteArray::number(::getpid()) + '\n';
        if (status.contains("\nPPid:\t" + own) || status.contains("\nPid:\t" + own)) {
            lines += bytesOf(QStringLiteral("/proc/%1/cmdline").arg(process));
        }
    }
    return lines;
}

} // namespace

/**
 * A working day with the cloud, by what a person does at the windows and a real archive at the other end:
 * signed in, two patients uploaded, one of them deleted here, a third downloaded, its name corrected,
 * anonymised into the index, exported. Whatever it writes and says has no password in it.
 */
class CloudSceneTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        allowWarning(QStringLiteral("must only be called once")); // Qt's own, where a server cuts the line
        handlerBefore = qInstallMessageHandler(keepMessage);
        m_archive = WebArchive::start();
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        ConfigLocation::setBase(m_folder->path());
        for (const char *name : {"main.ini", "username.ini"}) {
            writeFile(m_folder->filePath(QStringLiteral("config/") + QLatin1String(name)), {});
        }
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("tmp")));
        qputenv("TMPDIR", QFile::encodeName(m_folder->filePath(QStringLiteral("tmp"))));
        m_questions.clear();
        m_answer = kivMessageBoxForm::AnswerOk;
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
            m_questions.append(request.text);
            return m_answer;
        });
        m_frame = std::make_unique<Frame>();
    }

    void cleanup()
    {
        HttpUploadFile::instance()->endSession();
        CloudController::releaseIndex();
        m_frame.reset();
        kivMessageBoxForm::setAnswerer({});
        ConfigLocation::setBase({});
        qunsetenv("TMPDIR");
    }

    void aDayWithTheCloud()
    {
        const QString local = m_folder->filePath(QStringLiteral("local"));
        const QString remote = m_folder->filePath(QStringLiteral("remote"));
        writePatient(1, local);
        writePatient(2, local);
        writePatient(3, remote);
        m_archive->fill({remote});
        m_frame->index.import({local}, ImportMode::Copy);
        using Step = std::function<void()>;
        for (const Step &step :
            {Step([this] { uploads(QStringLiteral("P1")); }), Step([this] { uploads(QStringLiteral("P2")); }),
                Step([this] { deletes(QStringLiteral("P1")); }), Step([this] { downloads(); }),
                Step([this] { correctsTheName(); }), Step([this] { anonymises(); }),
                Step([this] { exports(); }), Step([this] { keptNoSecret(); })}) {
            step();
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void aWindowFindsItsUserSignedIn()
    {
        QVERIFY(m_frame->window->cloud()->text().contains(QStringLiteral("not signed in")));
        CloudSession session = webSessionAt(WebArchive::address(*m_archive));
        session.user = QStringLiteral("zoe");
        HttpUploadFile::instance()->setSession(session);
        QVERIFY(m_frame->window->cloud()->text().contains(QStringLiteral("zoe")));
        m_frame->window = std::make_unique<WorkstationWindow>();
        QVERIFY(m_frame->window->cloud()->text().contains(QStringLiteral("zoe")));
        m_frame->action("actionDownloadCloudData")->trigger();
        QTRY_VERIFY(windowCalled<QWidget>("DownloadCloudDataForm"));
        windowCalled<QWidget>("DownloadCloudDataForm")->close();
    }

    void aRefusedSessionIsAskedAboutOnce()
    {
        m_answer = kivMessageBoxForm::AnswerCancel;
        emit HttpUploadFile::instance()->sessionRefused();
        emit HttpUploadFile::instance()->sessionRefused();
        QTRY_COMPARE(m_questions.size(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(m_questions.size(), 1);
        QVERIFY(!windowCalled<QWidget>("LoginForm"));
        m_answer = kivMessageBoxForm::AnswerOk;
        emit HttpUploadFile::instance()->sessionRefused();
        QTRY_VERIFY(windowCalled<QWidget>("LoginForm"));
        windowCalled<QWidget>("LoginForm")->close();
        QTRY_VERIFY(m_frame->window->library()->isVisible());
    }

    void deletionAsksAboutWaitingUploads()
    {
        const QString local = m_folder->filePath(QStringLiteral("local"));
        writePatient(1, local);
        m_frame->index.import({local});
        m_frame->index.query(
            QStringLiteral("INSERT INTO uploadtask (pk, Service) VALUES (1, 'https://a.example')"));
        m_frame->index.query(
            QStringLiteral("INSERT INTO uploadfile (task_fk, FilePath, SOPInstanceUID, SeriesInstanceUID) "
                           "VALUES (1, '/x', '1.2.9.1.5.1', '1.2.9.1.4')"));
        choose(QStringLiteral("P1"));
        m_questions.clear();
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &request) {
            m_questions.append(request.text);
            return request.text.contains(QStringLiteral("wait to be uploaded"))
                ? kivMessageBoxForm::AnswerCancel
                : kivMessageBoxForm::AnswerOk;
        });
        m_frame->action("actionDelete")->trigger();
        QTRY_VERIFY(m_questions.join(QLatin1Char('\n')).contains(QStringLiteral("1 image(s) still wait")));
        QCOMPARE(images(), imagesEach);
    }

private:
    void writePatient(int number, const QString &folder) const
    {
        const QString uid = QStringLiteral("1.2.9.%1").arg(number);
        for (int image = 1; image <= imagesEach; ++image) {
            DicomFileBuilder()
                .patient(QStringLiteral("P%1").arg(number), QStringLiteral("Patient^Number%1").arg(number))
                .uids(uid, uid + QStringLiteral(".4"), QStringLiteral("%1.5.%2").arg(uid).arg(image))
                .instanceNumber(image)
                .write(QStringLiteral("%1/%2-%3.dcm").arg(folder).arg(number).arg(image));
        }
    }

    /// What asked for it goes on behind it.
    void signsIn() const
    {
        QTRY_VERIFY(windowCalled<QWidget>("LoginForm"));
        QWidget *login = windowCalled<QWidget>("LoginForm");
        typeInto(login, "address", WebArchive::address(*m_archive));
        typeInto(login, "user", QLatin1String(WebArchive::user));
        typeInto(login, "password", QLatin1String(WebArchive::password));
        keepPicture(*login, QStringLiteral("scene-login"));
        clickPart(login, "submit");
        QTRY_VERIFY_WITH_TIMEOUT(HttpUploadFile::instance()->session().isOpen(), mostMs);
        QTRY_VERIFY(!login->isVisible());
        QVERIFY(m_frame->window->isVisible());
        QVERIFY(m_frame->window->library()->isVisible());
        QVERIFY(!m_frame->window->library()->isWindow());
        QVERIFY(m_frame->window->cloud()->text().contains(QLatin1String(WebArchive::user)));
    }

    void uploads(const QString &patientId) const
    {
        choose(patientId);
        m_frame->action("actionUploadCloudData")->trigger();
        if (!HttpUploadFile::instance()->session().isOpen()) {
            signsIn();
        }
        const auto status = [&] {
            return m_frame->index
                .query(QStringLiteral("SELECT Status FROM patient WHERE PatientID = ?"), {patientId})
                .toString();
        };
        QTRY_COMPARE_WITH_TIMEOUT(status(), UploadStatus::uploaded(), mostMs);
        QTRY_VERIFY(!CloudController::isUploading());
    }

    void deletes(const QString &patientId) const
    {
        choose(patientId);
        const int before = images();
        m_frame->action("actionDelete")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(images(), before - imagesEach, mostMs);
    }

    void downloads() const
    {
        m_frame->action("actionDownloadCloudData")->trigger();
        QTRY_VERIFY(windowCalled<QWidget>("DownloadCloudDataForm"));
        QWidget *form = windowCalled<QWidget>("DownloadCloudDataForm");
        auto *studies = partOf<QAbstractItemView>(form, "studies");
        clickPart(form, "search");
        const auto found = [studies] {
            const QModelIndexList rows = studies->model()->match(studies->model()->index(0, 0),
                Qt::DisplayRole, QStringLiteral("Number3"), 1, Qt::MatchContains);
            return rows.value(0);
        };
        QTRY_VERIFY_WITH_TIMEOUT(found().isValid(), mostMs);
        QVERIFY(studies->model()->setData(found(), Qt::Checked, Qt::CheckStateRole));
        const int before = images();
        clickPart(form, "download");
        QTRY_COMPARE_WITH_TIMEOUT(images(), before + imagesEach, mostMs);
        keepPicture(*form, QStringLiteral("scene-download"));
        form->close();
    }

    void correctsTheName() const
    {
        choose(QStringLiteral("P3"));
        Frame::click(m_frame->studyView(), 0, QStringLiteral("StudyDate"));
        m_frame->action("actionPatientInfoEdit")->trigger();
        QTRY_VERIFY(windowCalled<QWidget>("CloudPaientInfoForm"));
        QPointer<QWidget> editor = windowCalled<QWidget>("CloudPaientInfoForm");
        auto *name = partOf<QLineEdit>(editor, "PatientName");
        QTRY_VERIFY_WITH_TIMEOUT(name->isEnabled(), mostMs);
        name->setText(corrected);
        clickPart(editor, "save");
        const auto *answer = partOf<QLabel>(editor, "said");
        QTRY_VERIFY2_WITH_TIMEOUT(
            answer->text().contains(QStringLiteral("index and service")), qPrintable(answer->text()), mostMs);
        keepPicture(*editor, QStringLiteral("scene-editor"));
        editor->close();
        QTRY_COMPARE(
            count(QStringLiteral("SELECT count(*) FROM patient WHERE PatientName = '%1'").arg(corrected)), 1);
    }

    void anonymises() const
    {
        choose(QStringLiteral("P3"));
        const int before = images();
        m_frame->action("actionAnonymize")->trigger();
        const QWidget *form = partOf<QWidget>(m_frame->window.get(), "anonymize");
        clickPart(form, "toIndex");
        clickPart(form, "start");
        const auto *question = partOf<QWidget>(form, "question");
        QTRY_VERIFY_WITH_TIMEOUT(question->isVisible() || images() > before, mostMs);
        if (question->isVisible()) {
            clickPart(form, "looked");
            clickPart(form, "keepAll");
        }
        QTRY_COMPARE_WITH_TIMEOUT(images(), before + imagesEach, mostMs);
        QCOMPARE(
            count(QStringLiteral("SELECT count(*) FROM patient WHERE PatientName = '%1'").arg(corrected)), 1);
    }

    /// What leaves has the corrected name, as the service's objects had it.
    void exports()
    {
        choose(QStringLiteral("P3"));
        m_frame->action("actionExportAs")->trigger();
        QTRY_VERIFY(windowCalled<QDialog>("exportDialog"));
        auto *dialog = windowCalled<QDialog>("exportDialog");
        dialog->findChild<QButtonGroup *>()->button(int(ExportFormat::NamedFolders))->click();
        const QString target = m_folder->filePath(QStringLiteral("exported"));
        QVERIFY(QDir().mkpath(target));
        partOf<QLineEdit>(dialog, "exportTarget")->setText(target);
        dialog->accept();
        QTRY_COMPARE_WITH_TIMEOUT(filesBelow(target, {QStringLiteral("*")}).size(), imagesEach, mostMs);
        for (const QString &file : filesBelow(target, {QStringLiteral("*")})) {
            QCOMPARE(DicomReader().read(QFile::encodeName(file)).header[Attribute::PatientName], corrected);
        }
    }

    void keptNoSecret() const
    {
        const QByteArray marker(WebArchive::password);
        const QByteArray session = HttpUploadFile::instance()->getJsessionid();
        const QByteArray sent =
            WebService::basic(QLatin1String(WebArchive::user), QLatin1String(WebArchive::password)).mid(6);
        QVERIFY(!filesWith(m_frame->index.folder(), "Number2").isEmpty()); // what is there is found
        for (const QByteArray &secret : {marker, session, sent}) {
            for (const QString &folder : {m_folder->path(), m_frame->index.folder(), QDir::homePath()}) {
                QCOMPARE(filesWith(folder, secret), QStringList());
            }
            QVERIFY(!said().contains(secret));
            QVERIFY(!ownCommandLines().contains(secret));
        }
    }

    void choose(const QString &patientId) const
    {
        const NTableView *view = m_frame->patientView();
        const int column = Frame::columnOf(m_frame->patientView(), QStringLiteral("PatientID"));
        const auto row = [&] {
            for (int at = 0; at < view->model()->rowCount(); ++at) {
                if (view->model()->index(at, column).data().toString() == patientId) {
                    return at;
                }
            }
            return -1;
        };
        QTRY_VERIFY_WITH_TIMEOUT(row() >= 0, mostMs);
        Frame::click(m_frame->patientView(), row(), QStringLiteral("PatientName"));
        QTRY_COMPARE(m_frame->studyView()->model()->rowCount(), 1);
    }

    int images() const { return count(QStringLiteral("SELECT count(*) FROM imageformat")); }
    int count(const QString &sql) const { return m_frame->index.query(sql).toInt(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DicomServer> m_archive;
    std::unique_ptr<Frame> m_frame;
    QStringList m_questions;
    int m_answer = kivMessageBoxForm::AnswerOk;
};

PM_TEST_MAIN(CloudSceneTest)
#include "tst_cloudscene.moc"
