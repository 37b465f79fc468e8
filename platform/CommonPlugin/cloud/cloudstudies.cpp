#include "cloudstudies.h"

#include <QSet>

#include <algorithm>
#include <utility>

int CloudStudies::rowOf(const QString &studyUid) const
{
    const auto found = std::find_if(m_studies.begin(), m_studies.end(),
        [&](const CloudStudy &study) { return study.found.uid == studyUid; });
    return found == m_studies.end() ? -1 : static_cast<int>(found - m_studies.begin());
}

QVector<CloudStudy> CloudStudies::fresh(const QVector<DicomJson> &answers) const
{
    QVector<CloudStudy> fresh;
    QSet<QString> known{QString()};
    for (const CloudStudy &study : m_studies) {
        known.insert(study.found.uid);
    }
    for (const DicomJson &answer : answers) {
        CloudStudy study;
        study.found = FoundStudy::of(answer);
        if (!known.contains(study.found.uid)) {
            known.insert(study.found.uid);
            fresh.append(study);
        }
    }
    return fresh;
}

QVector<int> CloudStudies::setHeld(const QHash<QString, int> &studies, const QHash<QString, int> &series)
{
    QVector<int> changed;
    for (int row = 0; row < m_studies.size(); ++row) {
        CloudStudy &study = m_studies[row];
        study.held = studies.value(study.found.uid);
        bool isChanged = false;
        for (CloudSeries &one : study.series) {
            const int before = std::exchange(one.held, series.value(one.uid));
            isChanged = isChanged || one.held != before;
        }
        if (isChanged) {
            changed.append(row);
        }
    }
    return changed;
}

QStringList CloudStudies::studyUids() const
{
    QStringList uids;
    for (const CloudStudy &study : m_studies) {
        uids.append(study.found.uid);
    }
    return uids;
}

QStringList CloudStudies::seriesUids() const
{
    QStringList uids;
    for (const CloudStudy &study : m_studies) {
        for (const CloudSeries &series : study.series) {
            uids.append(series.uid);
        }
    }
    return uids;
}

QVector<DownloadStudy> CloudStudies::checked(QStringList *unlisted) const
{
    QVector<DownloadStudy> studies;
    for (const CloudStudy &study : m_studies) {
        if (study.isChecked && study.listing != CloudStudy::Listing::Listed) {
            unlisted->append(study.found.uid);
        } else if (study.check() != Qt::Unchecked) {
            studies.append(study.wanted());
        }
    }
    return studies;
}

int CloudStudies::checkedCount() const
{
    return static_cast<int>(std::count_if(m_studies.begin(), m_studies.end(),
        [](const CloudStudy &study) { return study.check() != Qt::Unchecked; }));
}
