#include "cloudstudymodel.h"

#include "holdingmark.h"
#include "plaintooltip.h"
#include "webfailuretext.h"

void CloudStudyModel::clear()
{
    beginResetModel();
    m_studies.clear();
    endResetModel();
    emit checksChanged();
}

void CloudStudyModel::add(const QVector<DicomJson> &studies)
{
    const QVector<CloudStudy> fresh = m_studies.fresh(studies);
    if (!fresh.isEmpty()) {
        beginInsertRows({}, m_studies.size(), m_studies.size() + fresh.size() - 1);
        m_studies.append(fresh);
        endInsertRows();
    }
}

CloudSeries CloudStudyModel::seriesOf(const DicomJson &answer)
{
    CloudSeries series;
    series.uid = answer.text(DicomTag::seriesUid);
    series.modality = answer.text(DicomTag::modality);
    series.title = tr("Series %1", "its number").arg(answer.text(DicomTag::seriesNumber))
        + QStringLiteral("  ") + answer.text(DicomTag::seriesDescription);
    series.images = FoundStudy::countOf(answer, DicomTag::imagesInSeries);
    return series;
}

void CloudStudyModel::setSeries(
    const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure)
{
    const int row = m_studies.rowOf(studyUid);
    if (row < 0 || m_studies[row].listing == CloudStudy::Listing::Listed) {
        return;
    }
    CloudStudy &study = m_studies[row];
    study.failure = failure;
    study.listing = failure.isNone() ? CloudStudy::Listing::Listed : CloudStudy::Listing::Failed;
    QVector<CloudSeries> listed;
    for (const DicomJson &answer : series) {
        listed.append(seriesOf(answer));
    }
    const QVector<CloudSeries> fresh = study.fresh(listed);
    if (failure.isNone() && !fresh.isEmpty()) {
        beginInsertRows(index(row, 0), 0, fresh.size() - 1);
        study.series = fresh;
        endInsertRows();
    }
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    emit checksChanged();
}

void CloudStudyModel::setHoldings(const QHash<QString, int> &studies, const QHash<QString, int> &series)
{
    for (const int row : m_studies.setHeld(studies, series)) {
        const QModelIndex at = index(row, 0);
        emit dataChanged(index(0, IndexColumn, at), index(rowCount(at) - 1, IndexColumn, at));
    }
    if (m_studies.size() > 0) {
        emit dataChanged(index(0, IndexColumn), index(m_studies.size() - 1, IndexColumn));
    }
}

DownloadStudy CloudStudyModel::checkedOf(const QString &studyUid) const
{
    const int row = m_studies.rowOf(studyUid);
    return row < 0 ? DownloadStudy() : m_studies[row].wanted();
}

void CloudStudyModel::uncheck(const QString &studyUid)
{
    const int row = m_studies.rowOf(studyUid);
    if (row >= 0) {
        setData(index(row, 0), Qt::Unchecked, Qt::CheckStateRole);
    }
}

QModelIndex CloudStudyModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent)
        ? createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : quintptr(0))
        : QModelIndex();
}

QModelIndex CloudStudyModel::parent(const QModelIndex &child) const
{
    return child.isValid() && isSeries(child) ? createIndex(int(child.internalId()) - 1, 0, quintptr(0))
                                              : QModelIndex();
}

int CloudStudyModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid()) {
        return m_studies.size();
    }
    return isSeries(parent) || parent.column() > 0 ? 0 : m_studies[parent.row()].series.size();
}

int CloudStudyModel::columnCount(const QModelIndex & /*parent*/) const
{
    return ColumnCount;
}

bool CloudStudyModel::hasChildren(const QModelIndex &parent) const
{
    if (!parent.isValid() || isSeries(parent)) {
        return !parent.isValid() && m_studies.size() > 0;
    }
    const CloudStudy &study = m_studies[parent.row()];
    return study.listing != CloudStudy::Listing::Listed || !study.series.isEmpty();
}

bool CloudStudyModel::canFetchMore(const QModelIndex &parent) const
{
    return parent.isValid() && !isSeries(parent)
        && (m_studies[parent.row()].listing == CloudStudy::Listing::Unasked
            || m_studies[parent.row()].listing == CloudStudy::Listing::Failed);
}

void CloudStudyModel::fetchMore(const QModelIndex &parent)
{
    if (canFetchMore(parent)) {
        CloudStudy &study = m_studies[parent.row()];
        study.listing = CloudStudy::Listing::Asked;
        emit listingWanted(study.found.uid);
    }
}

const CloudStudy &CloudStudyModel::studyAt(const QModelIndex &index) const
{
    return m_studies[isSeries(index) ? int(index.internalId()) - 1 : index.row()];
}

QString CloudStudyModel::textOf(const CloudStudy &study, int column) const
{
    if (column == NameColumn && study.found.name.isEmpty()) {
        return tr("(no name)");
    }
    if (column == DescriptionColumn && !study.failure.isNone()) {
        return WebFailureText::of(study.failure);
    }
    return column == IndexColumn ? HoldingMark::text(study.held, study.found.images)
                                 : study.found.text(column);
}

QString CloudStudyModel::textOf(const CloudSeries &series, int column) const
{
    switch (column) {
    case NameColumn:
        return series.title.trimmed();
    case ModalityColumn:
        return series.modality;
    case ImagesColumn:
        return FoundStudy::countText(series.images);
    case IndexColumn:
        return HoldingMark::text(series.held, series.images);
    default:
        return {};
    }
}

QVariant CloudStudyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const CloudStudy &study = studyAt(index);
    const CloudSeries *series = isSeries(index) ? &study.series[index.row()] : nullptr;
    const auto text = [&] {
        return series ? textOf(*series, index.column()) : textOf(study, index.column());
    };
    switch (role) {
    case Qt::DisplayRole:
        return text();
    case Qt::ToolTipRole:
        return plainToolTip(text());
    case Qt::DecorationRole:
        return index.column() != IndexColumn ? QVariant()
            : series                         ? HoldingMark::disc(series->held, series->images)
                                             : HoldingMark::disc(study.held, study.found.images);
    case Qt::CheckStateRole:
        return index.column() != NameColumn ? QVariant()
            : series                        ? (series->isChecked ? Qt::Checked : Qt::Unchecked)
                                            : study.check();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (index.column() == ImagesColumn ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

bool CloudStudyModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || index.column() != NameColumn) {
        return false;
    }
    const QModelIndex top = isSeries(index) ? index.parent() : index;
    CloudStudy &study = m_studies[top.row()];
    study.setChecked(isSeries(index) ? index.row() : -1, value.toInt() == Qt::Checked);
    emit dataChanged(top, top, {Qt::CheckStateRole});
    if (!study.series.isEmpty()) {
        emit dataChanged(
            this->index(0, 0, top), this->index(study.series.size() - 1, 0, top), {Qt::CheckStateRole});
    }
    emit checksChanged();
    return true;
}

QVariant CloudStudyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractItemModel::headerData(section, orientation, role);
    }
    const QStringList names{tr("Patient"), tr("Patient ID"), tr("Date"), tr("Modality"), tr("Description"),
        tr("Images"), tr("In the index")};
    return names.value(section);
}

Qt::ItemFlags CloudStudyModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QAbstractItemModel::flags(index);
    return index.isValid() && index.column() == NameColumn ? usual | Qt::ItemIsUserCheckable : usual;
}
