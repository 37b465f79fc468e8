#pragma once

#include "scuassociation.h"

#include <QVector>

/// How objects are brought from an archive. Auto: over our own association, and where the archive has no such
/// service, by having it send.
enum class RetrieveMethod { Auto, Get, Move };

/// A configured destination as something that can be searched. GUI thread.
struct Archive
{
    QString name;
    DicomNode node;
    RetrieveMethod method = RetrieveMethod::Auto;

    /// The destinations of dicomsendservice.ini; key "RetrieveMethod" of a group is "get", "move" or missing.
    static QVector<Archive> readAll();
    /// How we present ourselves to archives.
    static ScuOptions ownOptions();
};
