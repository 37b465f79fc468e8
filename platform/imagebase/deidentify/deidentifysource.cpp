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

/// DCMTK takes two to five for each element, of which it makes some 250 bytes: 500 MiB at most.
constexpr int mostReads = 4 * 1000 * 1000;
/// From here on a file is a large one, of which only one at a time is in memory.
constexpr int manyReads = 400 * 1000;
constexpr qint64 largePacked = qint64(1024) * 1024;

std::mutex &turns()
{
    static std::mutex turns;
    return turns;
}

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
    if (length > largePacked) {
        waitForTurn();
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

void DeidentifySource::waitForTurn()
{
    if (!m_turn.owns_lock()) {
        m_turn = std::unique_lock<std::mutex>(turns());
    }
}

DeidentifyProblem DeidentifySource::parse()
{
    QElapsedTimer clock;
    clock.start();
    int reads = 0;
    const auto goOn = [this, &clock, &reads] {
        if (++reads == manyReads) {
            waitForTurn();
            clock.restart();
        }
        return !m_cancelled && reads < mostReads && clock.elapsed() < longestParseMs;
    };
    const BoundedParse parsed =
        parseAll(m_unpacked ? m_unpacked->path() : m_path, pixelGroup, m_format, goOn);
    if (m_cancelled) {
        return DeidentifyProblem::Cancelled;
    }
    if (!parsed.complete && (reads >= mostReads || clock.elapsed() >= longestParseMs)) {
        return reads >= mostReads ? DeidentifyProblem::TooLarge : DeidentifyProblem::TooSlow;
    }
    if (!parsed.complete) {
        m_detail = parsed.detail;
        return dataset().card() > 0 ? DeidentifyProblem::Damaged : DeidentifyProblem::NotDicom;
    }
    const DcmXfer syntax(dataset().getOriginalXfer());
    const ElementEncoding encoding{syntax.isExplicitVR() == OFTrue, syntax.getByteOrder() == EBO_BigEndian};
    m_pixels = findPixelBytes(m_window, parsed.position, encoding);
    m_blanks.find(dataset(), m_window, m_pixels, encoding, m_transferSyntax);
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
            if (!bytes || m_cancelled) {
                return m_cancelled ? ECANCELED : EIO;
            }
            QByteArray copied(reinterpret_cast<const char *>(bytes), int(now));
            m_blanks.apply(copied, range.offset + done);
            const int error = writeAll(to, copied.constData(), std::size_t(now));
            if (error != 0) {
                return error;
            }
            done += now;
        }
    }
    return 0;
}
