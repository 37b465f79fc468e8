#include "picturecontroller.h"

#include "createconnection.h"
#include "imageformatform.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "previewwindow.h"
#include "qpatient.h"
#include "seriesform.h"
#include "studyform.h"
#include "thumbnailloader.h"
#include "thumbnailmodel.h"
#include "thumbnailview.h"

#include <QHeaderView>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QVBoxLayout>
#include <QVariant>

#include <algorithm>
#include <optional>

namespace {

constexpr int gatherMs = 10;
constexpr int refreshMs = 300;
constexpr int keyColumn = 0;
/// How far a row is looked for: a study has far fewer series, and a list of keys may have very many.
constexpr int mostRowsSearched = 2000;

/// By the counts that the index holds of each record; the key itself for an image.
QString imageCountColumn(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return QStringLiteral("NumberOfPatientRelatedInstances");
    case RecordLevel::Study:
        return QStringLiteral("NumberOfStudyRelatedInstances");
    case RecordLevel::Series:
        return QStringLiteral("NumberOfSeriesRelatedInstances");
    case RecordLevel::Image:
        break;
    }
    return QStringLiteral("1");
}

qlonglong imagesOf(RecordLevel level, const QList<qlonglong> &keys)
{
    QStringList texts;
    for (const qlonglong key : keys) {
        texts.append(QString::number(key));
    }
    QSqlQuery query(QStringLiteral("SELECT sum(%1) FROM %2 WHERE pk IN (%3)")
                        .arg(imageCountColumn(level), QLatin1String(recordTableName(level)),
                            texts.join(QLatin1Char(','))));
    return query.next() ? query.value(0).toLongLong() : 0;
}

int rowOf(const QAbstractItemModel *model, qlonglong key)
{
    const int rows = std::min(model->rowCount(), mostRowsSearched);
    for (int row = 0; row < rows; ++row) {
        if (model->index(row, keyColumn).data().toLongLong() == key) {
            return row;
        }
    }
    return -1;
}

} // namespace

PictureController::PictureController(PatientManagerMainWindow *library, QWidget *body, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_view(new ThumbnailView(databasePath(), body))
{
    QLayout *layout = body->layout() ? body->layout() : new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    for (QTimer *timer : {&m_change, &m_refresh}) {
        timer->setSingleShot(true);
    }
    m_change.setInterval(gatherMs);
    m_refresh.setInterval(refreshMs);
    connect(&m_change, &QTimer::timeout, this, &PictureController::apply);
    connect(&m_refresh, &QTimer::timeout, m_view, &ThumbnailView::refresh);
    connect(m_view->loader(), &ThumbnailLoader::finished, this, &PictureController::settled);
    connect(m_view, &ThumbnailView::seriesChosen, this, &PictureController::chooseSeries);
    connect(m_view, &ThumbnailView::previewRequested, this, &PictureController::openPreview);
    follow();
}

PictureController::~PictureController()
{
    delete m_preview;
}

PreviewWindow *PictureController::preview() const
{
    return m_preview;
}

void PictureController::follow()
{
    const auto followForm = [this](const auto &form) {
        if (form) {
            connect(form, &RecordForm::selectPK, this, &PictureController::onReported);
            connect(form, &RecordForm::selectMutiPK, this, &PictureController::onReported);
        }
    };
    followForm(m_library->getPatientForm());
    followForm(m_library->getStudyForm());
    followForm(m_library->getSeriesForm());
    followForm(m_library->getImagesForm());
    if (const QPointer<PatientTreeForm> tree = m_library->getPatientTreeForm()) {
        connect(tree, &PatientTreeForm::selectMutiPK, this, &PictureController::onReported);
        connect(tree, &PatientTreeForm::selectStudyPks, this, &PictureController::showListed);
        connect(tree, &PatientTreeForm::selectSeriesPks, this, &PictureController::showListed);
        connect(tree, &PatientTreeForm::selectSeriesPk, this, &PictureController::showListed);
        connect(tree, &PatientTreeForm::deleteThumbView, m_view, &ThumbnailView::clear);
    }
    connect(m_library, &PatientManagerMainWindow::patientChanged, this, &PictureController::showSelected);
    connect(m_library, &PatientManagerMainWindow::picturesWanted, this, &PictureController::openFiles);
    connect(m_library, &PatientManagerMainWindow::thumbViewReflash, m_view, &ThumbnailView::refresh);
}

/// A click in the tree: the tables list the parts of another record than the one that is selected.
void PictureController::showListed(const QList<qlonglong> &keys, const QString &table)
{
    const std::optional<RecordLevel> level = recordLevelOf(table);
    if (level && !keys.isEmpty()) {
        m_change.stop();
        m_view->show({*level, keys});
    }
}

void PictureController::onReported(const QList<qlonglong> & /*keys*/, const QString & /*table*/)
{
    m_keepsPictures = m_isChoosing;
    m_change.start();
}

void PictureController::apply()
{
    if (mayBecomeObjects()) {
        m_library->updateSelectPatient();
    } else {
        showSelected();
    }
    m_keepsPictures = false;
    if (isSettled()) {
        emit settled(); // nothing has to be loaded
    }
}

/// One record always may: it is what a host is told of.
bool PictureController::mayBecomeObjects() const
{
    const QList<qlonglong> keys = m_library->selectedKeys();
    const std::optional<RecordLevel> level = recordLevelOf(m_library->selectedTable());
    return keys.size() < 2 || !level
        || (keys.size() <= mostKeysForObjects && imagesOf(*level, keys) <= mostImagesForObjects);
}

bool PictureController::isSettled() const
{
    return !m_change.isActive() && !m_view->loader()->isBusy();
}

void PictureController::showSelected()
{
    const std::optional<RecordLevel> level = recordLevelOf(m_library->selectedTable());
    if (m_keepsPictures || !level) {
        return;
    }
    RecordKeys selected;
    selected.level = *level;
    selected.keys = m_library->selectedKeys();
    if (selected.keys.isEmpty()) {
        m_view->clear();
    } else {
        m_view->show(selected);
    }
}

void PictureController::onIndexChanged()
{
    if (!m_view->shown().keys.isEmpty() && !m_refresh.isActive()) {
        m_refresh.start();
    }
}

bool PictureController::selectRow(RecordForm *form, qlonglong key, bool report)
{
    const int row = rowOf(form->tableModel(), key);
    if (row < 0) {
        return false;
    }
    NTableView *view = form->view();
    int column = 0;
    while (column + 1 < form->tableModel()->columnCount() && view->isColumnHidden(column)) {
        ++column;
    }
    const QModelIndex index = form->tableModel()->index(row, column);
    view->setCurrentIndex(index);
    view->selectRow(row);
    view->scrollTo(index);
    if (report) {
        form->selectIndex(index);
    }
    return true;
}

/// As a click on the row would, and on the row of its study first where that is not the one whose series are
/// listed.
void PictureController::chooseSeries(qlonglong series)
{
    const QPointer<SeriesForm> form = m_library->getSeriesForm();
    const int row = m_view->model()->rowOf(series);
    if (!form || row < 0 || form->getSelectList() == QList<qlonglong>{series} || !m_mayFillTables()) {
        return;
    }
    m_isChoosing = true;
    if (rowOf(form->tableModel(), series) < 0) {
        const qlonglong study = m_view->model()->at(row).study;
        if (m_library->getStudyForm()) {
            selectRow(m_library->getStudyForm(), study, false);
        }
        form->onSelectStudy(study);
    }
    selectRow(form, series, true);
    m_isChoosing = false;
}

PreviewWindow *PictureController::takePreview()
{
    if (!m_preview) {
        m_preview = new PreviewWindow;
        m_preview->setAttribute(Qt::WA_DeleteOnClose);
    }
    return m_preview;
}

void PictureController::showPreview()
{
    m_preview->show();
    m_preview->raise();
    m_preview->activateWindow();
}

void PictureController::openPreview(qlonglong series)
{
    takePreview()->showSeries(databasePath(), series);
    showPreview();
}

void PictureController::openFiles(const QStringList &files)
{
    takePreview()->showFiles(files);
    showPreview();
}
