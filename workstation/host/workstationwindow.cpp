#include "workstationwindow.h"

#include "actionmenus.h"
#include "anonymizeform.h"
#include "cloudcontroller.h"
#include "createconnection.h"
#include "databasesetform.h"
#include "deletioncontroller.h"
#include "dropimport.h"
#include "editcontroller.h"
#include "exportcontroller.h"
#include "filechooser.h"
#include "firstwindowsize.h"
#include "importcentre.h"
#include "importreport.h"
#include "importreporttext.h"
#include "indexbanner.h"
#include "indexhealth.h"
#include "indexwatcher.h"
#include "kivmessageboxform.h"
#include "layoutkeeper.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "querypaneldock.h"
#include "recordform.h"
#include "runningcorrection.h"
#include "searchbar.h"
#include "searchcontroller.h"
#include "sendcontroller.h"
#include "sessionservices.h"
#include "statuspanel.h"
#include "tablestage.h"
#include "transfercontroller.h"
#include "treecontroller.h"
#include "windowbuilder.h"
#include "windowclosing.h"
#include "windowwiring.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLocale>
#include <QTimer>

namespace {

constexpr int idleLookMs = 50;
constexpr QSize firstSize{1440, 900};

} // namespace

WorkstationWindow::WorkstationWindow(SessionServices *services, QWidget *parent)
    : QMainWindow(parent)
    , m_services(services ? services : new SessionServices(this))
{
    setObjectName(QStringLiteral("WorkstationWindow"));
    setWindowTitle(tr("Patient Data Manager[*]"));
    resize(firstWindowSize(this, firstSize));
    WindowBuilder::build(this, *m_services, m_parts);
    m_hasIndex = connectionFailure().reason == ConnectionFailure::Reason::None;
    connectParts();
    guardWork();
    m_parts.stage->arrange();
    if (m_hasIndex) {
        m_parts.stage->sortImages();
        m_parts.search->prepareWhenIdle(m_parts.imports);
    }
    reportIndex();
}

WorkstationWindow::~WorkstationWindow() = default;

void WorkstationWindow::connectParts()
{
    auto *drops = new DropImport(this);
    connect(drops, &DropImport::dropped, this, &WorkstationWindow::importDropped);
    connect(m_parts.health, &IndexHealth::damaged, this, &WorkstationWindow::reportDamage);
    connect(m_parts.imports, &ImportCentre::ended, this, &WorkstationWindow::showResult);
    connect(m_parts.imports, &ImportCentre::switchedOff, this,
        [this] { m_parts.status->setIdleText(tr("Imports are switched off by the settings.")); });
    connect(m_parts.menus, &ActionMenus::importFilesRequested, this, &WorkstationWindow::chooseFiles);
    connect(m_parts.menus, &ActionMenus::aboutRequested, this, &WorkstationWindow::showAbout);
    connect(m_parts.menus, &ActionMenus::quitRequested, this, &QWidget::close);
    for (const RecordForm *form : qAsConst(m_parts.forms)) {
        connect(form, &RecordForm::editsChanged, this,
            [this] { setWindowModified(m_parts.edits->hasUnsavedEdits()); });
    }
    WindowWiring::connectIndex(m_parts);
    WindowWiring::connectListing(m_parts);
    WindowWiring::connectQueryPanel(m_parts);
    WindowWiring::connectSelection(m_parts);
}

/// The work that closing the window would cut short.
void WorkstationWindow::guardWork()
{
    m_parts.closing->add({[this] { return m_parts.imports->isRunning(); },
        tr("An import is running. Stop it and quit? What has been imported stays; importing the same "
           "folder again completes it."),
        [this] { m_parts.imports->cancelAll(); }});
    m_parts.closing->add({[this] { return m_parts.exports->isRunning(); },
        tr("An export is running. Stop it and quit? What it has written so far is removed."),
        [this] { m_parts.exports->cancelAll(); }});
    m_parts.closing->add({[this] { return m_services->retrievals()->isRunning(); },
        tr("Images are being retrieved from an archive. Stop that and quit? What has come stays."),
        [this] { m_services->retrievals()->closeIndex(); }});
    m_parts.closing->add({&CloudController::isTransferring,
        tr("Images are on their way to or from the cloud. Quit? What has not come yet goes on at the next "
           "start."),
        {}});
    m_parts.closing->add({&RunningCorrection::isAny,
        tr("Patient data are being corrected. Stop that and quit? What has begun to be stored in the cloud "
           "comes to its end first; else nothing is changed."),
        &RunningCorrection::stopAll});
    m_parts.closing->add({&AnonymizeForm::isAnyRunning,
        tr("Anonymous copies are being made. Stop that and quit? Nothing of them is kept, except what the "
           "index has taken already."),
        &AnonymizeForm::stopAll});
    // What is left of it is done at the next start.
    m_parts.closing->add(
        {[this] { return m_parts.deletions->isRunning(); }, {}, [this] { m_parts.deletions->stop(); }});
    m_parts.closing->add({&DataBaseSetForm::isAnyWorkRunning,
        tr("The index is being checked, compacted or backed up. Stop that and quit? The index "
           "stays as it was; an unfinished backup is removed."),
        {}});
}

void WorkstationWindow::reportIndex()
{
    m_parts.status->setIndexPath(databasePath());
    if (m_hasIndex) {
        m_parts.watcher->watch(databasePath());
        m_services->openIndex(databasePath());
        new SendController(m_parts.mainWindow, m_services->sending(), this);
        m_parts.transfers->setService(m_services->sending());
        m_parts.deletions->setSends(m_services->sending());
        m_parts.deletions->setUploadCheck(&CloudController::isUploading);
        m_parts.deletions->begin(databasePath());
        m_parts.cloud->begin(databasePath());
        m_parts.health->check(databasePath());
        return;
    }
    m_parts.banner->say(connectionFailureText(connectionFailure()) + QLatin1Char('\n')
        + tr("Start the workstation with --database FILE to use another index."));
    m_parts.status->setIdleText(tr("No index"));
    setAcceptDrops(false);
    m_parts.searchBar->setEnabled(false);
    m_parts.queryPanel->panel()->setEnabled(false);
    if (auto *load = m_parts.mainWindow->findChild<QAction *>(QStringLiteral("actionLoadDir"))) {
        load->setEnabled(false);
    }
}

void WorkstationWindow::reportDamage(const QString &detail)
{
    m_parts.banner->say(
        tr("The index %1 is damaged: %2\nWhat can still be read is shown. Copy the file away, start with "
           "a new index and import the images again; they are not touched.")
            .arg(databasePath(), detail));
}

void WorkstationWindow::restoreLayout()
{
    m_isLayoutKept = true;
    m_parts.queryPanel->restore();
    m_parts.layout->restore();
    if (m_hasIndex) {
        m_parts.search->restore();
    }
}

void WorkstationWindow::saveLayout() const
{
    if (!m_isLayoutKept) {
        return;
    }
    m_parts.layout->save();
    m_parts.queryPanel->save();
    if (m_hasIndex) {
        m_parts.tree->save();
        m_parts.search->save();
    }
}

void WorkstationWindow::chooseFiles()
{
    const QStringList files = FileChooser::toOpenSeveral(
        this, {tr("Import Files"), QString(), tr("All files (*);;ZIP archives (*.zip)")});
    if (!files.isEmpty()) {
        importDropped(files);
    }
}

void WorkstationWindow::importDropped(const QStringList &paths)
{
    activateWindow();
    m_parts.imports->import(paths);
}

void WorkstationWindow::showResult(const ImportReport &report)
{
    const QLocale locale;
    const qint64 entered = report.of(FileVerdict::New) + report.of(FileVerdict::Replaced);
    const qint64 known = report.of(FileVerdict::AlreadyThere);
    m_parts.status->setIdleText(tr(
        "Imported %1 of %Ln file(s); %2 were there already, %3 were not taken", nullptr, int(report.found()))
                                    .arg(locale.toString(entered), locale.toString(known),
                                        locale.toString(report.found() - entered - known)));
}

void WorkstationWindow::showAbout()
{
    kivMessageBoxForm::information(this, tr("About"),
        tr("Patient Data Manager %1\nBuilt with Qt %2")
            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())),
        kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
}

bool WorkstationWindow::mayBeReplaced()
{
    return m_parts.closing->mayBeReplaced();
}

/// What runs stops within a second of being asked to; the window waits for them with its screen alive.
void WorkstationWindow::closeOnceIdle()
{
    if (m_parts.closing->mustWait()) {
        QTimer::singleShot(idleLookMs, this, &WorkstationWindow::closeOnceIdle);
    } else {
        close();
    }
}

void WorkstationWindow::closeEvent(QCloseEvent *event)
{
    if (!m_closing) {
        if (!m_parts.closing->mayClose()) {
            event->ignore();
            return;
        }
        m_closing = true;
        saveLayout();
    }
    if (m_parts.closing->mustWait()) {
        setEnabled(false);
        m_parts.status->setIdleText(tr("Stopping…"));
        m_parts.closing->cancel();
        event->ignore();
        QTimer::singleShot(idleLookMs, this, &WorkstationWindow::closeOnceIdle);
        return;
    }
    event->accept();
    emit closed();
}
