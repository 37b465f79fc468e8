#pragma once

#include "cloudstudy.h"

#include <QHash>

/// The studies that a search in the cloud has found, each once, with what is checked of them: a plain value.
class CloudStudies
{
public:
    int size() const { return m_studies.size(); }
    CloudStudy &operator[](int row) { return m_studies[row]; }
    const CloudStudy &operator[](int row) const { return m_studies[row]; }
    /// -1 where it is not among them.
    int rowOf(const QString &studyUid) const;

    void clear() { m_studies.clear(); }
    /// Those of a search's answer that are not among them yet.
    QVector<CloudStudy> fresh(const QVector<DicomJson> &answers) const;
    void append(const QVector<CloudStudy> &studies) { m_studies += studies; }
    /// @param studies images in the index by the UID of their study. @param series and of their series.
    /// @return the rows of which a series has changed
    QVector<int> setHeld(const QHash<QString, int> &studies, const QHash<QString, int> &series);

    QStringList studyUids() const;
    QStringList seriesUids() const;
    /// What is checked, as far as its series are known; the studies whose series must be asked for first go
    /// to unlisted.
    QVector<DownloadStudy> checked(QStringList *unlisted) const;
    /// How many have something checked.
    int checkedCount() const;

private:
    QVector<CloudStudy> m_studies;
};
