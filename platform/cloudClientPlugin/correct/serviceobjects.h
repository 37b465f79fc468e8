#pragma once

#include "correctionrequest.h"
#include "servicecalls.h"
#include "serviceobject.h"
#include "shownobjects.h"

#include <QSet>

/**
 * The objects of some studies of a service, with a copy of each as it was and one as it is to be. On the
 * thread of the calls.
 */
class ServiceObjects
{
public:
    using Show = std::function<void(const CorrectionProgress &)>;
    using Holds = ShownObjects::Holds;

    /// @param folder existing; gets two folders of files
    ServiceObjects(QString folder, ServiceCalls &calls, Show show);

    /// Reads the objects of a study into the folder; none where the service has no such study. One that it
    /// has twice is a failure: which of them is read back could not be told.
    WebFailure fetch(const QString &studyUid, QString &detail);
    /// How often the service lists a study.
    WebFailure countStudies(const QString &studyUid, int &listed);
    /// Whether the disk has room for the corrected copies.
    bool hasRoomForCopies() const;
    /// Makes the corrected copies. @return empty, or what is wrong with a file
    QString write(const PatientChanges &changes, const std::atomic<bool> &stop);
    WebFailure storeNew() { return store(newFolder()); }
    WebFailure storeOld() { return store(oldFolder()); }
    /// Stores one corrected object alone.
    WebFailure storeFirst();
    /// What the service shows now.
    WebFailure look(const PatientChanges &changes, Holds &holds);

    const QVector<ServiceObject> &objects() const { return m_objects; }
    int studies() const;
    QSet<QString> uidsOf(const QString &studyUid) const;
    /// Whether all files that can be stored back survive a power cut from now on.
    bool sync() const;

    QJsonArray toJson() const;
    void read(const QJsonArray &objects);

private:
    QString oldFolder() const;
    QString newFolder() const;
    WebFailure store(const QString &folder);
    WebFailure storeSome(const QVector<StoredFile> &files);
    WebFailure whyMissing(const QString &studyUid, QString &detail);
    WebProblem identify(const QString &path, const QString &studyUid);

    const QString m_folder;
    ServiceCalls &m_calls;
    const Show m_show;
    QVector<ServiceObject> m_objects;
    QSet<QString> m_uids; ///< of those that were fetched
};
