#include "studymodel.h"

#include "dicomdate.h"
#include "personname.h"

#include <QLocale>

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
        m_studies += studies;
        endInsertRows();
    }
}

int StudyModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_studies.size();
}

int StudyModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString StudyModel::textOf(const DicomJson &study, int column) const
{
    switch (column) {
    case Name:
        return personNameForDisplay(study.text(DicomTag::patientName));
    case Id:
        return study.text(DicomTag::patientId);
    case Date:
        return dateForDisplay(study.text(DicomTag::studyDate));
    case Modalities:
        return study.texts(DicomTag::modalitiesInStudy).join(QStringLiteral(", "));
    case Description:
        return study.text(DicomTag::studyDescription);
    case Images: {
        const qint64 images = study.number(DicomTag::imagesInStudy);
        return images < 0 ? QString() : QLocale().toString(images);
    }
    default:
        return {};
    }
}

QVariant StudyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_studies.size()) {
        return {};
    }
    const DicomJson &study = m_studies[index.row()];
    if (role == sortRole && index.column() == Date) {
        return study.text(DicomTag::studyDate);
    }
    if (role == sortRole && index.column() == Images) {
        return study.number(DicomTag::imagesInStudy);
    }
    if (role == Qt::TextAlignmentRole && index.column() == Images) {
        return int(Qt::AlignRight | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole || role == sortRole || role == Qt::ToolTipRole
        ? QVariant(textOf(study, index.column()))
        : QVariant();
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
