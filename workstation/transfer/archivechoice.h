#pragma once

#include "retrieval.h"

class ArchiveModel;
class QModelIndex;

/// The request that brings a study or series which an archive was found to have. GUI thread.
/// @param row of the model, of a study or series
Retrieval retrievalOf(const ArchiveModel &model, const QModelIndex &row, const Archive &archive);
