#include "thumbnailmodel.h"

#include "picturetext.h"

namespace {

QString title(const SeriesEntry &entry)
{
    return (entry.modality + QLatin1Char(' ') + entry.number).trimmed();
}

} // namespace

int ThumbnailModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_series.size();
}

int ThumbnailModel::rowOf(qlonglong series) const
{
    for (int row = 0; row < m_series.size(); ++row) {
        if (m_series.at(row).series == series) {
            return row;
        }
    }
    return -1;
}

void ThumbnailModel::setSeries(const QVector<SeriesEntry> &series)
{
    const bool isSame = series.size() == m_series.size()
        && std::equal(series.begin(), series.end(), m_series.begin(),
            [](const SeriesEntry &a, const SeriesEntry &b) { return a.series == b.series; });
    if (isSame) {
        m_series = series;
        if (!series.isEmpty()) {
            emit dataChanged(index(0), index(series.size() - 1));
        }
        return;
    }
    beginResetModel();
    m_series = series;
    QHash<qlonglong, Thumbnail> kept;
    for (const SeriesEntry &entry : series) {
        const auto found = m_thumbnails.constFind(entry.series);
        if (found != m_thumbnails.constEnd()) {
            kept.insert(entry.series, *found);
        }
    }
    m_thumbnails = kept;
    endResetModel();
}

void ThumbnailModel::setThumbnail(qlonglong series, const Thumbnail &thumbnail)
{
    const int row = rowOf(series);
    if (row >= 0) {
        m_thumbnails.insert(series, thumbnail);
        emit dataChanged(index(row), index(row));
    }
}

QString ThumbnailModel::letters(const SeriesEntry &entry) const
{
    const auto thumbnail = m_thumbnails.constFind(entry.series);
    if (thumbnail == m_thumbnails.constEnd() || thumbnail->problem == PixelProblem::None) {
        return {};
    }
    const bool isKind =
        thumbnail->problem == PixelProblem::NoPixels || thumbnail->problem == PixelProblem::Video;
    return isKind ? PictureText::shortKind(thumbnail->kind) : QStringLiteral("!");
}

QString ThumbnailModel::wholeText(const SeriesEntry &entry) const
{
    QStringList parts{title(entry), entry.description, tr("%n image(s)", nullptr, entry.images)};
    const Thumbnail thumbnail = m_thumbnails.value(entry.series);
    parts.append(PictureText::problem(thumbnail.problem, thumbnail.kind));
    parts.removeAll(QString());
    return parts.join(QLatin1Char('\n'));
}

QVariant ThumbnailModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_series.size()) {
        return {};
    }
    const SeriesEntry &entry = m_series.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return title(entry);
    case Qt::ToolTipRole:
        return wholeText(entry);
    case Qt::AccessibleTextRole:
        return wholeText(entry).replace(QLatin1Char('\n'), QLatin1String(", "));
    case SeriesRole:
        return entry.series;
    case PictureRole:
        return m_thumbnails.value(entry.series).picture;
    case LettersRole:
        return letters(entry);
    case DescriptionRole:
        return entry.description;
    case CountRole:
        return tr("%n image(s)", nullptr, entry.images);
    default:
        return {};
    }
}
