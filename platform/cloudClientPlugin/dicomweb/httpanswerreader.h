#pragma once

#include "cloudclientplugin_export.h"

#include <QByteArray>
#include <QString>

#include <functional>

/**
 * Reads one HTTP/1.1 answer from the bytes of a connection, cut anywhere: heads of provisional answers are
 * passed over, bodies come by length, in chunks or until the connection ends. What is announced or sent
 * beyond the bounds breaks it, as a service may be hostile.
 */
class CLOUDCLIENTPLUGIN_EXPORT HttpAnswerReader
{
public:
    /// Takes a piece of a body. @return whether more of it is wanted
    using Take = std::function<bool(const QByteArray &contentType, const char *data, qint64 length)>;

    /// @param mostBody bytes of a body that are kept at most
    /// @param take gets the body of an answer that is good (200) piece by piece; it is not kept then, and may
    /// be long
    explicit HttpAnswerReader(qint64 mostBody, Take take = {})
        : m_mostBody(mostBody)
        , m_take(std::move(take))
    { }

    void feed(const QByteArray &bytes);
    /// Nothing more comes: the answer is complete where that is how its body ends.
    void endOfLine();

    bool hasBegun() const { return m_hasBegun; }
    bool isComplete() const { return m_mode == Mode::Complete; }
    bool isBroken() const { return m_mode == Mode::Broken; }
    /// Whether the connection may carry the next request; only of a complete answer.
    bool keepsAlive() const { return m_keepsAlive; }

    int status() const { return m_status; }
    QString reason() const { return QString::fromLatin1(m_reason); }
    /// Where a redirection points; empty where it says nothing.
    const QByteArray &location() const { return m_location; }
    const QByteArray &body() const { return m_body; }

private:
    enum class Mode {
        StatusLine,
        Header,
        Sized,
        ChunkSize,
        Chunk,
        ChunkEnd,
        Trailer,
        UntilEnd,
        Complete,
        Broken
    };

    bool isOfLines() const;
    int takeLine(const char *data, int length);
    int takeBody(const char *data, int length);
    void readLine(const QByteArray &line);
    bool readStatus(const QByteArray &line);
    bool readHeader(const QByteArray &line);
    bool readChunkSize(const QByteArray &line);
    bool endHead();
    bool isTaken() const;
    bool hasRoom(qint64 bytes) const;
    bool keep(const char *data, int length);

    const qint64 m_mostBody;
    const Take m_take;
    Mode m_mode = Mode::StatusLine;
    QByteArray m_line;
    qint64 m_headBytes = 0;
    bool m_hasBegun = false;
    bool m_keepsAlive = false;
    bool m_isChunked = false;
    int m_status = 0;
    QByteArray m_reason;
    QByteArray m_contentType;
    QByteArray m_location;
    qint64 m_announced = -1; ///< length of the body; -1 where the head names none
    qint64 m_left = 0; ///< of the body, or of the chunk
    QByteArray m_body;
};
