#include "deidentifier.h"

#include "datasetcleaner.h"
#include "deidentificationmarks.h"
#include "deidentifysource.h"
#include "descriptorstream.h"
#include "elementtext.h"
#include "filecopy.h"
#include "filemeta.h"
#include "patientidentity.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

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
DeidentifiedFile clean(DeidentifySource &source, const DeidentifyOptions &options,
    const Pseudonyms &pseudonyms, const QSet<QByteArray> &shared, bool recording)
{
    DeidentifiedFile file;
    file.problem = source.open();
    file.detail = source.detail();
    if (file.problem != DeidentifyProblem::None) {
        return file;
    }
    DcmDataset &dataset = source.dataset();
    file.burnedIn = burnedInOf(dataset);
    file.burnedIn = file.burnedIn == BurnedIn::No ? source.doubt() : file.burnedIn;
    file.number = ElementText::of(dataset, DCM_PatientID).isEmpty() ? QByteArray() : patientIdentity(dataset);
    file.person = patientPerson(dataset);
    const bool isShared = shared.contains(file.number);
    DatasetCleaner cleaner(
        options, pseudonyms, isShared ? file.number + '\\' + file.person.toUtf8() : patientIdentity(dataset));
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

/// @return errno, 0 for success
int writeDataset(DeidentifySource &source, int to)
{
    DescriptorConsumer consumer(to);
    DescriptorStream stream(&consumer);
    DcmWriteCache cache;
    DcmDataset &dataset = source.dataset();
    dataset.transferInit();
    errno = 0;
    const OFCondition written = dataset.write(
        stream, source.encoding(), EET_UndefinedLength, &cache, EGL_withoutGL, EPD_withoutPadding);
    const int failed = written.good() ? 0 : errno != 0 ? errno : EIO;
    dataset.transferEnd();
    stream.flush();
    return consumer.error() != 0 ? consumer.error() : failed;
}

int writeHead(DeidentifySource &source, const QByteArray &sopInstance, int to)
{
    const QByteArray meta = fileMeta({source.sopClass(), sopInstance, source.transferSyntax(), {}});
    return writeAll(to, meta.constData(), std::size_t(meta.size()));
}

int write(DeidentifySource &source, const DeidentifiedFile &file, const QByteArray &target)
{
    const int made = ::open(target.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usualMode);
    if (made < 0) {
        return errno;
    }
    int error = writeHead(source, file.sopInstance, made);
    error = error == 0 ? writeDataset(source, made) : error;
    error = error == 0 ? source.copyPixels(made) : error;
    if (::close(made) != 0 && error == 0) {
        error = errno; // only now may a server tell that it has no room
    }
    if (error != 0) {
        ::unlink(target.constData());
    }
    return error;
}

} // namespace

Deidentifier::Deidentifier(DeidentifyOptions options, Pseudonyms pseudonyms, QSet<QByteArray> shared)
    : m_options(std::move(options))
    , m_pseudonyms(std::move(pseudonyms))
    , m_shared(std::move(shared))
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
        file = clean(source, m_options, m_pseudonyms, m_shared, false);
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
        file = clean(source, m_options, m_pseudonyms, m_shared, true);
    });
    return file;
}
