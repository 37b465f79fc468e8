#include "workstationwindow.h"

#include "actionmenus.h"
#include "createconnection.h"
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
#include "liverefresh.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "rowkeys.h"
#include "seriesform.h"
#include "statuspanel.h"
#include "studyform.h"
#include "tableinfoform.h"
#include "treecontroller.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDate>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLocale>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QSqlTableModel>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int idleLookMs = 50;
constexpr QSize firstSize{1440, 900};
/// Shares of the height: information panel, patients, studies, series, images.
const QList<int> tableShares{80, 250, 130, 170, 330};
constexpr char geometryKey[] = "window/geometry";
constexpr char splitterKey[] = "window/tables";

} // namespace

WorkstationWindow::WorkstationWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_library(new PatientManagerMainWindow(this))
    , m_hasIndex(connectionFailure().reason == ConnectionFailure::Reason::None)
    , m_forms{m_library->getPatientForm(), m_library->getStudyForm(), m_library->getSeriesForm(),
          m_library->getImagesForm()}
{
    setObjectName(QStringLiteral("WorkstationWindow"));
    setWindowTitle(tr("Patient Data Manager[*]"));
    // A picture taken without a display keeps its size, whatever the platform calls its screen.
    const bool onScreen = QGuiApplication::platformName() != QLatin1String("offscreen");
    resize(onScreen ? firstSize.boundedTo(screen()->availableSize()) : firstSize);
    build();
    connectParts();
    arrangeTables();
    if (m_hasIndex) {
        sortImages();
    }
    reportIndex();
}

WorkstationWindow::~WorkstationWindow() = default;

void WorkstationWindow::build()
{
    m_library->setWindowFlags(Qt::Widget);
    m_banner = new IndexBanner(this);
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_banner);
    column->addWidget(m_library, 1);
    setCentralWidget(centre);

    m_imports = new ImportCentre(m_library, this);
    m_watcher = new IndexWatcher(this);
    m_health = new IndexHealth(this);
    m_liveRefresh = new LiveRefresh(m_forms, this);
    m_edits = new EditController(m_forms, m_library, this);
    new RowKeys(m_forms, this);
    m_tree = new TreeController(m_library, m_edits, this);
    m_menus = new ActionMenus(this, m_library, {m_edits->editAction(), m_tree->toggleAction()});
    m_statusPanel = new StatusPanel(statusBar(), m_imports);
}

void WorkstationWindow::connectParts()
{
    auto *drops = new DropImport(this);
    connect(drops, &DropImport::dropped, this, &WorkstationWindow::importDropped);
    connect(m_watcher, &IndexWatcher::changed, m_liveRefresh, &LiveRefresh::onIndexChanged);
    connect(m_liveRefresh, &LiveRefresh::refreshed, m_tree, &TreeController::onIndexChanged);
    connect(m_edits, &EditController::refreshed, m_tree, &TreeController::refresh);
    connect(m_tree, &TreeController::left, this, [this] { showTable(QString()); });
    connect(m_tree, &TreeController::problem, m_statusPanel, &StatusPanel::setTreeProblem);
    connect(m_health, &IndexHealth::damaged, this, &WorkstationWindow::reportDamage);
    connect(m_watcher, &IndexWatcher::counted, m_statusPanel, &StatusPanel::setCounts);
    connect(m_imports, &ImportCentre::ended, this, &WorkstationWindow::showResult);
    connect(m_imports, &ImportCentre::switchedOff, this,
        [this] { m_statusPanel->setIdleText(tr("Imports are switched off by the settings.")); });
    connect(m_menus, &ActionMenus::patientsRequested, this, &WorkstationWindow::showPatients);
    connect(m_menus, &ActionMenus::tableRequested, this, &WorkstationWindow::showTable);
    connect(m_menus, &ActionMenus::aboutRequested, this, &WorkstationWindow::showAbout);
    for (const RecordForm *form : qAsConst(m_forms)) {
        connect(
            form, &RecordForm::editsChanged, this, [this] { setWindowModified(m_edits->hasUnsavedEdits()); });
    }
    connect(m_menus, &ActionMenus::quitRequested, this, &QWidget::close);
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

void WorkstationWindow::arrangeTables()
{
    m_library->getStudyForm()->onFixHeight(true);
    m_library->getImagesForm()->onFixHeight(true);
    m_library->getImagesForm()->show();
    if (auto *splitter = m_library->findChild<QSplitter *>()) {
        splitter->setSizes(tableShares);
    }
    for (RecordForm *form : qAsConst(m_forms)) {
        // Whole rows are selected, so that bold captions would say nothing, and clip.
        form->view()->horizontalHeader()->setHighlightSections(false);
    }
}

/// In the order in which they were taken, whatever the order of their files.
void WorkstationWindow::sortImages()
{
    const RecordForm *images = m_forms.last();
    images->view()->sortByColumn(
        images->tableModel()->fieldIndex(QStringLiteral("InstanceNumber")), Qt::AscendingOrder);
}

void WorkstationWindow::restoreLayout()
{
    const QSettings settings;
    restoreGeometry(settings.value(QLatin1String(geometryKey)).toByteArray());
    if (auto *splitter = m_library->findChild<QSplitter *>()) {
        splitter->restoreState(settings.value(QLatin1String(splitterKey)).toByteArray());
    }
}

void WorkstationWindow::saveLayout() const
{
    m_tree->save();
    QSettings settings;
    settings.setValue(QLatin1String(geometryKey), saveGeometry());
    if (const auto *splitter = m_library->findChild<QSplitter *>()) {
        settings.setValue(QLatin1String(splitterKey), splitter->saveState());
    }
}

void WorkstationWindow::showPatients(bool onlyToday)
{
    PatientForm *patients = m_library->getPatientForm();
    if (m_edits->mayDropEdits()) {
        if (onlyToday) {
            const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
            patients->onSearchPatient(QStringLiteral("updated_time >= '%1'").arg(today));
        } else {
            patients->onShowPatient();
        }
        m_menus->setOnlyToday(onlyToday);
    } else {
        m_menus->setOnlyToday(!onlyToday);
    }
}

void WorkstationWindow::showTable(const QString &tableName)
{
    if (!tableName.isEmpty()) {
        m_library->onShowTable(tableName);
        m_library->getTableInfoForm()->hide(); // it speaks of what the tree has shown
        return;
    }
    const bool stoodAlone =
        std::any_of(m_forms.begin(), m_forms.end(), [](const RecordForm *form) { return form->isHidden(); });
    m_library->getTableInfoForm()->hide();
    for (RecordForm *form : qAsConst(m_forms)) {
        form->show();
        form->reload(); // what came in while it was hidden
    }
    arrangeTables();
    if (stoodAlone) {
        rejoinTables();
    }
}

/// While one table stood alone the tree filled it: the tables follow the chosen patient again, or nobody.
void WorkstationWindow::rejoinTables()
{
    if (m_edits->hasUnsavedEdits()) {
        return;
    }
    PatientForm *patients = m_library->getPatientForm();
    NTableView *view = patients->view();
    const QModelIndexList selected = view->selectedIndexes();
    if (selected.isEmpty()) {
        m_library->getStudyForm()->onSelectPatient(0);
    } else {
        patients->selectIndex(selected.constFirst());
    }
}

void WorkstationWindow::selectFirst()
{
    for (int level = 0; level < m_forms.size() - 1; ++level) {
        NTableView *view = m_forms[level]->view();
        if (!view->model() || view->model()->rowCount() == 0) {
            return;
        }
        view->selectRow(0);
        emit view->clicked(view->currentIndex());
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
        && kivMessageBoxForm::question(this, tr("Quit"),
               tr("An import is running. Stop it and quit? What has been imported stays; importing the same "
                  "folder again completes it."),
               kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel)
            == kivMessageBoxForm::AnswerCancel) {
        return false;
    }
    return m_edits->mayDropEdits();
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
