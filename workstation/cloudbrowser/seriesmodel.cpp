#include "seriesmodel.h"

#include "plaintooltip.h"

#include <QPixmap>

void SeriesModel::clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void SeriesModel::add(const QVector<DicomJson> &series)
{
    QPixmap blank(side, side);
    blank.fill(Qt::black);
    beginResetModel(); // few of them
    for (const DicomJson &one : series) {
        m_rows.append({one, QIcon(blank)});
    }
    std::stable_sort(m_rows.begin(), m_rows.end(), [](const Row &one, const Row &other) {
        return one.series.number(DicomTag::seriesNumber) < other.series.number(DicomTag::seriesNumber);
    });
    endResetModel();
}

QString SeriesModel::uidAt(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows[row].series.text(DicomTag::seriesUid) : QString();
}

void SeriesModel::setPicture(const QString &seriesUid, const QImage &picture)
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (uidAt(row) == seriesUid) {
            m_rows[row].picture = QIcon(QPixmap::fromImage(picture));
            emit dataChanged(index(row), index(row), {Qt::DecorationRole});
        }
    }
}

int SeriesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QString SeriesModel::textOf(const DicomJson &series) const
{
    QStringList parts{series.text(DicomTag::modality), series.text(DicomTag::seriesDescription)};
    parts.removeAll(QString());
    const qint64 images = series.number(DicomTag::imagesInSeries);
    const QString head = parts.join(QStringLiteral(" · "));
    return images < 0 ? head : head + QLatin1Char('\n') + tr("%Ln image(s)", nullptr, int(images));
}

QVariant SeriesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size()) {
        return {};
    }
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return textOf(row.series);
    case Qt::ToolTipRole:
        return plainToolTip(textOf(row.series));
    case Qt::DecorationRole:
        return row.picture;
    default:
        return {};
    }
}
