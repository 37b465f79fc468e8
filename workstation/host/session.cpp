#include "session.h"

#include "anonymizeform.h"
#include "appearancesettings.h"
#include "chosenrecords.h"
#include "cloudcontroller.h"
#include "createconnection.h"
#include "databasesetform.h"
#include "exportcontroller.h"
#include "importcentre.h"
#include "importreporttext.h"
#include "kivmessageboxform.h"
#include "mainsetting.h"
#include "runningcorrection.h"
#include "settingsnotifier.h"
#include "sharedwindows.h"
#include "shownpatients.h"
#include "startsequence.h"
#include "statuspanel.h"
#include "treecontroller.h"
#include "workstationwindow.h"

#include <QApplication>
#include <QFileInfo>

namespace {

constexpr int lookMs = 100;

/// What windows left to the event loop goes now: some of it still holds the index.
void deleteWhatIsLeft()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

WorkstationSession::WorkstationSession(CommandLine line, QObject *parent)
    : QObject(parent)
    , m_line(std::move(line))
{
    m_look.setInterval(lookMs);
    connect(&m_look, &QTimer::timeout, this, &WorkstationSession::tryChange);
    const SettingsNotifier *notifier = SettingsNotifier::instance();
    connect(notifier, &SettingsNotifier::indexRequested, this, &WorkstationSession::openIndex);
    connect(notifier, &SettingsNotifier::languageChanged, this, &WorkstationSession::changeLanguage);
}

WorkstationSession::~WorkstationSession()
{
    dismantle();
}

void WorkstationSession::start()
{
    // Between two windows there is none, and no end either.
    QApplication::setQuitOnLastWindowClosed(false);
    speak();
    build();
    show();
    auto *sequence = new StartSequence(m_line, m_window.get());
    connect(sequence, &StartSequence::quitWanted, this, &WorkstationSession::quitWanted);
    QTimer::singleShot(0, sequence, &StartSequence::begin);
}

void WorkstationSession::speak()
{
    m_keptLanguage = AppearanceSettings::language();
    m_language.speak(AppearanceSettings::spokenLanguage());
}

void WorkstationSession::build()
{
    m_window = std::make_unique<WorkstationWindow>(&m_services);
    connect(m_window.get(), &WorkstationWindow::closed, this, [this] { emit quitWanted(0); });
}

void WorkstationSession::show()
{
    if (m_line.screenshot.isEmpty()) {
        m_window->restoreLayout();
    }
    if (m_window->hasIndex()) {
        m_window->tree()->restore();
    }
    m_window->show();
}

void WorkstationSession::dismantle()
{
    m_window.reset();
    SharedWindows::deleteAll();
    const QWidgetList others = QApplication::topLevelWidgets();
    for (QWidget *other : others) {
        if (other->isVisible()) {
            other->close();
        }
    }
    deleteWhatIsLeft();
}

void WorkstationSession::openIndex(const QString &path)
{
    m_wantedIndex = QFileInfo(path).absoluteFilePath();
    request();
}

void WorkstationSession::changeLanguage()
{
    m_wantsLanguage = AppearanceSettings::spokenLanguage() != m_language.spoken();
    request();
}

/// Later: the dialog that asks is one of those that go.
void WorkstationSession::request()
{
    if (m_wantsLanguage || !m_wantedIndex.isEmpty()) {
        m_look.start();
        if (isBusy()) {
            m_window->statusPanel()->setNotice(noticeText());
        }
    } else {
        m_look.stop();
        m_window->statusPanel()->setNotice({});
    }
}

QString WorkstationSession::noticeText() const
{
    return m_wantedIndex.isEmpty() ? tr("The language changes when the work that runs has ended.")
                                   : tr("The other index is opened when the work that runs has ended.");
}

bool WorkstationSession::isBusy() const
{
    // Transfers go on beneath a window of another language, but not with another index.
    const bool isTransferring = !m_wantedIndex.isEmpty()
        && (m_services.retrievals()->isRunning() || CloudController::isTransferring());
    return isTransferring || RunningCorrection::isAny() || m_window->imports()->isRunning()
        || m_window->exports()->isRunning() || AnonymizeForm::isAnyRunning()
        || DataBaseSetForm::isAnyWorkRunning();
}

void WorkstationSession::tryChange()
{
    if (isBusy() || QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
        return;
    }
    m_look.stop();
    m_window->statusPanel()->setNotice({});
    if (m_window->mayBeReplaced()) {
        change();
    } else if (m_wantsLanguage) {
        AppearanceSettings::setLanguage(m_keptLanguage); // else the next start would speak it after all
    }
    m_wantsLanguage = false;
    m_wantedIndex.clear();
}

void WorkstationSession::change()
{
    const ChosenRecords chosen(*m_window);
    const QString oldIndex = databasePath();
    m_window->saveLayout();
    dismantle();
    speak();
    ConnectionFailure failure;
    if (!m_wantedIndex.isEmpty()) {
        failure = changeIndex(oldIndex);
    }
    build();
    show();
    if (databasePath() == oldIndex) {
        chosen.listIn(*m_window);
        // The rows of a search come in later.
        m_window->shownPatients()->onceShown([chosen, window = m_window.get()] { chosen.selectIn(*window); });
    }
    emit rebuilt();
    if (failure.reason != ConnectionFailure::Reason::None) {
        kivMessageBoxForm::warning(m_window.get(), tr("Open Index"), connectionFailureText(failure),
            kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    }
}

/// The old index again where the wanted one cannot be opened. @return why it cannot
ConnectionFailure WorkstationSession::changeIndex(const QString &oldPath)
{
    m_services.closeIndex();
    closeConnection();
    setDatabasePath(m_wantedIndex);
    if (createConnection()) {
        keepIndexPath(m_wantedIndex);
        return {};
    }
    ConnectionFailure failure = connectionFailure();
    setDatabasePath(oldPath);
    return failure;
}

/// For the next start; one that names its index on the command line does so again.
void WorkstationSession::keepIndexPath(const QString &path) const
{
    if (m_line.database.isEmpty()) {
        MainSetting::databasePath().write(path);
    }
}
