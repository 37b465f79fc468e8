#pragma once

#include "webfailure.h"

#include <QMetaType>
#include <QString>

/// How an upload stands. all = waiting + inFlight + succeeded + failed at any time.
struct UploadTally
{
    enum class State : quint8 {
        Listing, ///< its files are being looked at and entered
        Running,
        Retrying, ///< the service is away or in trouble, and asked again from time to time
        NeedsSession, ///< until somebody signs in at its service
        Paused, ///< another program sends, the index cannot be written, or it has been released
        Finished, ///< nothing waits; what has failed may be tried again
        Cancelled
    };
    int all = 0;
    int waiting = 0;
    int inFlight = 0;
    int succeeded = 0; ///< acknowledged by the service and recorded in the index
    int failed = 0;
    qint64 bytesAll = 0;
    qint64 bytesDone = 0; ///< of what has succeeded
    double bytesPerSecond = 0; ///< of late
    int secondsLeft = -1; ///< -1 while nobody can tell
    State state = State::Listing;
    WebFailure trouble; ///< why it is Retrying
    qint64 nextTryMs = 0; ///< when the service is asked next while it is, in ms since the epoch
};

/// Why a file has not been stored.
struct UploadFault
{
    enum class Kind : quint8 {
        None = 0,
        FileUnreadable = 1, ///< it is gone, empty, or the system does not let us read it
        NotDicom = 2, ///< not an object of a study
        RecordDeleted = 3, ///< its record was deleted while it waited
        Refused = 4, ///< by the service; reason is the code that DICOM gives it
        Request = 5, ///< the service did not take the request; failure says why
        Unanswered = 6, ///< the service took it and said nothing of the object, time and again
    };
    QString path;
    Kind kind = Kind::None; ///< as it stands in the index
    int reason = 0;
    WebFailure failure;
};

Q_DECLARE_METATYPE(UploadTally)
