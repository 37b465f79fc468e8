#include "cloudstudymodel.h"

#include "holdingmark.h"
#include "plaintooltip.h"
#include "webfailuretext.h"

#include <algorithm>

void CloudStudyModel::clear()
{
    beginResetModel();
    m_studies.clear();
    endResetModel();
    emit checksChanged();
}

void CloudStudyModel::add(const QVector<DicomJson> &studies)
{
    QVector<CloudStudy> fresh;
    for (const DicomJson &answer : studies) {
        const CloudStudy study = CloudStudy::of(answer);
        const auto isSame = [&study](const CloudStudy &other) { return other.uid == study.uid; };
        if (!study.uid.isEmpty() && rowOf(study.uid) < 0
            && std::none_of(fresh.begin(), fresh.end(), isSame)) {
            fresh.append(study);
        }
    }
    if (!fresh.isEmpty()) {
        beginInsertRows({}, m_studies.size(), m_studies.size() + fresh.size() - 1);
        m_studies += fresh;
        endInsertRows();
    }
}

int CloudStudyModel::rowOf(const QString &studyUid) const
{
    const auto found = std::find_if(
        m_studies.begin(), m_studies.end(), [&](const CloudStudy &study) { return study.uid == studyUid; });
    return found == m_studies.end() ? -1 : static_cast<int>(found - m_studies.begin());
}

void CloudStudyModel::setSeries(
    const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure)
{
    const int row = rowOf(studyUid);
    if (row < 0 || m_studies[row].listing == CloudStudy::Listing::Listed) {
        return;
    }
    CloudStudy &study = m_studies[row];
    study.failure = failure;
    study.listing = failure.isNone() ? CloudStudy::Listing::Listed : CloudStudy::Listing::Failed;
    if (failure.isNone() && !series.isEmpty()) {
        beginInsertRows(index(row, 0), 0, series.size() - 1);
        for (const DicomJson &answer : series) {
            const QString number = answer.text(DicomTag::seriesNumber);
            study.series.append({answer.text(DicomTag::seriesUid), answer.text(DicomTag::modality),
                tr("Series %1", "its number").arg(number) + QStringLiteral("  ")
                    + answer.text(DicomTag::seriesDescription),
                static_cast<int>(answer.number(DicomTag::imagesInSeries)), 0, study.isChecked});
        }
        endInsertRows();
    }
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    emit checksChanged();
}

void CloudStudyModel::setHoldings(const QHash<QString, int> &studies, const QHash<QString, int> &series)
{
    for (int row = 0; row < m_studies.size(); ++row) {
        CloudStudy &study = m_studies[row];
        study.held = studies.value(study.uid);
        bool isChanged = false;
        for (CloudSeries &one : study.series) {
            isChanged = std::exchange(one.held, series.value(one.uid)) != one.held || isChanged;
        }
        if (isChanged) {
            const QModelIndex at = index(row, 0);
            emit dataChanged(index(0, IndexColumn, at), index(study.series.size() - 1, IndexColumn, at));
        }
    }
    if (!m_studies.isEmpty()) {
        emit dataChanged(index(0, IndexColumn), index(m_studies.size() - 1, IndexColumn));
    }
}

QStringList CloudStudyModel::studyUids() const
{
    QStringList uids;
    for (const CloudStudy &study : m_studies) {
        uids.append(study.uid);
    }
    return uids;
}

QStringList CloudStudyModel::seriesUids() const
{
    QStringList uids;
    for (const CloudStudy &study : m_studies) {
        for (const CloudSeries &series : study.series) {
            uids.append(series.uid);
        }
    }
    return uids;
}

QVector<DownloadStudy> CloudStudyModel::checked(QStringList *unlisted) const
{
    QVector<DownloadStudy> studies;
    for (const CloudStudy &study : m_studies) {
        if (study.isChecked && study.listing != CloudStudy::Listing::Listed) {
            unlisted->append(study.uid);
        } else if (study.check() != Qt::Unchecked) {
            studies.append(study.wanted());
        }
    }
    return studies;
}

DownloadStudy CloudStudyModel::checkedOf(const QString &studyUid) const
{
    const int row = rowOf(studyUid);
    return row < 0 ? DownloadStudy() : m_studies[row].wanted();
}

int CloudStudyModel::checkedStudies() const
{
    return static_cast<int>(std::count_if(m_studies.begin(), m_studies.end(),
        [](const CloudStudy &study) { return study.check() != Qt::Unchecked; }));
}

void CloudStudyModel::uncheck(const QString &studyUid)
{
    const int row = rowOf(studyUid);
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
        return !parent.isValid() && !m_studies.isEmpty();
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
        emit listingWanted(study.uid);
    }
}

const CloudStudy &CloudStudyModel::studyAt(const QModelIndex &index) const
{
    return m_studies[isSeries(index) ? int(index.internalId()) - 1 : index.row()];
}

QString CloudStudyModel::textOf(const CloudStudy &study, int column) const
{
    switch (column) {
    case NameColumn:
        return study.name.isEmpty() ? tr("(no name)") : study.name;
    case IdColumn:
        return study.id;
    case DateColumn:
        return study.date;
    case ModalityColumn:
        return study.modalities;
    case DescriptionColumn:
        return study.failure.isNone() ? study.description : WebFailureText::of(study.failure);
    case ImagesColumn:
        return study.images < 0 ? QString() : QString::number(study.images);
    default:
        return HoldingMark::text(study.held, study.images);
    }
}

QString CloudStudyModel::textOf(const CloudSeries &series, int column) const
{
    switch (column) {
    case NameColumn:
        return series.title.trimmed();
    case ModalityColumn:
        return series.modality;
    case ImagesColumn:
        return series.images < 0 ? QString() : QString::number(series.images);
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
                                             : HoldingMark::disc(study.held, study.images);
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
    const bool isChecked = value.toInt() == Qt::Checked;
    const QModelIndex top = isSeries(index) ? index.parent() : index;
    CloudStudy &study = m_studies[top.row()];
    if (isSeries(index)) {
        study.series[index.row()].isChecked = isChecked;
        study.isChecked = std::all_of(
            study.series.begin(), study.series.end(), [](const CloudSeries &one) { return one.isChecked; });
    } else {
        study.isChecked = isChecked;
        for (CloudSeries &series : study.series) {
            series.isChecked = isChecked;
        }
    }
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
