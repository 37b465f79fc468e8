#pragma once

#include "scuassociation.h"

#include <QVector>

/// How objects are brought from an archive. Auto: over our own association, and where the archive has no such
/// service, by having it send.
enum class RetrieveMethod { Auto, Get, Move };

/// Answers that are taken at most of one question.
namespace ArchiveLimit {
inline constexpr int patients = 500;
inline constexpr int studies = 500;
inline constexpr int series = 2'000;
inline constexpr int images = 20'000;
} // namespace ArchiveLimit

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
