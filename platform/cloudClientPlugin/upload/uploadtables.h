#pragma once

#include <QString>

/// What those who read and write `uploadtask` and `uploadfile` share.
namespace UploadTables {

/// Of uploadfile.State.
constexpr int waitingState = 0;
constexpr int storedState = 2;
constexpr int failedState = 3;

/// An expression over imageformat that tells one file of an image from its next: a place and the stamp that
/// was imported.
const QLatin1String versionOfImage("imageformat.FilePath || char(10) || ifnull(FileSize, '') || char(10) "
                                   "|| ifnull(FileTime, '') || char(10) || "
                                   "ifnull(FileInode, '')");

/// Between the UIDs of uploadtask.SeriesUIDs.
constexpr QLatin1Char listMark('\n');

/// A null text would be NULL, which these columns refuse.
inline QString present(const QString &text)
{
    return text.isNull() ? QLatin1String("") : text;
}

} // namespace UploadTables
