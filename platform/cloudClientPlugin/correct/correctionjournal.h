#pragma once

#include "correctionrequest.h"

#include <QJsonArray>
#include <QLockFile>
#include <QUrl>

#include <memory>

/**
 * The note on the disk of one correction, with the folder of its files: what a kill leaves is finished or
 * undone by it. Only its owner may read it. One thread.
 */
class CorrectionJournal
{
public:
    enum class State : quint8 {
        Prepared, ///< nothing has been changed anywhere
        Storing, ///< the service may hold corrected objects, and the index may have followed
        IndexAlone, ///< the service is not asked: the index is to follow
        Indexed ///< the index has followed: files on this computer are to
    };
    struct Content
    {
        State state = State::Prepared;
        QUrl service;
        CorrectionRequest request;
        QStringList studies; ///< UIDs of those whose objects are corrected, here and in the service
        QJsonArray objects; ///< as ServiceObjects writes them
    };

    /// A new one beside an index.
    explicit CorrectionJournal(const QString &databasePath);
    ~CorrectionJournal();
    CorrectionJournal(const CorrectionJournal &) = delete;
    CorrectionJournal &operator=(const CorrectionJournal &) = delete;

    /// Those that earlier runs left for an index and a service, or that need no service any more; what a
    /// living process works on is left out.
    /// @param service empty for none
    static std::vector<std::unique_ptr<CorrectionJournal>> leftBehind(
        const QString &databasePath, const QUrl &service);

    /// Whether a correction of one of these studies has begun and not come to its end, whoever works on it:
    /// in this index, or stored by halves in this service.
    /// @param service empty for none. @param own the folder of the one that is not meant
    static bool isPending(const QString &databasePath, const QUrl &service, const QStringList &studies,
        const QString &own = {});

    bool isOpen() const { return m_lock && m_lock->isLocked(); }
    QString folder() const { return m_folder; }
    const Content &content() const { return m_content; }
    /// Lasts when it returns true.
    bool write(const Content &content);
    bool setState(State state);
    /// Nothing is left to be done: removes all.
    void remove();

private:
    CorrectionJournal() = default;
    bool lock(const QString &folder);
    bool read();
    bool isAbout(const QString &databasePath) const;

    QString m_folder;
    std::unique_ptr<QLockFile> m_lock;
    Content m_content;
};
