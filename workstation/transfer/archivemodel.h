#pragma once

#include "archivesearch.h"

#include <QHash>
#include <QStandardItemModel>

/**
 * What an archive has, as a tree of patients, studies and series. Studies come in any order; the series of a
 * study are asked for when somebody opens it. Says how much of each the index has. GUI thread.
 */
class ArchiveModel : public QStandardItemModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn, ///< name of the patient, description of a study or series
        IdColumn, ///< of the patient, accession number, number of the series
        BirthDateColumn,
        DateColumn, ///< of the study or series
        ModalityColumn,
        SeriesColumn,
        ImagesColumn,
        HeldColumn,
        ColumnCount
    };

    explicit ArchiveModel(QObject *parent = nullptr);

    void clearAll();
    /// Patients whose studies follow, or that have none.
    void addPatients(const QVector<QueryRecord> &patients);
    void addStudies(const QVector<QueryRecord> &studies);
    /// @param problem shown in their place where it is not empty
    void setSeries(const QString &studyUid, const QVector<QueryRecord> &series, const QString &problem);
    void setHeld(RecordLevel level, const QHash<QString, int> &images);

    int studyCount() const { return m_studies.size(); }
    QStringList studyUids() const { return m_studies.keys(); }
    QStringList seriesUids() const { return m_series.keys(); }
    /// The level of a row; nothing for a row that stands for others or for nothing.
    std::optional<RecordLevel> levelOf(const QModelIndex &index) const;
    /// What the archive told of a row of that level and those above.
    QueryRecord recordOf(const QModelIndex &index) const;
    /// Images that the index has of a study or series, as far as that was looked up.
    int heldOf(const QModelIndex &index) const;
    /// Whether the series of a study row have never been asked for; from then on they have.
    bool beginListing(const QModelIndex &study);

    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;

private:
    QStandardItem *knownPatient(const QueryRecord &study) const;
    QStandardItem *patientItem(const QueryRecord &study);
    void removeSeries(QStandardItem *study);
    static QList<QStandardItem *> row(const QStringList &texts, RecordLevel level, const QueryRecord &record);
    static void setHeldText(QStandardItem *first, int images, quint32 totalTag);

    QHash<QString, QVector<QStandardItem *>> m_patients; ///< by number and name
    QHash<QString, QStandardItem *> m_studies; ///< by UID
    QHash<QString, QStandardItem *> m_series;
};
