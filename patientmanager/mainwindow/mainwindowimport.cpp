// The window's imports: the picker, the forwarding, and the loaders that take turns on the loader thread.
#include "patientmanagermainwindow.h"

#include "datasavetypeform.h"
#include "directoryviewer.h"
#include "forwarding.h"
#include "importprogresswidget.h"
#include "importrunner.h"
#include "importsettings.h"
#include "kivmessageboxform.h"
#include "nrunnable.h"
#include "ui_patientmanagermainwindow.h"

#include <QAction>
#include <QDebug>
#include <QDir>

#include <algorithm>
#include <utility>

namespace {

/// A picked root comes as "//": a whole computer is more than anyone means to import by a slip.
bool confirmsPath(const QString &path)
{
    if (!QDir(QDir::cleanPath(path)).isRoot()) {
        return true;
    }
    const int answer = kivMessageBoxForm::question(nullptr, PatientManagerMainWindow::tr("Import"),
        PatientManagerMainWindow::tr("Import everything below the root folder of this computer?"),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel);
    return answer != kivMessageBoxForm::AnswerCancel;
}

} // namespace

void PatientManagerMainWindow::on_actionLoadDir_triggered()
{
    if (directoryViewer) {
        directoryViewer->deleteLater();
    }
    auto *viewer = new DirectoryViewer(nullptr);
    directoryViewer = viewer;
    connect(viewer, &DirectoryViewer::selectPath, this, &PatientManagerMainWindow::onLoadSelecetPath,
        Qt::UniqueConnection);
    viewer->exec();
}

void PatientManagerMainWindow::onLoadSelecetPath(QString filePath)
{
    if (!confirmsPath(filePath)) {
        return;
    }
    forwordData(filePath);
    loadList = QStringList{std::move(filePath)};
    if (dataCopyType == ImportSettings::askMode) {
        DataSaveTypeForm *choice = DataSaveTypeForm::instance();
        choice->show();
        connect(choice, &DataSaveTypeForm::dataType, this, &PatientManagerMainWindow::onLoadDir);
    } else if (ImportSettings::isMode(dataCopyType)) {
        onLoadDir(dataCopyType);
    }
}

void PatientManagerMainWindow::onLoadDir(int type)
{
    if (loadThread) {
        startLoader(loadList, type);
    }
    disconnect(DataSaveTypeForm::instance(), &DataSaveTypeForm::dataType, this,
        &PatientManagerMainWindow::onLoadDir);
}

void PatientManagerMainWindow::startLoader(const QStringList &paths, int type)
{
    auto *loader = new NRunnable;
    const bool accepted = loader->loadDirectors(paths, type) == 0;
    // By the action, so that a host which asks before a refresh drops edits is asked here, too.
    connect(loader->notifier(), &LoadNotifier::finishReadFiles, ui->actionRefresh, &QAction::trigger);
    connect(
        loader->notifier(), &LoadNotifier::finishReadFiles, this, [this, loader] { retireLoader(loader); });
    ImportProgressWidget *progress = loader->progressWidget();
    connect(progress, &ImportProgressWidget::retryRequested, this,
        [this, type](const QStringList &failed) { startLoader(failed, type); });
    loaders.append(loader);
    loader->setAutoDelete(true); // no pool is involved: retireLoader() deletes it
    loader->moveToThread(loadThread);
    // Queued, since the loader lives elsewhere; disconnected at once, so that no later import starts it
    // again.
    connect(this, &PatientManagerMainWindow::runnable, loader, &NRunnable::runRunnable);
    loadThread->start(QThread::InheritPriority);
    emit runnable();
    disconnect(this, &PatientManagerMainWindow::runnable, loader, &NRunnable::runRunnable);
    progress->setVisible(accepted); // a refused run ends at once and has nothing to show
}

void PatientManagerMainWindow::retireLoader(NRunnable *loader)
{
    if (loaders.removeOne(loader)) {
        loader->deleteLater(); // on its own thread, once its run has returned
    }
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link this signature
void PatientManagerMainWindow::forwordData(QString path)
{
    qDebug() << "PatientManagerMainWindow::forwordData";
    const QVector<Forwarding::Destination> destinations = Forwarding::destinations();
    if (destinations.isEmpty()) {
        return; // the walk of a large folder would hold the screen for nothing
    }
    const QStringList files = Forwarding::entriesOf(path);
    for (const Forwarding::Destination &destination : destinations) {
        emit notifySendSelectData(files, destination.aeTitle, destination.ip, destination.port);
    }
}

bool PatientManagerMainWindow::isLoadFiles() const
{
    return directoryViewer && !directoryViewer->isHidden();
}

bool PatientManagerMainWindow::isImporting() const
{
    const QList<ImportRunner *> drops = findChildren<ImportRunner *>();
    return !loaders.isEmpty() || std::any_of(drops.begin(), drops.end(), [](const ImportRunner *drop) {
        return drop->isRunning();
    });
}

void PatientManagerMainWindow::cancelImports()
{
    for (NRunnable *loader : qAsConst(loaders)) {
        loader->cancel();
    }
    for (ImportRunner *drop : findChildren<ImportRunner *>()) {
        drop->cancel();
    }
}

void PatientManagerMainWindow::stopThreads()
{
    cancelImports();
    if (loadThread) {
        loadThread->quit();
        loadThread->wait();
    }
    // Their thread has ended, so what it left may be deleted from here; nobody is to refresh for it any more.
    for (NRunnable *loader : qAsConst(loaders)) {
        loader->notifier()->disconnect();
        delete loader->progressWidget();
        delete loader;
    }
    recvThread.quit();
    recvThread.wait();
}
