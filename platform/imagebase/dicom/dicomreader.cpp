#include "dicomreader.h"

#include "dcmtkheaderreader.h"
#include "dicomuids.h"
#include "filewindow.h"
#include "headerscanner.h"
#include "headervalues.h"

#include <algorithm>
#include <cerrno>

namespace {

using Outcome = DicomReadResult::Outcome;

constexpr int headSize = 1024;
constexpr int maximumUidLength = 64;
constexpr Attribute identifiers[] = {
    Attribute::StudyInstanceUID, Attribute::SeriesInstanceUID, Attribute::SOPInstanceUID};

const char *keyword(Attribute attribute)
{
    return attributeTable()[static_cast<std::size_t>(attribute)].keyword;
}

QByteArray headOf(FileWindow &file)
{
    const qint64 length = qMin<qint64>(file.size(), headSize);
    const uchar *bytes = file.at(0, length);
    return bytes ? QByteArray(reinterpret_cast<const char *>(bytes), static_cast<int>(length)) : QByteArray();
}

/// Whether a file without a mark may be a bare data set or bare meta information: it starts with one of their
/// groups, in either byte order.
bool startsAsDataSet(const QByteArray &head)
{
    constexpr int firstGroup = 0x0002;
    constexpr int lastGroup = 0x0010;
    if (head.size() < 8) {
        return false;
    }
    const auto within = [](char group, char zero) {
        return zero == 0 && group >= firstGroup && group <= lastGroup;
    };
    return within(head[0], head[1]) || within(head[1], head[0]);
}

/// Whether a file that nobody can read says to be DICOM: by a mark in a wrong place, or by a UID of the
/// standard in what is no plain text, unless the text's name says DICOM too.
bool claimsDicom(const QByteArray &head, const QByteArray &path)
{
    const QByteArray name = path.toLower();
    const bool named = name.endsWith(".dcm") || name.endsWith(".dicom");
    return head.contains("DICM") || (head.contains(DicomUid::root) && (head.contains('\0') || named));
}

} // namespace

struct DicomReader::Private
{
    FileWindow file;
    HeaderValues values;

    DicomReadResult readCarefully(const QByteArray &path);
    DicomReadResult judge(const DcmtkVerdict &verdict, bool marked);
};

DicomReader::DicomReader()
    : d(new Private)
{ }

DicomReader::~DicomReader()
{
    delete d;
}

DicomReadResult DicomReader::read(const QByteArray &path)
{
    if (!d->file.open(path)) {
        return {Outcome::CannotOpen, {}, qt_error_string(errno)};
    }
    DicomReadResult result;
    d->values.begin();
    if (d->file.size() == 0) {
        result.outcome = Outcome::NotDicom;
    } else if (HeaderScanner::scan(d->file, d->values)) {
        result.outcome = d->values.isMediaDirectory() ? Outcome::MediaDirectory : Outcome::Image;
        result.header = d->values.takeHeader();
    } else {
        d->values.begin();
        result = d->readCarefully(path);
    }
    if (d->file.failed()) {
        result = {Outcome::CannotOpen, {}, qt_error_string(d->file.error())};
    }
    d->file.close();
    return result;
}

DicomReadResult DicomReader::Private::readCarefully(const QByteArray &path)
{
    const QByteArray head = headOf(file);
    const bool marked = HeaderScanner::hasMark(file);
    DicomReadResult result;
    if (marked || startsAsDataSet(head)) {
        result = judge(DcmtkHeaderReader::read(file, values), marked);
    }
    if (result.outcome == Outcome::NotDicom && (marked || claimsDicom(head, path))) {
        result.outcome = Outcome::Unreadable;
    }
    return result;
}

DicomReadResult DicomReader::Private::judge(const DcmtkVerdict &verdict, bool marked)
{
    if (values.isMediaDirectory()) {
        return {Outcome::MediaDirectory, {}, {}};
    }
    const DicomHeader header = values.takeHeader();
    const auto *const missing = std::find_if(std::begin(identifiers), std::end(identifiers),
        [&](Attribute attribute) { return header[attribute].isEmpty(); });
    if (missing == std::end(identifiers)) {
        const auto *const malformed = std::find_if(std::begin(identifiers), std::end(identifiers),
            [&](Attribute attribute) { return !isUid(header[attribute]); });
        return malformed == std::end(identifiers)
            ? DicomReadResult{Outcome::Image, header, verdict.detail}
            : DicomReadResult{Outcome::MalformedUid, header, QString::fromLatin1(keyword(*malformed))};
    }
    if (!verdict.anyElement || (!verdict.complete && !marked)) {
        return {Outcome::NotDicom, {}, verdict.detail};
    }
    const auto has = [&](Attribute attribute) { return !header[attribute].isEmpty(); };
    if (verdict.complete && !has(Attribute::PatientID) && !has(Attribute::PatientName)
        && !has(Attribute::StudyInstanceUID) && !has(Attribute::SeriesInstanceUID)) {
        return {Outcome::NoPatientOrStudy, header, {}};
    }
    return {Outcome::MissingUid, header, QString::fromLatin1(keyword(*missing))};
}

bool DicomReader::isUid(const QString &text)
{
    if (text.isEmpty() || text.size() > maximumUidLength) {
        return false;
    }
    bool inComponent = false;
    bool severalComponents = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('.')) {
            if (!inComponent) {
                return false;
            }
            inComponent = false;
            severalComponents = true;
        } else if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            inComponent = true;
        } else {
            return false;
        }
    }
    return inComponent && severalComponents;
}
