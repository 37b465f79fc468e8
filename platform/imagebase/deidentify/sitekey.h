#pragma once

#include "imagebase_export.h"

#include <QByteArray>
#include <QString>

/**
 * The secret of a site, from which all pseudonyms, new UIDs and shifts of dates are made: whoever has it can
 * tell which pseudonym is whose, and without it the same patient gets others.
 *
 * 32 random bytes in a file that its owner alone may read.
 */
namespace SiteKey {

inline constexpr int length = 32;

enum class Problem : quint8 {
    None,
    NotPrivate, ///< others may read or write the file, or it is somebody else's
    NotAKey, ///< something else lies there
    CannotRead,
    CannotMake
};

struct Result
{
    QByteArray key; ///< empty where there is a problem
    Problem problem = Problem::None;
    QString detail; ///< the system's words
};

/// Where the key lies: the place that main.ini names, else in the user's data folder. GUI thread.
IMAGEBASE_EXPORT QString usualPath();

/// Reads the key, and makes it where there is none: atomically, so that two programs get the same one. Any
/// thread.
IMAGEBASE_EXPORT Result load(const QString &path);

} // namespace SiteKey
