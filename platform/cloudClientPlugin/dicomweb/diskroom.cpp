#include "diskroom.h"

#include "filedescriptor.h"
#include "objectspool.h"
#include "spoolfile.h"

#include <QFile>

#include <fcntl.h>

bool hasDiskRoom(const QString &folder, qint64 bytes)
{
    const FileDescriptor opened(
        open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened < 0 || SpoolFile::hasRoom(opened, bytes + ObjectSpool::usualReserve);
}
