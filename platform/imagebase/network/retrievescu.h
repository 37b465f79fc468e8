#pragma once

#include "attributes.h"
#include "scuassociation.h"

#include <QStringList>

#include <functional>
#include <memory>

class StoreProvider;

/// What is fetched from an archive: a whole study, one of its series, or images of one series.
struct RetrieveRequest
{
    RecordLevel level = RecordLevel::Study; ///< Study, Series or Image
    QString patientId; ///< for archives that know studies only below their patients
    QString studyUid;
    QString seriesUid; ///< of a series, and of images
    QStringList instanceUids; ///< of images; at most mostInstances
    QStringList modalities; ///< what is known of them, so that the right services are offered
    QStringList classes;

    /// What archives that keep a list of identifiers in 16 bits of length take at once.
    static constexpr int mostInstances = 500;
};

/// How far the archive is, as it says.
struct RetrieveProgress
{
    int remaining = -1; ///< -1 where it does not say
    int completed = 0;
    int failed = 0;
    int warned = 0;
};

struct RetrieveResult
{
    NetworkFailure failure; ///< Stopped after cancel() too
    quint16 status = 0; ///< the archive's own word where it refused or something failed; 0 otherwise
    RetrieveProgress progress;
    QStringList failedInstances; ///< UIDs, where it names them, and of what we refused; at most a thousand
    QStringList refusedInstances; ///< of these, what we refused: it would be refused again
    int refused = 0; ///< how many that were, the unnamed ones among them

    /// How many objects have not come, and might still.
    int missing() const
    {
        return qMax(progress.failed - refused, failedInstances.size() - refusedInstances.size());
    }

    bool isGood() const
    {
        return failure.isNone() && status == 0 && progress.failed == 0 && failedInstances.isEmpty();
    }
};

/**
 * Fetches objects from an archive, over the association that asks for them (C-GET) or over one that the
 * archive makes to a receiver (C-MOVE). One request at a time, on the caller's thread, which it blocks; an
 * association for each.
 */
class IMAGEBASE_EXPORT RetrieveScu
{
public:
    explicit RetrieveScu(const DicomNode &node, const ScuOptions &options = {});
    ~RetrieveScu();

    /// Called on the thread of get() and move() whenever the archive tells how far it is.
    void setListener(std::function<void(const RetrieveProgress &)> listener);

    /// Fails with NoContext where the archive does not offer it. @param provider takes the objects
    RetrieveResult get(const RetrieveRequest &request, const StoreProvider &provider);
    /// @param destination the AE title of the receiver, which the archive must know
    RetrieveResult move(const RetrieveRequest &request, const QString &destination);

    /// Any thread: asks the archive to end; for good.
    void cancel();
    /// Any thread: get() and move() end within milliseconds; for good.
    void abort();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
