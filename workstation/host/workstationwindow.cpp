#include "workstationwindow.h"

#include "actionmenus.h"
#include "createconnection.h"
#include "databasesetform.h"
#include "dropimport.h"
#include "editcontroller.h"
#include "imageformatform.h"
#include "importcentre.h"
#include "importreport.h"
#include "importreporttext.h"
#include "indexbanner.h"
#include "indexhealth.h"
#include "indexwatcher.h"
#include "kivmessageboxform.h"
#include "launcherbuttons.h"
#include "launchercentre.h"
#include "layoutkeeper.h"
#include "liverefresh.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "picturecontroller.h"
#include "querydates.h"
#include "querypanelcontroller.h"
#include "querypaneldock.h"
#include "rowkeys.h"
#include "runningprograms.h"
#include "searchbar.h"
#include "searchcontroller.h"
#include "selectionstatus.h"
#include "seriesform.h"
#include "shownpatients.h"
#include "statuspanel.h"
#include "studyform.h"
#include "tablestage.h"
#include "treecontroller.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int idleLookMs = 50;
constexpr QSize firstSize{1440, 900};
/// What window managers add around a window, so that the first one fits the screen.
constexpr QSize roomOfFrame{16, 48};

} // namespace

WorkstationWindow::WorkstationWindow(RunningPrograms *programs, QWidget *parent)
    : QMainWindow(parent)
    , m_programs(programs ? programs : new RunningPrograms(this))
    , m_library(new PatientManagerMainWindow(this))
    , m_hasIndex(connectionFailure().reason == ConnectionFailure::Reason::None)
    , m_forms{m_library->getPatientForm(), m_library->getStudyForm(), m_library->getSeriesForm(),
          m_library->getImagesForm()}
{
    setObjectName(QStringLiteral("WorkstationWindow"));
    setWindowTitle(tr("Patient Data Manager[*]"));
    // A picture taken without a display keeps its size, whatever the platform calls its screen.
    const bool onScreen = QGuiApplication::platformName() != QLatin1String("offscreen");
    resize(onScreen ? firstSize.boundedTo(screen()->availableSize() - roomOfFrame) : firstSize);
    build();
    connectParts();
    m_stage->arrange();
    if (m_hasIndex) {
        m_stage->sortImages();
        m_search->prepareWhenIdle(m_imports);
    }
    reportIndex();
}

WorkstationWindow::~WorkstationWindow() = default;

void WorkstationWindow::build()
{
    m_library->setWindowFlags(Qt::Widget);
    m_banner = new IndexBanner(this);
    m_searchBar = new SearchBar(this);
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_banner);
    column->addWidget(m_searchBar);
    column->addWidget(m_library, 1);
    setCentralWidget(centre);

    m_imports = new ImportCentre(m_library, this);
    m_watcher = new IndexWatcher(this);
    m_health = new IndexHealth(this);
    m_liveRefresh = new LiveRefresh(m_forms, this);
    m_edits = new EditController(m_forms, m_library, this);
    new RowKeys(m_forms, this);
    m_tree = new TreeController(m_library, m_edits, this);
    m_stage = new TableStage(m_library, m_forms, m_edits, this);
    m_shown = new ShownPatients(m_forms, m_edits, this);
    m_search = new SearchController(m_searchBar, m_shown, m_forms.first()->view(), m_edits, this);
    m_queryPanel = new QueryPanelDock(this);
    m_selection = new SelectionStatus(m_library, m_forms, this);
    m_layout = new LayoutKeeper(this, m_library, m_stage, m_forms, this);
    m_menus = new ActionMenus(this, m_library,
        {m_edits->editAction(), m_tree->toggleAction(), m_search->findAction(),
            m_queryPanel->toggleAction()});
    m_statusPanel = new StatusPanel(statusBar(), m_imports);
}

void WorkstationWindow::connectParts()
{
    auto *drops = new DropImport(this);
    connect(drops, &DropImport::dropped, this, &WorkstationWindow::importDropped);
    connect(m_watcher, &IndexWatcher::changed, m_liveRefresh, &LiveRefresh::onIndexChanged);
    connect(m_liveRefresh, &LiveRefresh::refreshed, m_tree, &TreeController::onIndexChanged);
    connect(m_edits, &EditController::refreshed, m_tree, &TreeController::refresh);
    connect(m_tree, &TreeController::left, m_stage, [this] { m_stage->showTable(QString()); });
    connect(m_tree, &TreeController::problem, m_statusPanel, &StatusPanel::setTreeProblem);
    connect(m_health, &IndexHealth::damaged, this, &WorkstationWindow::reportDamage);
    connect(m_watcher, &IndexWatcher::counted, m_statusPanel, &StatusPanel::setCounts);
    connect(m_imports, &ImportCentre::ended, this, &WorkstationWindow::showResult);
    connect(m_imports, &ImportCentre::switchedOff, this,
        [this] { m_statusPanel->setIdleText(tr("Imports are switched off by the settings.")); });
    connect(m_menus, &ActionMenus::tableRequested, m_stage, &TableStage::showTable);
    connect(m_menus, &ActionMenus::aboutRequested, this, &WorkstationWindow::showAbout);
    for (const RecordForm *form : qAsConst(m_forms)) {
        connect(
            form, &RecordForm::editsChanged, this, [this] { setWindowModified(m_edits->hasUnsavedEdits()); });
    }
    connect(m_menus, &ActionMenus::quitRequested, this, &QWidget::close);
    connectSearch();
    connectQueryPanel();
}

/// The search follows the index, and the menu what is listed.
void WorkstationWindow::connectSearch()
{
    connect(m_watcher, &IndexWatcher::changed, m_shown, &ShownPatients::onIndexChanged);
    connect(m_watcher, &IndexWatcher::counted, m_search, &SearchController::setCounts);
    connect(m_shown, &ShownPatients::outdated, m_liveRefresh, &LiveRefresh::onIndexChanged);
    connect(m_shown, &ShownPatients::listed, m_stage, &TableStage::showPatients);
    const auto tell = [this] { m_menus->setShown(m_shown->text(), m_shown->pick()); };
    connect(m_shown, &ShownPatients::changed, m_menus, tell);
    connect(m_menus, &ActionMenus::patientsRequested, m_shown, [this, tell](DatePick pick) {
        m_shown->show(QString(), pick);
        tell(); // what was listed before, where the user keeps unsaved edits
    });
}

void WorkstationWindow::connectQueryPanel()
{
    PatientQueryForm *panel = m_queryPanel->panel();
    const auto *controller = new QueryPanelController(panel, m_library, m_shown, m_edits, m_tree);
    connect(controller, &QueryPanelController::allTablesWanted, m_stage,
        [this] { m_stage->showTable(QString()); });
    connect(controller, &QueryPanelController::told, m_statusPanel, &StatusPanel::setListing);
    connect(m_watcher, &IndexWatcher::changed, new QueryDates(panel), &QueryDates::update);
    // Behind the stage, which lets the tables follow their own selection.
    connect(m_tree, &TreeController::left, m_selection, &SelectionStatus::leaveTree);
    connect(m_shown, &ShownPatients::listed, m_selection, &SelectionStatus::leaveTree);
    connect(m_liveRefresh, &LiveRefresh::refreshed, m_selection, &SelectionStatus::dropGone);
    connect(m_selection, &SelectionStatus::changed, m_statusPanel,
        [this] { m_statusPanel->setSelection(m_selection->current().text()); });
    m_pictures = new PictureController(m_library, m_queryPanel->thumbnailBody(), this);
    m_pictures->setGuard([this] { return m_edits->mayDropEdits(); });
    connect(m_liveRefresh, &LiveRefresh::refreshed, m_pictures, &PictureController::onIndexChanged);
    new LauncherButtons(panel, statusBar(), m_selection, new LauncherCentre(m_programs, m_selection, this));
}

void WorkstationWindow::reportIndex()
{
    m_statusPanel->setIndexPath(databasePath());
    if (m_hasIndex) {
        m_watcher->watch(databasePath());
        m_health->check(databasePath());
        return;
    }
    m_banner->say(connectionFailureText(connectionFailure()) + QLatin1Char('\n')
        + tr("Start the workstation with --database FILE to use another index."));
    m_statusPanel->setIdleText(tr("No index"));
    setAcceptDrops(false);
    m_searchBar->setEnabled(false);
    m_queryPanel->panel()->setEnabled(false);
    if (auto *load = m_library->findChild<QAction *>(QStringLiteral("actionLoadDir"))) {
        load->setEnabled(false);
    }
}

void WorkstationWindow::reportDamage(const QString &detail)
{
    m_banner->say(
        tr("The index %1 is damaged: %2\nWhat can still be read is shown. Copy the file away, start with "
           "a new index and import the images again; they are not touched.")
            .arg(databasePath(), detail));
}

void WorkstationWindow::restoreLayout()
{
    m_isLayoutKept = true;
    m_queryPanel->restore();
    m_layout->restore();
    if (m_hasIndex) {
        m_search->restore();
    }
}

void WorkstationWindow::saveLayout() const
{
    if (!m_isLayoutKept) {
        return;
    }
    m_layout->save();
    m_queryPanel->save();
    if (m_hasIndex) {
        m_tree->save();
        m_search->save();
    }
}

void WorkstationWindow::importDropped(const QStringList &paths)
{
    activateWindow();
    m_imports->import(paths);
}

void WorkstationWindow::showResult(const ImportReport &report)
{
    const QLocale locale;
    const qint64 entered = report.of(FileVerdict::New) + report.of(FileVerdict::Replaced);
    const qint64 known = report.of(FileVerdict::AlreadyThere);
    m_statusPanel->setIdleText(
        tr("Imported %1 of %2 files; %3 were there already, %4 were not taken")
            .arg(locale.toString(entered), locale.toString(report.found()), locale.toString(known),
                locale.toString(report.found() - entered - known)));
}

void WorkstationWindow::showAbout()
{
    kivMessageBoxForm::information(this, tr("About"),
        tr("Patient Data Manager %1\nBuilt with Qt %2")
            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())),
        kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
}

bool WorkstationWindow::mayClose()
{
    if (!m_tree->mayClose()) {
        return false;
    }
    if (m_imports->isRunning()
        && !mayStop(
            tr("An import is running. Stop it and quit? What has been imported stays; importing the same "
               "folder again completes it."))) {
        return false;
    }
    if (DataBaseSetForm::isAnyWorkRunning()
        && !mayStop(tr("The index is being checked, compacted or backed up. Stop that and quit? The index "
                       "stays as it was; an unfinished backup is removed."))) {
        return false;
    }
    return m_edits->mayDropEdits();
}

bool WorkstationWindow::mayStop(const QString &question)
{
    return kivMessageBoxForm::question(
               this, tr("Quit"), question, kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel)
        != kivMessageBoxForm::AnswerCancel;
}

bool WorkstationWindow::mayBeReplaced()
{
    return m_tree->mayClose() && m_edits->mayDropEdits();
}

/// Imports stop within a second of being asked to; the window waits for them with its screen alive.
void WorkstationWindow::closeOnceIdle()
{
    if (m_imports->isRunning()) {
        QTimer::singleShot(idleLookMs, this, &WorkstationWindow::closeOnceIdle);
    } else {
        close();
    }
}

void WorkstationWindow::closeEvent(QCloseEvent *event)
{
    if (!m_closing) {
        if (!mayClose()) {
            event->ignore();
            return;
        }
        m_closing = true;
        saveLayout();
    }
    if (m_imports->isRunning()) {
        setEnabled(false);
        m_statusPanel->setIdleText(tr("Stopping…"));
        m_imports->cancelAll();
        event->ignore();
        QTimer::singleShot(idleLookMs, this, &WorkstationWindow::closeOnceIdle);
        return;
    }
    event->accept();
    emit closed();
}
