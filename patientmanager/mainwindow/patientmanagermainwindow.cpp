#include "patientmanagermainwindow.h"

#include "createconnection.h"
#include "deletionnotifier.h"
#include "dicomsend.h"
#include "directoryviewer.h"
#include "imageformatform.h"
#include "importsettings.h"
#include "indexconnection.h"
#include "patientform.h"
#include "patienttreeform.h"
#include "qdcmrecvfile.h"
#include "qpatient.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"
#include "ui_patientmanagermainwindow.h"
#include "windowconnections.h"

#include <QDockWidget>
#include <QSplitter>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace {

/// The information panel is a line about the tables, not one of them.
constexpr int informationLines = 5;

/// The gate of everything that writes: false where there is no index to work on.
bool enforceForeignKeys()
{
    const QSqlDatabase index = QSqlDatabase::database();
    return index.isOpen() && QSqlQuery(index).exec(QStringLiteral("PRAGMA foreign_keys = ON"));
}

} // namespace

PatientManagerMainWindow::PatientManagerMainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::PatientManagerMainWindow>())
{
    deletionNotifier = new DeletionNotifier(this);
    ui->setupUi(this);
    createConnection();
    createForms();
    qRegisterMetaType<QList<qlonglong>>("QList<qlonglong>");
    qRegisterMetaType<QPatient *>();
    WindowConnections::connectForms(this);
    connectUploads();
    startReceiver();
    stackForms();
    if (enforceForeignKeys()) {
        openPrivateConnection();
        dataCopyType = ImportSettings::mode();
        loadThread = new QThread(this);
    }
}

PatientManagerMainWindow::~PatientManagerMainWindow()
{
    delete directoryViewer;
    delete sendDialog;
    // Never shown in a dock, and not taken by the host, also not as a window: it goes after this one.
    if (patientTreeForm && !patientTreeForm->parent() && patientTreeForm->isHidden()) {
        patientTreeForm->deleteLater();
    }
    closePrivateConnection();
    stopThreads();
}

void PatientManagerMainWindow::createForms()
{
    patientForm = new PatientForm(nullptr);
    studyForm = new StudyForm(nullptr);
    seriesForm = new SeriesForm(nullptr);
    imagesForm = new ImageformatForm(nullptr);
    patientTreeForm = new PatientTreeForm(nullptr);
    tableInfoForm = new ::tableInfoForm(nullptr);
    imagesForm->hide();
}

void PatientManagerMainWindow::startReceiver()
{
    recvFile = new QDcmRecvFile(nullptr);
    recvFile->moveToThread(&recvThread);
    connect(&recvThread, &QThread::finished, recvFile, &QObject::deleteLater);
    connect(this, &PatientManagerMainWindow::notifyWriteDB, recvFile, &QDcmRecvFile::onNotifyWriteDB);
    connect(recvFile, &QDcmRecvFile::notifyUploadFile, this, &PatientManagerMainWindow::onNotifyUploadFile);
    recvThread.start(QThread::InheritPriority);
}

void PatientManagerMainWindow::stackForms()
{
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(tableInfoForm);
    splitter->addWidget(patientForm);
    splitter->addWidget(studyForm);
    splitter->addWidget(seriesForm);
    splitter->addWidget(imagesForm);
    splitter->setChildrenCollapsible(false);
    setCentralWidget(splitter);
    tableInfoForm->setMaximumHeight(informationLines * tableInfoForm->fontMetrics().lineSpacing());
    tableInfoForm->hide();
}

void PatientManagerMainWindow::openPrivateConnection()
{
    connectionName = QUuid::createUuid().toString();
    QSqlDatabase clone = QSqlDatabase::cloneDatabase(QSqlDatabase::database(), connectionName);
    // A clone inherits no PRAGMA. Whoever uses the connection later meets its error there.
    if (clone.open()) {
        IndexConnection::configure(clone);
    }
}

void PatientManagerMainWindow::closePrivateConnection()
{
    if (!connectionName.isEmpty()) {
        QSqlDatabase::removeDatabase(connectionName);
    }
}

QPointer<PatientForm> PatientManagerMainWindow::getPatientForm() const
{
    return patientForm;
}

QPointer<StudyForm> PatientManagerMainWindow::getStudyForm() const
{
    return studyForm;
}

QPointer<SeriesForm> PatientManagerMainWindow::getSeriesForm() const
{
    return seriesForm;
}

QPointer<ImageformatForm> PatientManagerMainWindow::getImagesForm() const
{
    return imagesForm;
}

QPointer<PatientTreeForm> PatientManagerMainWindow::getPatientTreeForm() const
{
    return patientTreeForm;
}

QPointer<::tableInfoForm> PatientManagerMainWindow::getTableInfoForm() const
{
    return tableInfoForm;
}

void PatientManagerMainWindow::showPatientTreeForm()
{
    if (auto *dock = findChild<QDockWidget *>(QLatin1String(treeDockName))) {
        dock->show();
    } else if (patientTreeForm) {
        createTreeDock();
    }
}

void PatientManagerMainWindow::createTreeDock()
{
    auto *dock = new QDockWidget(tr("PatientTree"), this);
    dock->setObjectName(QLatin1String(treeDockName));
    dock->setTitleBarWidget(new QWidget(dock));
    dock->setAllowedAreas(Qt::AllDockWidgetAreas);
    dock->setWidget(patientTreeForm);
    patientTreeForm->setDockWidget(dock);
    if (!restoreDockWidget(dock)) { // where the host has restored a layout with it
        addDockWidget(Qt::LeftDockWidgetArea, dock);
    }
    dock->show(); // in a visible window it would come up only later
}

void PatientManagerMainWindow::showPatientManager() { }

QDateTime PatientManagerMainWindow::getUploadTime() const
{
    return uploadTime;
}
