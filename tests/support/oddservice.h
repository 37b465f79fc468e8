#pragma once

#include <QTcpServer>

#include <functional>

/**
 * An HTTP service that answers every request with the same bytes, whatever they are, or as a function says,
 * and then may hang up. Needs the caller's event loop.
 */
class OddService : public QTcpServer
{
public:
    enum class After : quint8 { Keep, HangUp };
    /// @param answer with its status line; empty for one that never answers
    explicit OddService(const QByteArray &answer, After after = After::HangUp);
    /// @param answer to a request, which begins with its line
    explicit OddService(
        std::function<QByteArray(const QByteArray &request)> answer, After after = After::HangUp);

    QString address() const;
    /// All that was asked so far.
    QByteArray asked() const { return m_asked; }

private:
    const std::function<QByteArray(const QByteArray &request)> m_answer;
    const After m_after;
    QByteArray m_asked;
};

/// An answer with a status line and a length.
QByteArray httpAnswer(const QByteArray &status, const QByteArray &type, const QByteArray &body);
