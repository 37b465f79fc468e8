#pragma once

#include "seriesentry.h"

#include <QWidget>

class QLabel;
class QListView;
class QModelIndex;
class ThumbnailList;
class ThumbnailLoader;
class ThumbnailModel;

/**
 * The pictures of the selected records, one for each series. Owned by its parent; GUI thread.
 */
class ThumbnailView : public QWidget
{
    Q_OBJECT

public:
    explicit ThumbnailView(const QString &indexPath, QWidget *parent = nullptr);

    ThumbnailLoader *loader() const { return m_loader; }
    QListView *list() const;
    ThumbnailModel *model() const { return m_model; }
    const RecordKeys &shown() const { return m_shown; }

    /// Shows the series of these records; the ones shown before are not decoded any further.
    void show(const RecordKeys &records);
    using QWidget::show;
    /// Reads the records that are shown again: what stays keeps its picture and its selection.
    void refresh();
    void clear();

signals:
    /// A series was picked by a click or a key.
    void seriesChosen(qlonglong series);
    /// A double click, or Enter.
    void previewRequested(qlonglong series);

private:
    void build();
    void onListed(const SeriesEntries &series);
    void choose(const QModelIndex &index);

    ThumbnailLoader *const m_loader;
    ThumbnailModel *const m_model;
    ThumbnailList *const m_list;
    QLabel *const m_note; ///< what there is instead of pictures, or besides them
    RecordKeys m_shown;
};
