#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

/// What a contender must have read of each file, without padding.
struct HeaderIds
{
    QByteArray patientId;
    QByteArray patientName;
    QByteArray studyUid;
    QByteArray seriesUid;
    QByteArray instanceUid;
};

/// A contender's way to read one file. Each thread has one of its own.
using HeaderParser = std::function<bool(const QByteArray &path, HeaderIds *ids)>;

/**
 * Lets a parser read every file below a folder on all cores, and prints how fast it was as JSON.
 *
 * Listing the folder is not part of the time. The answer carries a digest of all ids, so that bench/run can
 * tell that every contender read the same.
 * @return an exit status
 */
int runParseRace(
    const QString &contender, const QString &folder, const std::function<HeaderParser()> &makeParser);
