#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

struct T_ASC_Association;
struct T_ASC_Network;

/// What a faulty peer does with an object that it has received.
struct PeerAction
{
    enum class Kind { Answer, DropLine, BeSilent };
    Kind kind = Kind::Answer;
    quint16 status = 0;
};

/**
 * A C-STORE peer that misbehaves as a test says, on a free port of the loopback, any number of associations
 * side by side. It keeps what was sent in mind, and no files.
 */
class FaultyPeer
{
public:
    struct Received
    {
        QByteArray sopInstance;
        QByteArray transferSyntax;
        int association = 0; ///< counted from 1
        quint16 status = 0;
        bool answered = false;
    };
    /// What to do with an object. @param number of all objects, from 1 @param earlier how often it came
    /// before
    using Script = std::function<PeerAction(int number, const QByteArray &sopInstance, int earlier)>;
    enum class Takes { Everything, OnlyUncompressed };

    explicit FaultyPeer(Script script = {}, Takes takes = Takes::Everything);
    ~FaultyPeer();
    FaultyPeer(const FaultyPeer &) = delete;
    FaultyPeer &operator=(const FaultyPeer &) = delete;

    int port() const { return m_port; }
    QVector<Received> received() const;
    /// How often each object was answered with success or a warning.
    QHash<QByteArray, int> accepted() const;
    int associations() const { return m_associations; }
    /// The most contexts that an association offered.
    int mostContexts() const { return m_mostContexts; }

private:
    void listen();
    void serve(T_ASC_Association *association, int number);
    bool answerNext(T_ASC_Association *association, int number);
    void acceptContexts(T_ASC_Association *association);

    const Script m_script;
    const Takes m_takes;
    const int m_port;
    T_ASC_Network *m_network = nullptr;
    mutable std::mutex m_mutex;
    QVector<Received> m_received;
    std::vector<std::thread> m_servers;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_associations{0};
    std::atomic<int> m_mostContexts{0};
    std::thread m_listener;
};
