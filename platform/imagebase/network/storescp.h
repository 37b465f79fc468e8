#pragma once

#include "imagebase_export.h"
#include "storeprovider.h"

#include <QStringList>

#include <memory>

/// How the receiver presents itself and whom it lets in.
struct ScpSettings
{
    static constexpr long longestPdu = 131'072;

    QString aeTitle; ///< callers must use it
    QString bindAddress; ///< a numeric address of this computer; "0.0.0.0" and "::" are all of them
    int port = 0; ///< 0 for any free one
    QStringList callers; ///< AE titles that may call; empty for any
    bool acceptPrivateClasses = false; ///< objects of classes that are not the standard's
    int mostAssociations = 220; ///< at a time
    int firstWordSeconds = 10; ///< a connection that says nothing is closed after this
    int silenceSeconds = StoreProvider::silenceSeconds; ///< in the middle of a request or an object
    int idleSeconds = 300; ///< between two requests

    bool operator==(const ScpSettings &other) const
    {
        return aeTitle == other.aeTitle && bindAddress == other.bindAddress && port == other.port
            && callers == other.callers && acceptPrivateClasses == other.acceptPrivateClasses;
    }
};

/// Why a port cannot be listened on.
struct ListenFailure
{
    enum class Reason : quint8 { None, BadAddress, PortBusy, NotAllowed, Other };
    Reason reason = Reason::None;
    QString detail; ///< the system's word
};

/**
 * Listens on a port and serves C-STORE and C-ECHO, each association on a thread of its own.
 *
 * A connection gets a thread once it has said something, so mute ones cost nothing but a place in a short
 * line. start() and stop() belong to one thread; stop() and the destructor end open associations within a
 * second: an object that was not acknowledged then counts as never sent.
 */
class IMAGEBASE_EXPORT StoreScp
{
public:
    /// @param provider outlives it
    StoreScp(ScpSettings settings, StoreProvider &provider);
    ~StoreScp();
    StoreScp(const StoreScp &) = delete;
    StoreScp &operator=(const StoreScp &) = delete;

    const ScpSettings &settings() const;
    /// Listens when it returns without a failure.
    ListenFailure start();
    void stop();
    /// The port that is listened on, 0 where none is.
    int port() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
