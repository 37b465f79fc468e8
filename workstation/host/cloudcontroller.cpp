#include "cloudcontroller.h"

#include "cloudaccount.h"
#include "cloudsignin.h"
#include "correctionfinisher.h"
#include "downloadengine.h"
#include "httpuploadfile.h"
#include "importsettings.h"
#include "kivmessageboxform.h"
#include "loginform.h"
#include "patientmanagermainwindow.h"
#include "swimconfig.h"
#include "uploadprogressform.h"
#include "webfailuretext.h"

#include <QMenu>
#include <QStatusBar>
#include <QToolButton>

#include <algorithm>

CloudController::CloudController(PatientManagerMainWindow *library, QStatusBar *bar, QWidget *window)
    : QObject(window)
    , m_library(library)
    , m_window(window)
    , m_note(new QToolButton(bar))
    , m_menu(new QMenu(m_note))
    , m_signIn(new CloudSignIn(this))
    , m_corrections(new CorrectionFinisher(this))
{
    m_note->setObjectName(QStringLiteral("statusCloud"));
    m_note->setAutoRaise(true);
    m_note->setPopupMode(QToolButton::InstantPopup);
    m_note->setMenu(m_menu);
    bar->addPermanentWidget(m_note);
    connect(m_menu, &QMenu::aboutToShow, this, &CloudController::buildMenu);
    const HttpUploadFile *client = HttpUploadFile::instance();
    connect(client, &HttpUploadFile::sessionChanged, this, &CloudController::onSessionChanged);
    connect(client, &HttpUploadFile::sessionRefused, this, &CloudController::onRefused);
    connect(m_library, &PatientManagerMainWindow::loginInfo, this, &CloudController::showFrame);
    connect(m_library, &PatientManagerMainWindow::loginCancelled, this, &CloudController::showFrame);
    connect(m_library, &PatientManagerMainWindow::told, this, &CloudController::ended);
    connect(m_corrections, &CorrectionFinisher::ended, this, &CloudController::ended);
    connect(m_signIn, &CloudSignIn::signedIn, this,
        [](const CloudSession &session) { HttpUploadFile::instance()->setSession(session); });
    connect(m_signIn, &CloudSignIn::failed, this, &CloudController::onSignInFailed);
    m_again.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, &CloudController::restore);
    update();
}

void CloudController::begin(const QString &databasePath)
{
    m_databasePath = databasePath;
    UploadProgressForm::instance()->resumeUploads();
    // Goes on with what was begun once somebody is signed in.
    DownloadEngine::current()->setPolicy(ImportSettings::policy());
    finishCorrections();
    restore();
}

/// A window in the place of another finds its user signed in.
void CloudController::restore()
{
    if (HttpUploadFile::instance()->session().isOpen()) {
        onSessionChanged();
    } else if (CloudAccount::isCloudUser() && CloudAccount::read().remembers) {
        m_signIn->startRemembered();
        update();
    }
}

/// A service that is away when the workstation starts is asked again, so that uploads go on by themselves.
void CloudController::onSignInFailed(const WebFailure &failure)
{
    constexpr int firstPauseMs = 15'000;
    constexpr int longestPauseMs = 300'000;
    if (failure.problem == WebProblem::Stopped) {
        return;
    }
    m_problem = WebFailureText::of(failure);
    if (failure.isPassing()) {
        m_again.start(std::clamp(2 * m_again.interval(), firstPauseMs, longestPauseMs));
    }
    update();
    if (failure.problem == WebProblem::Unauthorized) {
        onRefused();
    }
}

void CloudController::onSessionChanged()
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    m_signIn->cancel();
    m_again.stop();
    m_problem.clear();
    if (session.isOpen()) {
        m_library->setLoginInfo(session.user.toUtf8(), {}, session.id, LoginForm::cloudUser);
    }
    finishCorrections();
    update();
}

/// Those that were cut short, as far as the session goes.
void CloudController::finishCorrections()
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    if (!m_databasePath.isEmpty()) {
        m_corrections->begin(m_databasePath, session.isOpen() ? session.service : WebService());
    }
}

/// Uploads and downloads wait meanwhile; whoever says no signs in by the status bar later.
void CloudController::onRefused()
{
    if (m_isAsking) {
        return;
    }
    m_isAsking = true;
    QTimer::singleShot(0, this, [this] {
        m_problem = tr("The session has ended.");
        update();
        const int answer = kivMessageBoxForm::question(m_window, tr("Cloud"),
            tr("The cloud service does not accept the session any more. Uploads and downloads wait. Sign in "
               "again?"),
            kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk);
        m_isAsking = false;
        if (answer == kivMessageBoxForm::AnswerOk) {
            signIn();
        }
    });
}

void CloudController::signIn()
{
    m_library->openLogin();
}

void CloudController::signOut()
{
    if (!CloudAccount::read().writeLocal()) {
        kivMessageBoxForm::warning(m_window, tr("Cloud"),
            tr("This file cannot be written, so the next start signs in again: %1").arg(CloudAccount::file()),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    }
    m_library->setLoginInfo({}, {}, {}, LoginForm::localUser);
    HttpUploadFile::instance()->endSession();
}

/// The library shows its own window, which stands in this frame.
void CloudController::showFrame()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    update();
}

void CloudController::buildMenu()
{
    m_menu->clear();
    const bool isSignedIn = HttpUploadFile::instance()->session().isOpen();
    m_menu->addAction(isSignedIn ? tr("Sign In As…") : tr("Sign &In…"), this, &CloudController::signIn);
    if (isSignedIn) {
        m_menu->addAction(tr("Sign &Out"), this, &CloudController::signOut);
    }
    m_menu->addSeparator();
    m_menu->addAction(tr("&Uploads…"), this, [] {
        UploadProgressForm::instance()->show();
        UploadProgressForm::instance()->raise();
    });
    m_menu->addAction(tr("&Settings…"), this, [] { swimconfig::instance()->showPage(swimconfig::Cloud); });
}

QString CloudController::text() const
{
    return m_note->text();
}

void CloudController::update()
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    QString text = tr("Cloud: not signed in");
    QString detail = m_problem;
    if (session.isOpen() && m_problem.isEmpty()) {
        text = session.user.isEmpty() ? tr("Cloud: signed in") : tr("Cloud: %1").arg(session.user);
        detail = tr("Signed in at %1").arg(CloudSession::plainAddress(session.service.address));
    } else if (m_signIn->isRunning()) {
        text = tr("Cloud: signing in…");
    }
    m_note->setText(text);
    m_note->setAccessibleName(text);
    m_note->setToolTip(detail);
}

bool CloudController::isUploading()
{
    return UploadProgressForm::instance()->isUploading();
}

bool CloudController::isTransferring()
{
    return isUploading() || DownloadEngine::isAnyRunning();
}

void CloudController::releaseIndex()
{
    HttpUploadFile::instance()->releaseIndex();
    DownloadEngine::release();
}
