#pragma once

#include "cloudclientplugin_export.h"
#include "httpanswerreader.h"
#include "servicesocket.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <optional>

class QIODevice;

/// A request to be sent over an HttpLine.
struct HttpRequest
{
    QByteArray method;
    QUrl url; ///< of the line's service
    QVector<QPair<QByteArray, QByteArray>> headers; ///< beside those of the connection and the body's length
    /// Open, of a known size; read while it is sent, and must live until finished(). None for a GET.
    QIODevice *body = nullptr;
    qint64 mostAnswer = 0; ///< bytes of the answer's body that are kept
    HttpAnswerReader::Take
        take{}; ///< gets the body of a good answer instead; it may be called until finished()
};

/// What came back.
struct HttpAnswer
{
    WebFailure failure; ///< also where the service has answered with an error
    int status = 0; ///< 0 where no answer came
    QByteArray body; ///< whole; empty where no whole one came, or where it was taken
};

/**
 * One HTTP/1.1 connection to a service, for large bodies: Qt's own client hands a body from thread to thread
 * in small pieces, which takes more of the processor than the transfer. Kept alive from request to request;
 * where the service has let go of it meanwhile, the request is sent once more over a new one. One request at
 * a time; lives on one thread with an event loop.
 */
class CLOUDCLIENTPLUGIN_EXPORT HttpLine : public QObject
{
    Q_OBJECT

public:
    /// @param patienceMs of silence before a request is given up
    HttpLine(const WebService &service, int patienceMs, QObject *parent = nullptr);
    ~HttpLine() override;

    bool isIdle() const { return !m_request && !m_isReading; }
    /// For an idle line; finished() comes later, never before this returns.
    void send(const HttpRequest &request);
    /// Ends the request; its end is told before this returns.
    void abort();

signals:
    void finished(const HttpAnswer &answer);

private:
    void beginSoon();
    void beginOrOpen();
    void begin();
    void sendMore();
    void sendPiece();
    void onCame(const QByteArray &bytes);
    void onFailed(const WebFailure &failure);
    void onSilence();
    void endWithAnswer();
    bool isPointedElsewhere();
    void end(const WebFailure &failure);
    QByteArray head() const;
    bool hasMoreBody() const;

    ServiceSocket m_socket;
    const int m_patienceMs;
    std::optional<HttpRequest> m_request;
    std::optional<HttpAnswerReader> m_answer;
    bool m_isBegun = false; ///< the connection has it, or is being opened for it
    bool m_isHeadSent = false;
    bool m_isRedirected = false;
    bool m_isReading = false; ///< m_answer has called somebody
    bool m_isUsed = false; ///< the connection has carried a request before this one
    QByteArray m_piece; ///< of the body
    QTimer m_turn; ///< the next one of a long body
    QTimer m_silence;
    QElapsedTimer m_heard;
};
