// The upload window's parts: how they are laid out, and the folder button.
#include "uploadprogressform.h"

#include "ui_uploadprogressform.h"

#include "configlocation.h"
#include "filechooser.h"
#include "firstwindowsize.h"
#include "folderfiles.h"
#include "listheight.h"
#include "recorddelegate.h"
#include "uploadedstates.h"
#include "uploadfailuremodel.h"
#include "uploadrowdelegate.h"
#include "uploadrows.h"
#include "uploadtask.h"

#include <QAction>
#include <QDir>
#include <QHeaderView>
#include <QSettings>

#include <algorithm>

namespace {

constexpr int visibleTasks = 4;
constexpr int visibleFailures = 3;
constexpr QSize usualSize{1080, 560};
enum Head { NumberHead, NameHead, FilesHead, SucceededHead, FailedHead, HeadCount };

QString patientNameTitle()
{
    const QSettings words(ConfigLocation::unchecked(QLatin1String(ConfigKey::langIni)), QSettings::IniFormat);
    return words.value(QStringLiteral("lang/patientName")).toString();
}

} // namespace

UploadProgressForm::UploadProgressForm(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::UploadProgressForm>())
    , m_rows(new UploadRows(
          {tr("患者id"), patientNameTitle(), tr("图像数目"), tr("上传成功"), tr("上传失败")}, this))
    , m_failures(new UploadFailureModel(this))
    , m_folder(new FolderFiles(this))
    , m_states(new UploadedStates(this))
{
    ui->setupUi(this);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    build();
    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &UploadProgressForm::showUploads);
    connect(m_states, &UploadedStates::refreshed, this, &UploadProgressForm::statesRefreshed);
    showUploads();
}

void UploadProgressForm::build()
{
    m_rows->setTallyHeads({tr("Progress"), tr("Rate"), tr("Time left"), tr("State")});
    PlainTableView *view = ui->tableView;
    view->setModel(m_rows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEmptyText(tr("No uploads"));
    view->setMinimumHeight(heightOfRows(*view, visibleTasks));
    view->setItemDelegateForColumn(NameHead, new RecordDelegate(ColumnKind::PersonName, view));
    view->setItemDelegateForColumn(m_rows->columnOf(UploadRows::Progress), new UploadRowDelegate(view));
    const QVector<int> characters{7, 24, 8, 8, 8, 12, 14, 9, 14};
    for (int column = 0; column < characters.size(); ++column) {
        view->setColumnCharacters(column, characters.at(column));
    }
    ui->progressBar->setFormat(QString());
    buildFolderPanel();
    buildFailures();
    connectButtons();
    resetView();
    resize(firstWindowSize(this, usualSize));
}

void UploadProgressForm::buildFolderPanel()
{
    ui->folderPanel->hide();
    connect(m_folder, &FolderFiles::found, this, [this](int files) {
        ui->folderText->setText(tr("Looking through the folder: %Ln file(s) found", nullptr, files));
    });
    connect(m_folder, &FolderFiles::listed, this, &UploadProgressForm::onFolderListed);
    connect(ui->stopFolder, &QPushButton::clicked, this, [this] {
        m_folder->cancel();
        ui->folderPanel->hide();
        enableButtons();
    });
}

void UploadProgressForm::buildFailures()
{
    constexpr int fileCharacters = 56;
    constexpr int patientCharacters = 22;
    ui->failures->setModel(m_failures);
    ui->failures->setPathColumn(UploadFailureModel::FileColumn);
    ui->failures->setColumnCharacters(UploadFailureModel::FileColumn, fileCharacters);
    ui->failures->setColumnCharacters(UploadFailureModel::PatientColumn, patientCharacters);
    ui->failures->setMinimumHeight(heightOfRows(*ui->failures, visibleFailures));
    connect(ui->failures->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &UploadProgressForm::showDetails);
}

void UploadProgressForm::connectButtons()
{
    connect(ui->signIn, &QPushButton::clicked, this, &UploadProgressForm::signInWanted);
    connect(ui->retry, &QPushButton::clicked, this, [this] {
        for (UpLoadTask *task : failedTasks()) {
            task->retryFailed();
        }
    });
    connect(ui->cancelUpload, &QPushButton::clicked, this, [this] {
        if (UpLoadTask *task = chosenTask()) {
            task->finishTask();
        }
    });
    connect(ui->retryNotice, &RetryNotice::tryWanted, this, [this] {
        if (!m_tasks.isEmpty()) {
            m_tasks.first()->tryNow();
        }
    });
    connect(ui->clearFinished, &QPushButton::clicked, this, &UploadProgressForm::clearFinished);
    m_removeRow = new QAction(tr("Re&move from the List"), ui->tableView);
    m_removeRow->setShortcut(QKeySequence::Delete);
    m_removeRow->setShortcutContext(Qt::WidgetShortcut);
    connect(m_removeRow, &QAction::triggered, this, [this] {
        removeEnded(ui->tableView->currentIndex().row());
        enableButtons();
    });
    ui->tableView->addAction(m_removeRow);
    connect(ui->closeWindow, &QPushButton::clicked, this, &QWidget::close);
}

/// The view takes up the model anew, as it was: the chosen row and the widths stay.
void UploadProgressForm::resetView()
{
    PlainTableView *view = ui->tableView;
    const int row = view->currentIndex().row();
    const QByteArray widths = view->horizontalHeader()->saveState();
    const std::unique_ptr<QItemSelectionModel> before(view->selectionModel());
    view->setModel(nullptr);
    const std::unique_ptr<QItemSelectionModel> none(view->selectionModel());
    view->setModel(m_rows);
    view->horizontalHeader()->restoreState(widths);
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        &UploadProgressForm::enableButtons);
    view->selectRow(std::max(row, 0));
    view->update();
}

void UploadProgressForm::on_selectFloders_clicked()
{
    const QString path = FileChooser::toFolder(this, {tr("Upload a folder"), {}, {}});
    if (path.isEmpty() || m_folder->isRunning()) {
        return;
    }
    ui->folderText->setText(tr("Looking through the folder"));
    ui->stopFolder->show();
    ui->folderPanel->show();
    m_folder->list(path);
    enableButtons();
}

void UploadProgressForm::onFolderListed(const QString &path, const QStringList &files)
{
    ui->folderPanel->setVisible(files.isEmpty());
    ui->stopFolder->setVisible(!files.isEmpty());
    if (files.isEmpty()) {
        ui->folderText->setText(tr("There are no files in %1").arg(QDir::toNativeSeparators(path)));
    } else {
        const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        const QString name = parts.isEmpty() ? path : parts.constLast();
        UpLoadTask *task = newTask(files);
        follow(task, name);
        addRow(task, {QString::number(task->number()), name, QString::number(files.size())}, {});
    }
    enableButtons();
}
