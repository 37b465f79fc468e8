#pragma once

#include "archivesearch.h"
#include "retrieval.h"

/// The sentences about searching and retrieving. GUI thread.
namespace ArchiveText {

/// How a search came out. @param studies how many it found
QString of(const ArchiveAnswer &answer, int studies);
/// Why a search or the list of a study's series failed; empty where it did not.
QString problemOf(const ArchiveAnswer &answer);
/// What people know a study or series by: whose it is, what and when, and for a series which one.
QString titleOf(const QueryRecord &record, RecordLevel level);
QString stateOf(const Retrieval &retrieval);
/// "12 of 93 images"
QString countOf(const Retrieval &retrieval);
/// What was said when they were asked for: how many, and what is there already.
QString requestOf(const QVector<Retrieval> &retrievals);
/// What there is to know besides; empty for nothing.
QString noticeOf(const Retrieval &retrieval);
/// How it ended, in a sentence with what was asked for.
QString endOf(const Retrieval &retrieval);
/// How much of something the index has. @param images in the index @param total in the archive, 0 where
/// unknown
QString heldOf(int images, int total);

} // namespace ArchiveText
