#pragma once

#include "dicomreader.h"
#include "imagebase_export.h"
#include "storeoutcome.h"

#include <QByteArray>

#include <memory>

/// A kind of object as a presentation context names it.
struct StoreKind
{
    QByteArray sopClass;
    QByteArray transferSyntax;

    bool operator==(const StoreKind &other) const
    {
        return sopClass == other.sopClass && transferSyntax == other.transferSyntax;
    }
};

/// What must be known of a file to send it.
struct StoreFile
{
    QByteArray path; ///< in the system's bytes
    StoreKind kind;
    QByteArray sopInstance;
    qint64 dataSet = 0; ///< where the data set begins that can go as it is; 0 where it must be parsed
    qint64 size = 0; ///< of the file
    StoreProblem problem = StoreProblem::None; ///< why it cannot be sent
    QString detail;
};

/// Reads what must be known of files to send them; input is hostile. One for each thread.
class IMAGEBASE_EXPORT StoreFileReader
{
public:
    StoreFileReader();
    ~StoreFileReader();
    StoreFileReader(const StoreFileReader &) = delete;
    StoreFileReader &operator=(const StoreFileReader &) = delete;

    /// @param path a file, or anything else that may lie there
    StoreFile read(const QByteArray &path);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
