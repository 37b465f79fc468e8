#include "cloudstudymodel.h"

#include "personname.h"
#include "plaintooltip.h"
#include "webfailuretext.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <algorithm>

namespace {

/// What an index has of a study or series, as a disc.
enum class Share { None, Some, All };

Share shareOf(int held, int images)
{
    return held <= 0 ? Share::None : images >= 0 && held < images ? Share::Some : Share::All;
}

QString readableDate(const QString &date)
{
    const QDate day = QDate::fromString(date, QStringLiteral("yyyyMMdd"));
    return day.isValid() ? day.toString(Qt::ISODate) : date;
}

QPixmap disc(Share share, const QColor &colour)
{
    constexpr int side = 12;
    constexpr int halfTurn = 180 * 16;
    constexpr int quarterTurn = 90 * 16;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    const QRectF circle(1, 1, side - 2, side - 2);
    painter.setBrush(share == Share::All ? QBrush(colour) : Qt::NoBrush);
    painter.drawEllipse(circle);
    if (share == Share::Some) {
        painter.setBrush(colour);
        painter.drawPie(circle, quarterTurn, halfTurn);
    }
    return pixmap;
}

} // namespace

Qt::CheckState CloudStudyModel::Study::check() const
{
    if (isChecked) {
        return Qt::Checked;
    }
    const bool isAny =
        std::any_of(series.begin(), series.end(), [](const Series &one) { return one.isChecked; });
    return isAny ? Qt::PartiallyChecked : Qt::Unchecked;
}

CloudStudyModel::Study CloudStudyModel::studyOf(const DicomJson &answer)
{
    Study study;
    study.uid = answer.text(DicomTag::studyUid);
    study.name = personNameForDisplay(answer.text(DicomTag::patientName));
    study.id = answer.text(DicomTag::patientId);
    study.date = readableDate(answer.text(DicomTag::studyDate));
    study.modalities = answer.texts(DicomTag::modalitiesInStudy).join(QLatin1Char('/'));
    study.description = answer.text(DicomTag::studyDescription);
    study.images = static_cast<int>(answer.number(DicomTag::imagesInStudy));
    return study;
}

void CloudStudyModel::clear()
{
    beginResetModel();
    m_studies.clear();
    endResetModel();
    emit checksChanged();
}

void CloudStudyModel::add(const QVector<DicomJson> &studies)
{
    QVector<Study> fresh;
    for (const DicomJson &answer : studies) {
        const Study study = studyOf(answer);
        const auto isSame = [&study](const Study &other) { return other.uid == study.uid; };
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
        m_studies.begin(), m_studies.end(), [&](const Study &study) { return study.uid == studyUid; });
    return found == m_studies.end() ? -1 : static_cast<int>(found - m_studies.begin());
}

void CloudStudyModel::setSeries(
    const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure)
{
    const int row = rowOf(studyUid);
    if (row < 0 || m_studies[row].listing == Listing::Listed) {
        return;
    }
    Study &study = m_studies[row];
    study.failure = failure;
    study.listing = failure.isNone() ? Listing::Listed : Listing::Failed;
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
        Study &study = m_studies[row];
        study.held = studies.value(study.uid);
        bool isChanged = false;
        for (Series &one : study.series) {
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
    for (const Study &study : m_studies) {
        uids.append(study.uid);
    }
    return uids;
}

QStringList CloudStudyModel::seriesUids() const
{
    QStringList uids;
    for (const Study &study : m_studies) {
        for (const Series &series : study.series) {
            uids.append(series.uid);
        }
    }
    return uids;
}

DownloadStudy CloudStudyModel::wanted(const Study &study)
{
    QStringList label{study.name.isEmpty() ? study.id : study.name, study.description, study.date};
    label.removeAll(QString());
    DownloadStudy wanted{study.uid, label.join(QStringLiteral(" · ")), {}};
    for (const Series &series : study.series) {
        if (series.isChecked) {
            wanted.series.append({series.uid, series.images});
        }
    }
    return wanted;
}

QVector<DownloadStudy> CloudStudyModel::checked(QStringList *unlisted) const
{
    QVector<DownloadStudy> studies;
    for (const Study &study : m_studies) {
        if (study.isChecked && study.listing != Listing::Listed) {
            unlisted->append(study.uid);
        } else if (study.check() != Qt::Unchecked) {
            studies.append(wanted(study));
        }
    }
    return studies;
}

DownloadStudy CloudStudyModel::checkedOf(const QString &studyUid) const
{
    const int row = rowOf(studyUid);
    return row < 0 ? DownloadStudy() : wanted(m_studies[row]);
}

int CloudStudyModel::checkedStudies() const
{
    return static_cast<int>(std::count_if(m_studies.begin(), m_studies.end(),
        [](const Study &study) { return study.check() != Qt::Unchecked; }));
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
    const Study &study = m_studies[parent.row()];
    return study.listing != Listing::Listed || !study.series.isEmpty();
}

bool CloudStudyModel::canFetchMore(const QModelIndex &parent) const
{
    return parent.isValid() && !isSeries(parent)
        && (m_studies[parent.row()].listing == Listing::Unasked
            || m_studies[parent.row()].listing == Listing::Failed);
}

void CloudStudyModel::fetchMore(const QModelIndex &parent)
{
    if (canFetchMore(parent)) {
        Study &study = m_studies[parent.row()];
        study.listing = Listing::Asked;
        emit listingWanted(study.uid);
    }
}

const CloudStudyModel::Study &CloudStudyModel::studyAt(const QModelIndex &index) const
{
    return m_studies[isSeries(index) ? int(index.internalId()) - 1 : index.row()];
}

QString CloudStudyModel::holdingText(int held, int images)
{
    switch (shareOf(held, images)) {
    case Share::None:
        return tr("no");
    case Share::Some:
        return tr("%1 of %2").arg(held).arg(images);
    case Share::All:
        break;
    }
    return images < 0 ? tr("%n image(s)", nullptr, held) : tr("all");
}

QVariant CloudStudyModel::holdingIcon(int held, int images)
{
    return disc(shareOf(held, images), QApplication::palette().color(QPalette::Link));
}

QString CloudStudyModel::textOf(const Study &study, int column) const
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
        return holdingText(study.held, study.images);
    }
}

QString CloudStudyModel::textOf(const Series &series, int column) const
{
    switch (column) {
    case NameColumn:
        return series.title.trimmed();
    case ModalityColumn:
        return series.modality;
    case ImagesColumn:
        return series.images < 0 ? QString() : QString::number(series.images);
    case IndexColumn:
        return holdingText(series.held, series.images);
    default:
        return {};
    }
}

QVariant CloudStudyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Study &study = studyAt(index);
    const Series *series = isSeries(index) ? &study.series[index.row()] : nullptr;
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
            : series                         ? holdingIcon(series->held, series->images)
                                             : holdingIcon(study.held, study.images);
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
    Study &study = m_studies[top.row()];
    if (isSeries(index)) {
        study.series[index.row()].isChecked = isChecked;
        study.isChecked = std::all_of(
            study.series.begin(), study.series.end(), [](const Series &one) { return one.isChecked; });
    } else {
        study.isChecked = isChecked;
        for (Series &series : study.series) {
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
