#include "studymodel.h"

#include "plaintooltip.h"

#include <algorithm>
#include <iterator>

void StudyModel::clear()
{
    beginResetModel();
    m_studies.clear();
    endResetModel();
}

void StudyModel::add(const QVector<DicomJson> &studies)
{
    if (!studies.isEmpty()) {
        beginInsertRows({}, m_studies.size(), m_studies.size() + studies.size() - 1);
        std::transform(studies.begin(), studies.end(), std::back_inserter(m_studies), FoundStudy::of);
        endInsertRows();
    }
}

int StudyModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_studies.size();
}

int StudyModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : FoundStudy::FieldCount;
}

QVariant StudyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_studies.size()) {
        return {};
    }
    const FoundStudy &study = m_studies[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return study.text(index.column());
    case Qt::ToolTipRole:
        return plainToolTip(study.text(index.column()));
    case sortRole:
        return study.sortKey(index.column());
    case Qt::TextAlignmentRole:
        return index.column() == FoundStudy::Images ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter))
                                                    : QVariant();
    default:
        return {};
    }
}

QVariant StudyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QStringList heads{
        tr("Name"), tr("Patient ID"), tr("Study date"), tr("Modalities"), tr("Description"), tr("Images")};
    return heads.value(section);
}
