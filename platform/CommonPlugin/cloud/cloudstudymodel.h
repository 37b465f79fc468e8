#pragma once

#include "cloudstudies.h"

#include <QAbstractItemModel>

/**
 * The studies that a search in the cloud has found, with their series below them, which are asked for when a
 * study is opened; what is checked is to be fetched. Holds values only. GUI thread.
 */
class CloudStudyModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn = FoundStudy::Name,
        IdColumn = FoundStudy::Id,
        DateColumn = FoundStudy::Date,
        ModalityColumn = FoundStudy::Modalities,
        DescriptionColumn = FoundStudy::Description,
        ImagesColumn = FoundStudy::Images,
        IndexColumn,
        ColumnCount
    };

    using QAbstractItemModel::QAbstractItemModel;

    void clear();
    void add(const QVector<DicomJson> &studies);
    void setSeries(const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure);
    /// @param studies images in the index by the UID of their study. @param series and of their series
    void setHoldings(const QHash<QString, int> &studies, const QHash<QString, int> &series);
    const CloudStudies &studies() const { return m_studies; }
    /// A study with those of its series that are checked.
    DownloadStudy checkedOf(const QString &studyUid) const;
    void uncheck(const QString &studyUid);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    /// The series of a study are wanted: setSeries() is the answer.
    void listingWanted(const QString &studyUid);
    void checksChanged();

private:
    static CloudSeries seriesOf(const DicomJson &answer);
    static bool isSeries(const QModelIndex &index) { return index.internalId() != 0; }
    const CloudStudy &studyAt(const QModelIndex &index) const;
    QString textOf(const CloudStudy &study, int column) const;
    QString textOf(const CloudSeries &series, int column) const;

    CloudStudies m_studies;
};
