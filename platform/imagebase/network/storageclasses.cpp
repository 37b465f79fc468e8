#include "storageclasses.h"

#include "dicomuids.h"

#include <QByteArray>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcuid.h>

namespace StorageClasses {

bool isStorage(const char *abstractSyntax, bool any)
{
    const QByteArray uid = QByteArray::fromRawData(abstractSyntax, int(qstrlen(abstractSyntax)));
    return dcmIsaStorageSOPClassUID(abstractSyntax, ESSC_All) || uid.startsWith(DicomUid::storageRoot)
        || (any && !uid.isEmpty() && !uid.startsWith(DicomUid::root));
}

bool isTransferSyntax(const char *syntax)
{
    return qstrcmp(syntax, DicomUid::implicitLittleEndian) == 0
        || qstrncmp(syntax, DicomUid::transferSyntaxRoot, qstrlen(DicomUid::transferSyntaxRoot)) == 0;
}

} // namespace StorageClasses
