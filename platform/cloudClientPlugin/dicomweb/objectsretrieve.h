#pragma once

#include "cloudclientplugin_export.h"
#include "multipartreader.h"
#include "webfailure.h"

#include <QFile>
#include <QObject>
#include <QPointer>

#include <memory>

class HttpLine;
class WebClient;
struct HttpAnswer;

/**
 * A WADO-RS request for the objects of a study, a series or one instance, as they are stored: each goes into
 * a file of a folder while it comes in, so that memory stays small. A file that is announced is whole; what
 * an end in the middle left is removed. Where the disk has no room for more (hasDiskRoom()), it ends with
 * DiskFull.
 */
class CLOUDCLIENTPLUGIN_EXPORT ObjectsRetrieve : public QObject
{
    Q_OBJECT

public:
    /// Asks at once. @param client must live on the same thread, and outlive the request
    /// @param resource as "studies/1.2.3/series/1.2.3.4"
    /// @param folder an existing one; the files in it belong to the caller
    ObjectsRetrieve(WebClient &client, const QString &resource, QString folder, QObject *parent = nullptr);
    ~ObjectsRetrieve() override;

    void abort();
    int objects() const { return m_objects; }

signals:
    void received(const QString &path);
    void progress(qint64 bytes);
    void finished(const WebFailure &failure);

private:
    static constexpr qint64 askForRoomAfter = qint64(1) << 20;

    bool beginFile(const QByteArray &type);
    bool writeFile(const char *data, qint64 length);
    bool endFile();
    void removeHalf();
    bool take(const QByteArray &type, const char *data, qint64 length);
    void end(const HttpAnswer &answer);

    const QString m_folder;
    QPointer<HttpLine> m_line; ///< while it is busy with this
    std::unique_ptr<MultipartReader> m_reader;
    QFile m_file;
    WebFailure m_failure;
    qint64 m_sinceAsked = askForRoomAfter; ///< bytes written since the disk was asked for room
    qint64 m_bytes = 0; ///< that have come
    int m_objects = 0;
};
