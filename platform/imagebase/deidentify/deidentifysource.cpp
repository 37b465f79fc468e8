#include "deidentifysource.h"

#include "dcmtklog.h"
#include "dicomuids.h"
#include "elementtext.h"
#include "filecopy.h"
#include "inflate.h"
#include "metainformation.h"
#include "transfersyntax.h"

#include <cerrno>

namespace {

const DcmTagKey pixelGroup(0x7fe0, 0x0000);
/// Nobody's file takes longer; somebody's trap might.
constexpr qint64 longestParseMs = qint64(120) * 1000;

} // namespace

DeidentifySource::DeidentifySource(QByteArray path, const std::atomic<bool> &cancelled)
    : m_path(std::move(path))
    , m_cancelled(cancelled)
{ }

DeidentifyProblem DeidentifySource::open()
{
    silenceDcmtk();
    if (!m_window.open(m_path)) {
        m_detail = qt_error_string(errno);
        return DeidentifyProblem::CannotRead;
    }
    m_transferSyntax = readMetaInformation(m_window).transferSyntax;
    if (m_transferSyntax == DicomUid::deflated) {
        const DeidentifyProblem problem = unpack();
        if (problem != DeidentifyProblem::None) {
            return problem;
        }
    }
    DeidentifyProblem problem = parse();
    problem = problem == DeidentifyProblem::None ? checkObject() : problem;
    return problem == DeidentifyProblem::None ? checkSyntax() : problem;
}

/// The unpacked data set takes the place of the file; it is written unpacked, too.
DeidentifyProblem DeidentifySource::unpack()
{
    const qint64 begin = readMetaInformation(m_window).end;
    const qint64 length = m_window.size() - begin;
    const uchar *packed = length > 0 && length <= mostPacked ? m_window.at(begin, length) : nullptr;
    if (!packed) {
        return length > mostPacked ? DeidentifyProblem::TooLarge : DeidentifyProblem::Damaged;
    }
    const QByteArray bytes = inflateRaw(packed, length, mostUnpacked);
    if (bytes.isEmpty() || bytes.size() >= mostUnpacked) {
        return bytes.isEmpty() ? DeidentifyProblem::Damaged : DeidentifyProblem::TooLarge;
    }
    m_transferSyntax = DicomUid::explicitLittleEndian;
    m_window.openBytes(bytes);
    m_unpacked.emplace(bytes);
    return DeidentifyProblem::None;
}

DeidentifyProblem DeidentifySource::parse()
{
    QElapsedTimer clock;
    clock.start();
    const auto goOn = [this, &clock] { return !m_cancelled && clock.elapsed() < longestParseMs; };
    const BoundedParse parsed =
        parseAll(m_unpacked ? m_unpacked->path() : m_path, pixelGroup, m_format, goOn);
    if (m_cancelled) {
        return DeidentifyProblem::Cancelled;
    }
    if (!parsed.complete) {
        m_detail = parsed.detail;
        return dataset().card() > 0 ? DeidentifyProblem::Damaged : DeidentifyProblem::NotDicom;
    }
    const DcmXfer syntax(dataset().getOriginalXfer());
    m_pixels = findPixelBytes(
        m_window, parsed.position, {syntax.isExplicitVR() == OFTrue, syntax.getByteOrder() == EBO_BigEndian});
    return m_pixels.isWhole ? DeidentifyProblem::None : DeidentifyProblem::Damaged;
}

/// The syntax that the file declares stays where it can be true; how the elements are written decides.
DeidentifyProblem DeidentifySource::checkSyntax()
{
    const DcmXfer parsed(dataset().getOriginalXfer());
    const bool isImplicit = parsed.isImplicitVR() == OFTrue;
    const bool isBig = parsed.getByteOrder() == EBO_BigEndian;
    m_encoding = isImplicit ? EXS_LittleEndianImplicit
        : isBig             ? EXS_BigEndianExplicit
                            : EXS_LittleEndianExplicit;
    const bool isPlain = m_transferSyntax.isEmpty()
        || TransferSyntax::packingOf(m_transferSyntax) == TransferSyntax::Packing::Native;
    if (isPlain && m_pixels.isEncapsulated) {
        return DeidentifyProblem::Damaged;
    }
    if (isPlain || isImplicit || isBig) {
        m_transferSyntax = DcmXfer(m_encoding).getXferID();
    }
    return DeidentifyProblem::None;
}

DeidentifyProblem DeidentifySource::checkObject()
{
    const bool isDirectory =
        sopClass() == DicomUid::mediaDirectory || dataset().tagExists(DCM_DirectoryRecordSequence);
    bool isIdentified = !sopClass().isEmpty();
    for (const DcmTagKey &tag : {DCM_StudyInstanceUID, DCM_SeriesInstanceUID, DCM_SOPInstanceUID}) {
        isIdentified = isIdentified && dataset().tagExistsWithValue(tag);
    }
    return isDirectory || !isIdentified ? DeidentifyProblem::NotAnObject : DeidentifyProblem::None;
}

QByteArray DeidentifySource::sopClass()
{
    const QByteArray own = ElementText::of(dataset(), DCM_SOPClassUID);
    return own.isEmpty() ? ElementText::of(*m_format.getMetaInfo(), DCM_MediaStorageSOPClassUID) : own;
}

int DeidentifySource::copyPixels(int to)
{
    for (const PixelBytes::Range &range : m_pixels.ranges) {
        for (qint64 done = 0; done < range.length;) {
            const qint64 now = qMin(FileWindow::windowSize, range.length - done);
            const uchar *bytes = m_window.at(range.offset + done, now);
            const int error = m_cancelled ? ECANCELED
                : bytes ? writeAll(to, reinterpret_cast<const char *>(bytes), std::size_t(now))
                        : EIO;
            if (error != 0) {
                return error;
            }
            done += now;
        }
    }
    return 0;
}
