#pragma once

#include <QString>

/// The upload states as they stand in the `Status` columns: compared by exact text, never translated.
namespace UploadStatus {
/// Of patients, studies and series.
constexpr char column[] = "Status";

inline QString notUploaded()
{
    return QStringLiteral("未上传");
}
inline QString uploading()
{
    return QStringLiteral("上传中");
}
inline QString uploaded()
{
    return QStringLiteral("已上传");
}
} // namespace UploadStatus
