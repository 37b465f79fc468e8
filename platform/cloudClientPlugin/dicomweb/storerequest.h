#pragma once

#include "cloudclientplugin_export.h"
#include "webfailure.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <memory>

class HttpLine;
class MultipartBody;
struct HttpAnswer;
class WebClient;

/// A file to be stored, and the object that it holds.
struct StoredFile
{
    QString path;
    QString sopInstanceUid;
};

/// What became of one object.
struct StoreVerdict
{
    enum class State : quint8 { Unanswered, Stored, StoredWithWarning, Refused };
    State state = State::Unanswered;
    int reason = 0; ///< the service's code, of a warning or a failure

    bool isStored() const { return state == State::Stored || state == State::StoredWithWarning; }
};

/// What a service said to a request as a whole, and to each object.
struct StoreAnswer
{
    WebFailure failure; ///< of the whole; objects may have been stored nevertheless
    QVector<StoreVerdict> verdicts; ///< one for each file of the request, in its order
};

/**
 * One STOW-RS request: files as parts of one body, and an answer for each object. An object counts as stored
 * only where the answer says so by its UID; what the answer leaves out stays Unanswered.
 */
class CLOUDCLIENTPLUGIN_EXPORT StoreRequest : public QObject
{
    Q_OBJECT

public:
    /// Sends at once; finished() comes later, also where nothing could be sent.
    /// @param client must live on the same thread, and outlive the request
    StoreRequest(WebClient &client, QVector<StoredFile> files, QObject *parent = nullptr);
    ~StoreRequest() override;

    const QVector<StoredFile> &files() const { return m_files; }
    void abort();

    /// What an answer's body says of each object, by its UID; empty where it is no such answer.
    static QHash<QString, StoreVerdict> verdictsOf(const QByteArray &answer, bool *isGood = nullptr);

signals:
    void finished(const StoreAnswer &answer);

private:
    void end(const HttpAnswer &answer);
    void endBefore(const WebFailure &failure);
    WebFailure failureOf(const HttpAnswer &answer, bool isUnderstood) const;

    const QVector<StoredFile> m_files;
    std::unique_ptr<MultipartBody> m_body;
    QPointer<HttpLine> m_line; ///< while it is busy with this
};

Q_DECLARE_METATYPE(StoreAnswer)
