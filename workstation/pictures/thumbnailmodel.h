#pragma once

#include "seriesentry.h"
#include "thumbnailloader.h"

#include <QAbstractListModel>
#include <QHash>

/// The series of a selection with their thumbnails as these come in: a row a series. GUI thread.
class ThumbnailModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        SeriesRole = Qt::UserRole, ///< the series' key
        PictureRole, ///< null while it is awaited and where there is none
        LettersRole, ///< what an icon says instead of the picture; empty while it is awaited
        TitleRole, ///< modality and number
        DescriptionRole,
        CountRole ///< how many images, in words
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// Series that stay keep their thumbnails until new ones come. Rows that only came in leave the others
    /// as they are.
    void setSeries(const QVector<SeriesEntry> &series);
    void setThumbnail(qlonglong series, const Thumbnail &thumbnail);
    const SeriesEntry &at(int row) const { return m_series.at(row); }
    int rowOf(qlonglong series) const;

private:
    QString letters(const SeriesEntry &entry) const;
    QString wholeText(const SeriesEntry &entry) const;

    QVector<SeriesEntry> m_series;
    QHash<qlonglong, Thumbnail> m_thumbnails;
};
