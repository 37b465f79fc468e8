#include "queryidentifier.h"

#include "characterset.h"
#include "elementcursor.h"
#include "personname.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcdeftag.h>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr quint32 characterSetTag = 0x00080005;
constexpr char utf8[] = "ISO_IR 192";

/// All that is not here is a text of the data set's character set, in values.
constexpr std::array personNames{QueryTag::patientName, QueryTag::referringPhysician};
constexpr std::array texts{QueryTag::patientId, QueryTag::issuerOfPatientId, QueryTag::studyId,
    QueryTag::accessionNumber, QueryTag::studyDescription, QueryTag::seriesDescription};
constexpr std::array codes{QueryTag::level, QueryTag::failedInstances, QueryTag::birthDate, QueryTag::sex,
    QueryTag::patientStudies, QueryTag::studyUid, QueryTag::studyDate, QueryTag::studyTime,
    QueryTag::modalitiesInStudy, QueryTag::classesInStudy, QueryTag::studySeries, QueryTag::studyInstances,
    QueryTag::seriesUid, QueryTag::seriesNumber, QueryTag::modality, QueryTag::seriesDate, QueryTag::bodyPart,
    QueryTag::seriesInstances, QueryTag::instanceUid, QueryTag::classUid, QueryTag::instanceNumber};

template <typename Tags>
bool contains(const Tags &tags, quint32 tag)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

/// Nothing for an attribute that is not ours.
std::optional<CharacterSet::Form> formOf(quint32 tag)
{
    if (contains(personNames, tag)) {
        return CharacterSet::Form::PersonName;
    }
    return contains(texts, tag) || contains(codes, tag) ? std::make_optional(CharacterSet::Form::Values)
                                                        : std::nullopt;
}

DcmTag dcmTag(quint32 tag)
{
    return DcmTag(static_cast<Uint16>(tag >> 16), static_cast<Uint16>(tag & 0xffff));
}

QByteArray valueBytes(const uchar *bytes, quint32 length)
{
    QByteArray value(reinterpret_cast<const char *>(bytes),
        static_cast<int>(qMin(length, quint32(QueryIdentifier::longestValue))));
    return value.replace('\0', ' ').trimmed();
}

} // namespace

namespace QueryIdentifier {

std::unique_ptr<DcmDataset> encode(const QueryRecord &keys)
{
    auto data = std::make_unique<DcmDataset>();
    // The answers of many archives come in the character set of the question.
    data->putAndInsertString(DCM_SpecificCharacterSet, utf8);
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        data->putAndInsertString(dcmTag(key.key()), key.value().toUtf8().constData());
    }
    return data;
}

QueryRecord decode(const QByteArray &bytes, bool isImplicit, CharacterSet &characterSet)
{
    using Encoding = ElementCursor::Encoding;
    QueryRecord record;
    FileWindow window;
    window.openBytes(bytes);
    ElementCursor cursor(window, 0, isImplicit ? Encoding::Implicit : Encoding::Explicit);
    characterSet.select({});
    ElementPlace element;
    while (cursor.peek(element)) {
        const auto form = formOf(element.tag);
        const bool isSet = element.tag == characterSetTag;
        const bool isValue = element.length != undefinedLength && (form || isSet);
        const uchar *found = isValue ? window.at(element.value, element.length) : nullptr;
        if (found) {
            const QByteArray value = valueBytes(found, element.length);
            if (isSet) {
                characterSet.select(value);
            } else {
                const QString text = characterSet.decode(value.constData(), value.size(), *form).trimmed();
                record.insert(
                    element.tag, *form == CharacterSet::Form::PersonName ? tidyPersonName(text) : text);
            }
        }
        if (!cursor.skip(element)) {
            break;
        }
    }
    return record;
}

} // namespace QueryIdentifier
