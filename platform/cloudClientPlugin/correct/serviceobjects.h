#pragma once

#include "correctionrequest.h"
#include "servicecalls.h"

#include <QJsonArray>

/// One object of the service: as it was, and as it is to be.
struct ServiceObject
{
    QString studyUid;
    QString seriesUid;
    QString sopInstanceUid;
    QString fileName; ///< of both files, each in its folder
    PatientValues before;
};

/**
 * The objects of some studies of a service, with a copy of each as it was and one as it is to be. On the
 * thread of the calls.
 */
class ServiceObjects
{
public:
    using Show = std::function<void(const CorrectionProgress &)>;
    /// What the service has, held against the two copies.
    enum class Holds : quint8 { Unknown, Old, New, Mixed };

    /// @param folder existing; gets two folders of files
    ServiceObjects(QString folder, ServiceCalls &calls, Show show);

    /// Reads the objects of a study into the folder; none where the service has no such study.
    WebFailure fetch(const QString &studyUid, QString &detail);
    /// Makes the corrected copies. @return empty, or what is wrong with a file
    QString write(const PatientChanges &changes, const std::atomic<bool> &stop);
    WebFailure storeNew() { return store(newFolder()); }
    WebFailure storeOld() { return store(oldFolder()); }
    /// Stores one corrected object alone.
    WebFailure storeFirst();
    WebFailure look(const PatientChanges &changes, Holds &holds);

    const QVector<ServiceObject> &objects() const { return m_objects; }
    int studies() const;
    int objectsOf(const QString &studyUid) const;
    /// Whether all files that can be stored back survive a power cut from now on.
    bool sync() const;

    QJsonArray toJson() const;
    void read(const QJsonArray &objects);

private:
    QString oldFolder() const;
    QString newFolder() const;
    WebFailure store(const QString &folder);
    WebFailure storeSome(const QVector<StoredFile> &files);
    bool identify(const QString &path, const QString &studyUid);
    WebFailure lookAtSeries(
        const QString &resource, const PatientChanges &changes, QHash<QString, Holds> &states);

    const QString m_folder;
    ServiceCalls &m_calls;
    const Show m_show;
    QVector<ServiceObject> m_objects;
};
