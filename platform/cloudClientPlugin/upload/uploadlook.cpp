#include "uploadlook.h"

#include <QFile>
#include <QFileInfo>

UploadFault::Kind UploadLook::look(UploadFile *file)
{
    const QFileInfo now(file->path);
    if (!now.isFile() || now.size() == 0) {
        return UploadFault::Kind::FileUnreadable;
    }
    file->bytes = now.size();
    if (!file->sopInstance.isEmpty()) {
        return UploadFault::Kind::None;
    }
    const DicomReadResult read = m_reader.read(QFile::encodeName(file->path));
    if (read.outcome == DicomReadResult::Outcome::CannotOpen) {
        return UploadFault::Kind::FileUnreadable;
    }
    if (read.outcome != DicomReadResult::Outcome::Image) {
        return UploadFault::Kind::NotDicom;
    }
    file->sopInstance = read.header[Attribute::SOPInstanceUID];
    return UploadFault::Kind::None;
}

QString UploadLook::instanceOf(const QString &path)
{
    const DicomReadResult read = m_reader.read(QFile::encodeName(path));
    return read.outcome == DicomReadResult::Outcome::Image ? read.header[Attribute::SOPInstanceUID]
                                                           : QString();
}
