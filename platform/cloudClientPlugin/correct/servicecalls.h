#pragma once

#include "cloudclientplugin_export.h"
#include "dicomjson.h"
#include "storerequest.h"
#include "webclient.h"

#include <QJsonDocument>

#include <atomic>
#include <functional>

/**
 * Requests to a service one after the other, each of which returns at its end: for a thread of the caller's
 * own, whose event loop runs meanwhile.
 */
class CLOUDCLIENTPLUGIN_EXPORT ServiceCalls
{
public:
    /// @param stop ends a request soon once it is true; may be null
    ServiceCalls(const WebService &service, const std::atomic<bool> *stop);

    /// From now on requests run to their end.
    void goOnRegardless() { m_stop = nullptr; }

    /// Calls anew what has failed in passing: for what must not be left half done.
    template <typename Call>
    static WebFailure repeated(const Call &call)
    {
        constexpr int attempts = 3;
        WebFailure failure = call();
        for (int attempt = 1; attempt < attempts && failure.isPassing(); ++attempt) {
            failure = call();
        }
        return failure;
    }

    using Count = std::function<void(int objects)>;
    /// Objects into files of a folder, which are appended.
    WebFailure retrieve(
        const QString &resource, const QString &folder, QStringList &files, const Count &count);
    StoreAnswer store(const QVector<StoredFile> &files);
    /// All pages of a search.
    WebFailure search(const QString &resource, const QUrlQuery &query, QVector<DicomJson> &found);
    /// One answer that is a list of data sets, as it comes: what is told twice is there twice.
    WebFailure read(const QString &resource, QVector<DicomJson> &found, const QUrlQuery &query = {});
    /// One answer in plain JSON, where a service has more to say than DICOMweb.
    WebFailure ask(const QString &resource, QJsonDocument &answer);
    WebFailure ask(const QString &resource, const QByteArray &body, QJsonDocument &answer);
    WebFailure remove(const QString &resource);

private:
    template <typename Request, typename End>
    void await(Request &request, const End &end);
    WebFailure awaited(QNetworkReply *reply, QByteArray &answer);

    WebClient m_client;
    const std::atomic<bool> *m_stop;
};
