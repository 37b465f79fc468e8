// The window's cloud: who is signed in, and the windows and programs that depend on it.
#include "patientmanagermainwindow.h"

#include "cloudaccount.h"
#include "cloudpaientinfoform.h"
#include "companionwindow.h"
#include "downloadclouddataform.h"
#include "httpuploadfile.h"
#include "kivmessageboxform.h"
#include "loginform.h"
#include "patientform.h"
#include "qpatient.h"
#include "qstudy.h"
#include "sharedwindow.h"
#include "studyform.h"

#include <QCoreApplication>
#include <QEventLoopLocker>
#include <QFileInfo>
#include <QGenericPluginFactory>
#include <QProcess>

#include <utility>

namespace {

/// A tool of the workstation: it stands above the windows that it serves.
LoginForm *makeLogin()
{
    auto *login = new LoginForm(nullptr);
    login->setWindowFlags(Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
    return login;
}

void tellNoBrowser()
{
    kivMessageBoxForm::warning(nullptr, PatientManagerMainWindow::tr("系统信息"),
        PatientManagerMainWindow::tr("The cloud imaging service is not available on this computer."),
        kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
}

/// One for the library; it is never deleted, as that would end the browser. Nobody reads what it says, so it
/// gets no pipe to fill.
QProcess *browser()
{
    static QProcess *const process = [] {
        auto *made = new QProcess;
        made->setStandardOutputFile(QProcess::nullDevice());
        made->setStandardErrorFile(QProcess::nullDevice());
        QObject::connect(made, &QProcess::errorOccurred, made, [](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                tellNoBrowser();
            }
        });
        return made;
    }();
    return process;
}

/// The absolute path, as a bare name would be looked up elsewhere; empty where there is none.
QString pathOfProgram(const QString &name)
{
    for (const QString &path : {name, QCoreApplication::applicationDirPath() + QLatin1String("//") + name}) {
        if (QFileInfo(path).isFile()) {
            return QFileInfo(path).absoluteFilePath();
        }
    }
    return {};
}

} // namespace

bool PatientManagerMainWindow::isSignedIn() const
{
    return !jsessionid.isEmpty() && userType != LoginForm::localUser;
}

void PatientManagerMainWindow::keepLogin(QByteArray name, QByteArray secret, QByteArray sessionId, int type)
{
    userName = std::move(name);
    password = std::move(secret);
    jsessionid = std::move(sessionId);
    userType = type;
}

void PatientManagerMainWindow::setLoginInfo(
    QByteArray name, QByteArray secret, QByteArray sessionId, int type)
{
    keepLogin(std::move(name), std::move(secret), std::move(sessionId), type);
    if (patientForm) {
        patientForm->setLoginUserType(type);
    }
}

void PatientManagerMainWindow::onLoginInfo(QByteArray name, QByteArray secret, QByteArray sessionId, int type)
{
    keepLogin(std::move(name), std::move(secret), std::move(sessionId), type);
    isClosedForLogin = false;
    emit loginInfo(userName, password, jsessionid, userType);
    if (isWindow()) {
        showMaximized();
    } else {
        show(); // in the frame of a host, which decides about its size
    }
}

/// The current user becomes a local one; what is kept is the index and the wish to be remembered.
void PatientManagerMainWindow::userTypeReflesh()
{
    CloudAccount::read().writeLocal();
}

void PatientManagerMainWindow::openLogin()
{
    if (userType == LoginForm::localUser) {
        userTypeReflesh();
    }
    if (!loginForm) {
        loginForm = sharedWindow<LoginForm>(makeLogin);
    }
    // Again at every opening, as hosts know it: one login is then heard several times.
    connect(loginForm, &LoginForm::loginInfo, this, &PatientManagerMainWindow::onLoginInfo);
    connect(loginForm, &LoginForm::cancelled, this, &PatientManagerMainWindow::onLoginCancelled,
        Qt::UniqueConnection);
    connect(loginForm, &LoginForm::left, this, &PatientManagerMainWindow::onLoginEnded, Qt::UniqueConnection);
    bringUp(loginForm);
    loginForm->raise();
    loginForm->activateWindow();
    emit loginWanted();
}

void PatientManagerMainWindow::onLoginCancelled()
{
    if (isClosedForLogin) {
        isClosedForLogin = false;
        show();
    }
    emit loginCancelled();
    onLoginEnded();
}

void PatientManagerMainWindow::on_actionDownloadCloudData_triggered()
{
    if (isSignedIn()) {
        showDownloads();
    } else {
        isDownloadWaiting = true;
        openLogin();
    }
}

/// What asked for the login goes on.
void PatientManagerMainWindow::onLoginEnded()
{
    if (std::exchange(isDownloadWaiting, false) && isSignedIn()) {
        showDownloads();
    }
    goOnWithUpload();
}

void PatientManagerMainWindow::showDownloads()
{
    if (!downloadForm) {
        downloadForm = DownloadCloudDataForm::instance();
        downloadForm->setMainWindow(this);
        downloadForm->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(downloadForm, &DownloadCloudDataForm::imported, this,
            &PatientManagerMainWindow::readNewPatients, Qt::UniqueConnection);
    }
    // Again at every opening, as hosts know it.
    connect(
        this, &PatientManagerMainWindow::jessionInfo, downloadForm, &DownloadCloudDataForm::onJessionInfo);
    if (userType == LoginForm::cloudUser) {
        emit jessionInfo(jsessionid);
    }
    downloadForm->reflesh();
    bringUp(downloadForm);
}

/// Not while something is being edited, which a host that follows the index reads later.
void PatientManagerMainWindow::readNewPatients()
{
    if (patientForm) {
        patientForm->on_reflash_enable(true);
    }
}

void PatientManagerMainWindow::on_actionPatientInfoEdit_triggered()
{
    if (isSignedIn()) {
        editPatientInfo();
        return;
    }
    const int answer = kivMessageBoxForm::warning(nullptr, tr("系统信息"), tr("请登录云端用户!"),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk);
    if (answer == kivMessageBoxForm::AnswerOk) {
        const QEventLoopLocker open; // for a moment no window may be there
        isClosedForLogin = isVisible();
        close();
        openLogin();
    }
}

void PatientManagerMainWindow::editPatientInfo()
{
    if (studyForm) {
        studyForm->selectList();
    }
    if (selectedPks.isEmpty()) {
        kivMessageBoxForm::information(nullptr, tr("System Hints"),
            tr("Please choose the STUDY you want to edit!"), kivMessageBoxForm::OkOnly,
            kivMessageBoxForm::AnswerOk);
        return;
    }
    QObject *made = QGenericPluginFactory::create(QStringLiteral("cloudpaientinfoform"), QString());
    auto *editor = qobject_cast<CloudPaientInfoForm *>(made);
    if (!editor) {
        if (made) {
            made->deleteLater();
        }
        return;
    }
    const QStudy *study = getPatient(0)->getStudys().value(0);
    if (!study) { // deleted meanwhile
        editor->deleteLater();
        return;
    }
    editor->setSelectPk(selectedPks.constFirst());
    editor->setStudyUID(study->getStudyUID());
    editor->setPatientName(getPatient()->patientName());
    editor->setJsessionid(jsessionid);
    editor->setJsessionid(jsessionid, HttpUploadFile::instance()->getAssistUrl());
}

void PatientManagerMainWindow::on_actionCloudBrower_triggered()
{
    if (browser()->state() != QProcess::NotRunning) {
        return;
    }
    const QString program = pathOfProgram(cloudBrowserExe);
    if (program.isEmpty()) {
        tellNoBrowser();
    } else {
        browser()->start(program, cloudBrowserArgs, QIODevice::ReadWrite);
    }
}
