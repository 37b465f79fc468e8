#pragma once

#include "scuassociation.h"

#include <QStringList>

/// What is known about objects before they come.
struct ExpectedObjects
{
    QStringList modalities;
    QStringList classes; ///< UIDs, where the archive has told them
};

/// The contexts that objects are taken over on an association of ours: as many as there can be beside one for
/// the request itself. The expected classes come first, and in every encoding by itself, so that the archive
/// need not convert; then the other classes of storage, the most common first, each once.
QVector<ScuContext> retrieveContexts(const ExpectedObjects &expected);
