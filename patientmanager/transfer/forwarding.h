#pragma once

#include <QStringList>
#include <QVector>

/**
 * What the forwarding of an import needs to know: where to, and which paths. Nothing here sends; the host
 * does.
 */
namespace Forwarding {

/// A DICOM destination as dicomsendservice.ini has it: one group each, empty or 0 where a key is missing.
struct Destination
{
    QString aeTitle;
    QString ip;
    int port = 0;
};

/// The configured destinations by the name of their group; none where there is no file.
QVector<Destination> destinations();

/// A file stands for itself; a folder for every file and folder below it, less hidden ones; anything else for
/// nothing. Walks the whole folder before it returns.
QStringList entriesOf(const QString &path);

} // namespace Forwarding
