#include "mediawriter.h"

#include "dcmtklog.h"
#include "writeproblem.h"

#include <QFile>
#include <QSet>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcddirif.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcdicdir.h>

namespace {

constexpr char fileSetId[] = "EXPORT";

OFFilename fileName(const QString &path)
{
    return OFFilename(QFile::encodeName(path).constData());
}

/// A file set has files of the DICOM file format alone; DCMTK would let one without its preamble pass.
bool hasFileFormat(const QString &path)
{
    constexpr qint64 preamble = 128;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.seek(preamble) && file.read(4) == "DICM";
}

/// The files that a directory lists, by their names below it.
QSet<QString> listedIn(const QString &path, OFCondition *condition)
{
    QSet<QString> names;
    DcmFileFormat file;
    *condition = file.loadFile(fileName(path));
    DcmSequenceOfItems *records = nullptr;
    if (condition->good()) {
        *condition = file.getDataset()->findAndGetSequence(DCM_DirectoryRecordSequence, records);
    }
    for (unsigned long i = 0; records && i < records->card(); ++i) {
        OFString name;
        if (records->getItem(i)->findAndGetOFStringArray(DCM_ReferencedFileID, name).good()) {
            names.insert(QString::fromLatin1(name.c_str()).replace(u'\\', u'/'));
        }
    }
    return names;
}

} // namespace

struct MediaWriter::Directory
{
    DicomDirInterface dicomDir;
    OFCondition made = EC_Normal;
    QSet<QString> listed;
};

MediaWriter::MediaWriter(const ExportStage &stage, const std::atomic<bool> &cancelled)
    : FolderWriter(stage, cancelled)
    , m_directory(std::make_unique<Directory>())
{
    silenceDcmtk();
    DicomDirInterface &dicomDir = m_directory->dicomDir;
    dicomDir.disableBackupMode();
    m_directory->made = dicomDir.createNewDicomDir(
        DicomDirInterface::AP_GeneralPurpose, fileName(stage.path(QLatin1String(directoryName))), fileSetId);
    // Files are taken as they are, in whatever transfer syntax; what the directory must say and they do not
    // is filled in there.
    dicomDir.disableTransferSyntaxCheck();
    dicomDir.disableConsistencyCheck();
    dicomDir.enableInventMode();
    dicomDir.enableInventPatientIDMode();
}

MediaWriter::~MediaWriter() = default;

ExportWriter::Outcome MediaWriter::write(const ExportItem &item)
{
    Outcome outcome = FolderWriter::write(item);
    if (outcome.problem || m_directory->made.bad()) {
        return outcome;
    }
    if (!hasFileFormat(stage().path(item.name))) {
        return {ExportProblem::NotInDirectory, {}, false, false};
    }
    const OFCondition added =
        m_directory->dicomDir.addDicomFile(fileName(item.name), fileName(stage().path({})));
    if (added.bad()) {
        return {ExportProblem::NotInDirectory, QString::fromLatin1(added.text()), false, false};
    }
    m_directory->listed.insert(item.name);
    return outcome;
}

std::optional<ExportWriter::Outcome> MediaWriter::finish()
{
    OFCondition condition = m_directory->made;
    if (condition.good()) {
        condition = m_directory->dicomDir.writeDicomDir();
    }
    if (condition.good()) {
        const QString path = stage().path(QLatin1String(directoryName));
        forgetCached(path);
        if (listedIn(path, &condition) != m_directory->listed && condition.good()) {
            return Outcome{ExportProblem::Differs, {}, false, true};
        }
    }
    if (condition.good()) {
        return std::nullopt;
    }
    return Outcome{ExportProblem::NotWritten, QString::fromLatin1(condition.text()), false, true};
}

QStringList MediaWriter::pieces() const
{
    return {QLatin1String(filesFolder), QLatin1String(directoryName)};
}
