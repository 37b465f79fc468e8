#include "httpline.h"

#include "httpstatus.h"

#include <QIODevice>

#include <utility>

namespace {

constexpr int pieceBytes = 128 << 10;
constexpr int piecesAtOnce = 16; ///< in one turn of the event loop
constexpr qint64 heldBytes = 256 << 10; ///< by the socket, before it has sent them

} // namespace

HttpLine::HttpLine(const WebService &service, int patienceMs, QObject *parent)
    : QObject(parent)
    , m_socket(service, this)
    , m_patienceMs(patienceMs)
    , m_piece(pieceBytes, Qt::Uninitialized)
    , m_turn(this)
    , m_silence(this)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &HttpLine::sendMore);
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, &HttpLine::onSilence);
    connect(&m_socket, &ServiceSocket::ready, this, &HttpLine::begin);
    connect(&m_socket, &ServiceSocket::wrote, this, &HttpLine::sendMore);
    connect(&m_socket, &ServiceSocket::came, this, &HttpLine::onCame);
    connect(&m_socket, &ServiceSocket::failed, this, &HttpLine::onFailed);
}

HttpLine::~HttpLine() = default;

// Sending

void HttpLine::send(const HttpRequest &request)
{
    m_request = request;
    m_isRedirected = false;
    m_isBegun = false;
    beginSoon();
}

/// From the event loop, as the end may come at once.
void HttpLine::beginSoon()
{
    m_answer.emplace(m_request->mostAnswer, m_request->take);
    m_isHeadSent = false;
    m_heard.start();
    m_silence.start(m_patienceMs);
    QTimer::singleShot(0, this, [this] {
        if (m_request && !std::exchange(m_isBegun, true)) {
            beginOrOpen();
        }
    });
}

void HttpLine::beginOrOpen()
{
    if (m_socket.isReady() && !m_socket.hasMore()) {
        begin();
    } else { // what has come without being asked for answers nothing
        m_isUsed = false;
        m_socket.open();
    }
}

QByteArray HttpLine::head() const
{
    const QUrl &url = m_request->url;
    const QUrl::FormattingOptions noUser = QUrl::RemoveUserInfo | QUrl::RemoveFragment;
    const QByteArray target = m_socket.isToProxy()
        ? url.toEncoded(noUser)
        : url.toEncoded(noUser | QUrl::RemoveScheme | QUrl::RemoveAuthority);
    QByteArray head = m_request->method + ' ' + target
        + " HTTP/1.1\r\nHost: " + url.authority(QUrl::FullyEncoded | QUrl::RemoveUserInfo).toLatin1();
    for (const auto &header : qAsConst(m_request->headers)) {
        head += "\r\n" + header.first + ": " + header.second;
    }
    const QByteArray proxy = m_socket.proxyAuthorization();
    if (!proxy.isEmpty()) {
        head += "\r\nProxy-Authorization: " + proxy;
    }
    if (m_request->body) {
        head += "\r\nContent-Length: " + QByteArray::number(m_request->body->size());
    }
    return head + "\r\nAccept-Encoding: identity\r\n\r\n";
}

void HttpLine::begin()
{
    if (m_request->body) {
        m_request->body->seek(0);
    }
    const QByteArray bytes = head();
    m_isHeadSent = true;
    if (m_socket.write(bytes.constData(), bytes.size())) {
        sendMore();
    } else {
        onFailed({WebProblem::LineCut, {}, 0});
    }
}

bool HttpLine::hasMoreBody() const
{
    return m_request && m_isHeadSent && m_request->body && !m_request->body->atEnd();
}

void HttpLine::sendMore()
{
    m_heard.start();
    int pieces = 0;
    while (hasMoreBody() && m_socket.isReady() && m_socket.pendingBytes() < heldBytes) {
        if (m_socket.hasMore()) { // an answer before the end; the service may hang up behind it
            m_socket.readMore();
        } else if (pieces++ < piecesAtOnce) {
            sendPiece();
        } else { // others have their turn
            m_turn.start();
            return;
        }
    }
}

void HttpLine::sendPiece()
{
    const qint64 length = m_request->body->read(m_piece.data(), pieceBytes);
    if (length <= 0) {
        end({WebProblem::FileUnreadable, m_request->body->errorString(), 0});
    } else if (!m_socket.write(m_piece.constData(), length)) {
        onFailed({WebProblem::LineCut, {}, 0});
    }
}

// What comes back

void HttpLine::onCame(const QByteArray &bytes)
{
    if (!m_request || !m_isHeadSent) {
        m_socket.close(); // nothing was asked
        return;
    }
    m_heard.start();
    m_isReading = true;
    m_answer->feed(bytes);
    m_isReading = false;
    if (!m_request) {
        return; // who was called has ended it
    }
    if (m_answer->isComplete()) {
        endWithAnswer();
    } else if (m_answer->isBroken()) {
        const WebFailure refusal = HttpStatus::failureOf(m_answer->status(), m_answer->reason());
        end(refusal.isNone() ? WebFailure{WebProblem::BadAnswer, {}, m_answer->status()} : refusal);
    }
}

void HttpLine::onFailed(const WebFailure &failure)
{
    if (!m_request) {
        m_socket.close();
        return;
    }
    if (failure.problem == WebProblem::LineCut) {
        m_answer->endOfLine();
    }
    if (m_answer->isComplete()) {
        endWithAnswer();
    } else if (m_isUsed && !m_answer->hasBegun()) {
        // Kept alive too long: the service had let go of it before it could know of the request.
        m_isUsed = false;
        m_isHeadSent = false;
        m_socket.open();
    } else {
        end(failure);
    }
}

void HttpLine::onSilence()
{
    const int left = m_patienceMs - static_cast<int>(m_heard.elapsed());
    if (left > 0) {
        m_silence.start(left);
    } else {
        end({WebProblem::TimedOut, {}, 0});
    }
}

void HttpLine::abort()
{
    if (m_request) {
        end({WebProblem::Stopped, {}, 0});
    }
}

// The end

/// An answer to a body that is not yet sent to its end is taken: the rest of it is not wanted.
void HttpLine::endWithAnswer()
{
    m_isUsed = m_answer->keepsAlive() && !hasMoreBody() && m_socket.pendingBytes() == 0;
    if (!m_isUsed) {
        m_socket.close();
    }
    if (isPointedElsewhere()) {
        m_request->url = m_request->url.resolved(QUrl::fromEncoded(m_answer->location()));
        m_isBegun = false;
        beginSoon();
        return;
    }
    m_silence.stop();
    const HttpAnswer answer{
        HttpStatus::failureOf(m_answer->status(), m_answer->reason()), m_answer->status(), m_answer->body()};
    m_request.reset();
    emit finished(answer);
}

/// Once, and to the same server alone, as credentials follow.
bool HttpLine::isPointedElsewhere()
{
    const QUrl from = m_request->url;
    const QUrl to = from.resolved(QUrl::fromEncoded(m_answer->location()));
    const bool isSame = to.scheme() == from.scheme() && to.host() == from.host()
        && WebService::portOf(to) == WebService::portOf(from);
    return HttpStatus::isRedirection(m_answer->status(), m_request->body != nullptr) && isSame
        && !m_answer->location().isEmpty() && !std::exchange(m_isRedirected, true);
}

void HttpLine::end(const WebFailure &failure)
{
    m_socket.close();
    m_silence.stop();
    m_request.reset();
    emit finished({failure, 0, {}});
}
