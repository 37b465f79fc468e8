#include "deidentifier.h"

#include "datasetcleaner.h"
#include "deidentificationmarks.h"
#include "deidentifysource.h"
#include "elementtext.h"
#include "filecopy.h"
#include "filedescriptor.h"
#include "filemeta.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include <fcntl.h>

#include <dcmtk/dcmdata/dcostrmf.h>
#include <dcmtk/dcmdata/dcwcache.h>

namespace {

constexpr mode_t usualMode = 0666; ///< less what the user's mask takes

DeidentifyProblem problemOf(int systemError)
{
    return systemError == 0        ? DeidentifyProblem::None
        : systemError == ECANCELED ? DeidentifyProblem::Cancelled
        : isDiskFull(systemError)  ? DeidentifyProblem::DiskFull
                                   : DeidentifyProblem::CannotWrite;
}

void describe(DcmItem &dataset, const DatasetCleaner &cleaner, DeidentifiedFile &file)
{
    file.patientName = cleaner.patientName();
    file.patientId = cleaner.patientId();
    file.hadDocument = cleaner.hadDocument();
    file.studyUid = ElementText::of(dataset, DCM_StudyInstanceUID);
    file.seriesUid = ElementText::of(dataset, DCM_SeriesInstanceUID);
    file.sopInstance = ElementText::of(dataset, DCM_SOPInstanceUID);
    file.modality = QString::fromLatin1(ElementText::of(dataset, DCM_Modality));
}

/// Cleans a source's data set. @param recording whether what changes is listed
DeidentifiedFile clean(
    DeidentifySource &source, const DeidentifyOptions &options, const Pseudonyms &pseudonyms, bool recording)
{
    DeidentifiedFile file;
    file.problem = source.open();
    file.detail = source.detail();
    if (file.problem != DeidentifyProblem::None) {
        return file;
    }
    DcmDataset &dataset = source.dataset();
    file.burnedIn = burnedInOf(dataset);
    DatasetCleaner cleaner(options, pseudonyms);
    cleaner.setRecording(recording);
    if (!cleaner.clean(dataset)) {
        file.problem = DeidentifyProblem::TooLarge;
        return file;
    }
    describe(dataset, cleaner, file);
    file.changes = cleaner.changes();
    markDeidentified(dataset, options, cleaner.hadContent());
    return file;
}

/// errno, for what DCMTK says of a failed write.
int writeDataset(DeidentifySource &source, FILE *to)
{
    DcmOutputFileStream stream(to); // closes it
    DcmWriteCache cache;
    DcmDataset &dataset = source.dataset();
    dataset.transferInit();
    errno = 0;
    OFCondition written = dataset.write(
        stream, source.encoding(), EET_UndefinedLength, &cache, EGL_withoutGL, EPD_withoutPadding);
    dataset.transferEnd();
    stream.flush();
    if (written.good()) {
        written = stream.status();
    }
    const int error = errno;
    return written.good() ? 0 : error != 0 ? error : EIO;
}

int writeHead(DeidentifySource &source, const QByteArray &sopInstance, FILE *to)
{
    const QByteArray meta = fileMeta({source.sopClass(), sopInstance, source.transferSyntax(), {}});
    return std::fwrite(meta.constData(), 1, std::size_t(meta.size()), to) == std::size_t(meta.size()) ? 0
                                                                                                      : errno;
}

int write(DeidentifySource &source, const DeidentifiedFile &file, const QByteArray &target)
{
    const int made = ::open(target.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usualMode);
    if (made < 0) {
        return errno;
    }
    FILE *const head = ::fdopen(made, "wb");
    int error = writeHead(source, file.sopInstance, head);
    error = error == 0 ? writeDataset(source, head) : (std::fclose(head), error);
    if (error == 0 && !source.pixels().ranges.isEmpty()) {
        const FileDescriptor behind(::open(target.constData(), O_WRONLY | O_APPEND | O_CLOEXEC));
        error = behind < 0 ? errno : source.copyPixels(behind);
    }
    if (error != 0) {
        ::unlink(target.constData());
    }
    return error;
}

} // namespace

Deidentifier::Deidentifier(DeidentifyOptions options, Pseudonyms pseudonyms)
    : m_options(std::move(options))
    , m_pseudonyms(std::move(pseudonyms))
{ }

DeidentifiedFile Deidentifier::run(
    const QByteArray &path, const QByteArray &target, const std::atomic<bool> &cancelled) const
{
    DeidentifiedFile file;
    if (!dcmDataDict.isDictionaryLoaded()) {
        file.problem = DeidentifyProblem::NoDictionary;
        return file;
    }
    onDeepStack([&] {
        DeidentifySource source(path, cancelled);
        file = clean(source, m_options, m_pseudonyms, false);
        if (file.problem == DeidentifyProblem::None) {
            const int error = write(source, file, target);
            file.problem = problemOf(error);
            file.detail = error == 0 ? QString() : qt_error_string(error);
        }
    });
    return file;
}

DeidentifiedFile Deidentifier::preview(const QByteArray &path, const std::atomic<bool> &cancelled) const
{
    DeidentifiedFile file;
    onDeepStack([&] {
        DeidentifySource source(path, cancelled);
        file = clean(source, m_options, m_pseudonyms, true);
    });
    return file;
}
