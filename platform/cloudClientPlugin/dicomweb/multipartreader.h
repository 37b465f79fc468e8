#pragma once

#include "cloudclientplugin_export.h"

#include <QByteArrayList>
#include <QByteArrayMatcher>

#include <functional>

/**
 * Takes a multipart/related body apart while it comes in. The body is hostile: what stands before the first
 * part and after the last is dropped, a part's head is bounded, and a missing end shows. Holds at most a head
 * and a boundary.
 */
class CLOUDCLIENTPLUGIN_EXPORT MultipartReader
{
public:
    /// What becomes of the parts; false ends the reading.
    struct Sink
    {
        std::function<bool(const QByteArray &contentType)> begin;
        std::function<bool(const char *data, qint64 length)> data;
        std::function<bool()> end;
    };
    enum class State : quint8 { Before, Head, Part, Boundary, Complete, Broken };

    /// @param contentType of the whole; without a boundary in it the reader is Broken from the start
    MultipartReader(const QByteArray &contentType, Sink sink);

    /// @return false once the body is broken, goes on long after its end, or the sink has had enough
    bool feed(const QByteArray &bytes);
    State state() const { return m_state; }

    /// The value of a parameter of a header's value; empty where it has none of that name.
    static QByteArray parameter(const QByteArray &header, const QByteArray &name);

private:
    int bridge(const QByteArray &bytes);
    void run();
    bool isAtEnd() const;
    bool step();
    bool findFirst();
    bool readHead();
    bool readPart();
    bool readBoundary();
    bool fail();

    const Sink m_sink;
    QByteArray m_delimiter; ///< the line's end, two dashes and the boundary
    QByteArrayMatcher m_matcher; ///< for it
    QByteArray m_held; ///< what is being read
    int m_dropped = 0; ///< bytes before the first part and after the last
    int m_at = 0; ///< how much of it is done with
    State m_state = State::Before;
};
