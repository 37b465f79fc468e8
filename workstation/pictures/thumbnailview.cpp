#include "thumbnailview.h"

#include "thumbnaildelegate.h"
#include "thumbnaillist.h"
#include "thumbnailloader.h"
#include "thumbnailmodel.h"

#include <QLabel>
#include <QVBoxLayout>

ThumbnailView::ThumbnailView(const QString &indexPath, QWidget *parent)
    : QWidget(parent)
    , m_loader(new ThumbnailLoader(indexPath, this))
    , m_model(new ThumbnailModel(this))
    , m_list(new ThumbnailList(this))
    , m_note(new QLabel(this))
{
    build();
    connect(m_loader, &ThumbnailLoader::listed, this, &ThumbnailView::onListed);
    connect(m_loader, &ThumbnailLoader::loaded, m_model, &ThumbnailModel::setThumbnail);
    connect(m_list, &ThumbnailList::chosenByKey, this, &ThumbnailView::choose);
    connect(m_list, &QListView::clicked, this, &ThumbnailView::choose);
    connect(m_list, &QListView::activated, this, [this](const QModelIndex &index) {
        choose(index);
        emit previewRequested(m_model->at(index.row()).series);
    });
    clear();
}

QListView *ThumbnailView::list() const
{
    return m_list;
}

void ThumbnailView::build()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_list, 1);
    column->addWidget(m_note);
    m_note->setWordWrap(true);
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setObjectName(QStringLiteral("thumbnailNote"));
    m_list->setObjectName(QStringLiteral("thumbnails"));
    m_list->setAccessibleName(tr("Series of the selection"));
    m_list->setToolTip(tr("A click selects the series, a double click or Enter opens the preview"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ThumbnailDelegate(m_list));
    m_list->setViewMode(QListView::IconMode);
    m_list->setMovement(QListView::Static);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setUniformItemSizes(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFocusProxy(m_list);
}

void ThumbnailView::show(const RecordKeys &records)
{
    m_shown = records;
    m_loader->forget(); // a file that could not be read may be there again
    refresh();
}

void ThumbnailView::refresh()
{
    m_shown.keys.isEmpty() ? clear() : m_loader->load(m_shown);
}

void ThumbnailView::clear()
{
    m_shown = {};
    m_loader->forget();
    m_model->setSeries({});
    m_note->setText(tr("Select a patient, study or series to see its images."));
    m_note->show();
}

void ThumbnailView::onListed(const SeriesEntries &series)
{
    const QModelIndex current = m_list->currentIndex();
    const qlonglong chosen = current.isValid() ? m_model->at(current.row()).series : 0;
    m_model->setSeries(series.entries);
    const int row = m_model->rowOf(chosen);
    if (row >= 0) {
        m_list->setCurrentIndex(m_model->index(row));
    }
    m_note->setText(series.more > 0 ? tr("… and %n more series", nullptr, series.more)
                                    : tr("There are no images to show. Select a patient, study or series."));
    m_note->setVisible(series.more > 0 || series.entries.isEmpty());
}

void ThumbnailView::choose(const QModelIndex &index)
{
    if (index.isValid()) {
        emit seriesChosen(m_model->at(index.row()).series);
    }
}
