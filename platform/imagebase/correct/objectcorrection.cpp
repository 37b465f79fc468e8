#include "objectcorrection.h"

#include "characterset.h"
#include "dcmtklog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <algorithm>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcspchrs.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

constexpr char utf8Term[] = "ISO_IR 192";
constexpr char modifiedTime[] = "yyyyMMddHHmmss";
constexpr char isCorrection[] = "CORRECT"; // DICOM's word for a replaced wrong value

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar letter) { return letter.unicode() < 0x80; });
}

DcmTagKey keyOf(PatientField field)
{
    const quint32 tag = PatientValues::tag(field);
    return {Uint16(tag >> 16), Uint16(tag & 0xffff)};
}

QByteArray setOf(DcmItem &item)
{
    OFString value;
    item.findAndGetOFStringArray(DCM_SpecificCharacterSet, value);
    return {value.data(), int(value.size())};
}

/// The text in a character set of one term; null where it has no place for it.
QByteArray encoded(const QString &text, const QByteArray &set)
{
    const QByteArray utf8 = text.toUtf8();
    if (isAscii(text) || set == utf8Term) {
        return utf8;
    }
    DcmSpecificCharacterSet out;
    DcmSpecificCharacterSet back;
    const OFString from(utf8.constData(), std::size_t(utf8.size()));
    OFString converted;
    OFString again;
    const bool good = !set.isEmpty() && !set.contains('\\')
        && out.selectCharacterSet(utf8Term, set.constData()).good()
        && out.convertString(from, converted).good() && back.selectCharacterSet(set.constData()).good()
        && back.convertString(converted, again).good() && again == from;
    return good ? QByteArray(converted.data(), int(converted.size())) : QByteArray();
}

/// Turns all texts of a data set into UTF-8, each from the set that holds where it stands. What its set does
/// not allow becomes what this system shows for it.
class Utf8Conversion
{
public:
    void convert(DcmItem &item, const QByteArray &inherited)
    {
        const bool ownSet = item.tagExists(DCM_SpecificCharacterSet);
        const QByteArray set = ownSet ? setOf(item) : inherited;
        for (unsigned long at = 0; at < item.card(); ++at) {
            DcmElement *element = item.getElement(at);
            if (auto *sequence = dynamic_cast<DcmSequenceOfItems *>(element)) {
                for (unsigned long number = 0; number < sequence->card(); ++number) {
                    convert(*sequence->getItem(number), set);
                }
            } else if (element->isAffectedBySpecificCharacterSet()) {
                convertText(*element, set);
            }
        }
        if (ownSet) {
            item.putAndInsertString(DCM_SpecificCharacterSet, utf8Term);
        }
    }

private:
    static CharacterSet::Form formOf(DcmEVR vr)
    {
        switch (vr) {
        case EVR_PN:
            return CharacterSet::Form::PersonName;
        case EVR_LT:
        case EVR_ST:
        case EVR_UT:
            return CharacterSet::Form::Paragraph;
        default:
            return CharacterSet::Form::Values;
        }
    }

    void convertText(DcmElement &element, const QByteArray &set)
    {
        OFString bytes;
        if (element.getOFStringArray(bytes, OFFalse).bad() || bytes.empty()) {
            return;
        }
        m_set.select(set);
        const QByteArray text =
            m_set.decode(bytes.data(), int(bytes.size()), formOf(element.getVR())).toUtf8();
        element.putOFStringArray(OFString(text.constData(), std::size_t(text.size())));
    }

    CharacterSet m_set;
};

/// What the values were before, as another item of the data set's own history.
OFCondition keepOriginals(DcmDataset &data, const PatientChanges &changes)
{
    DcmItem *history = nullptr;
    DcmItem *before = nullptr;
    OFCondition done = data.findOrCreateSequenceItem(DCM_OriginalAttributesSequence, history, -2);
    if (done.good()) {
        done = history->findOrCreateSequenceItem(DCM_ModifiedAttributesSequence, before, 0);
    }
    for (auto change = changes.keyBegin(); done.good() && change != changes.keyEnd(); ++change) {
        DcmElement *old = nullptr;
        done = data.findAndGetElement(keyOf(*change), old, OFFalse, OFTrue).good()
            ? before->insert(old, OFTrue)
            : before->insertEmptyElement(keyOf(*change));
    }
    const QByteArray now = QDateTime::currentDateTime().toString(QLatin1String(modifiedTime)).toLatin1();
    const QByteArray system = QCoreApplication::organizationName().toLatin1().left(64);
    for (const auto &[key, value] : {std::pair{DCM_AttributeModificationDateTime, now.constData()},
             std::pair{DCM_ModifyingSystem, system.constData()}, std::pair{DCM_SourceOfPreviousValues, ""},
             std::pair{DCM_ReasonForTheAttributeModification, isCorrection}}) {
        done = done.good() ? history->putAndInsertString(key, value) : done;
    }
    return done;
}

OFCondition apply(DcmDataset &data, const PatientChanges &changes)
{
    const bool fits =
        std::all_of(changes.cbegin(), changes.cend(), [set = setOf(data)](const QString &value) {
            return value.isEmpty() || !encoded(value, set).isEmpty();
        });
    if (!fits) {
        Utf8Conversion().convert(data, {});
        data.putAndInsertString(DCM_SpecificCharacterSet, utf8Term);
    }
    OFCondition done = keepOriginals(data, changes);
    const QByteArray set = setOf(data);
    for (auto change = changes.cbegin(); done.good() && change != changes.cend(); ++change) {
        const QByteArray value = encoded(change.value(), set);
        done = data.putAndInsertOFStringArray(
            keyOf(change.key()), OFString(value.constData(), std::size_t(value.size())));
    }
    return done;
}

} // namespace

ObjectCorrection correctObject(const QString &source, const QString &target, const PatientChanges &changes)
{
    silenceDcmtk();
    DcmFileFormat file;
    OFCondition done = file.loadFile(QFile::encodeName(source).constData());
    if (done.bad()) {
        return {ObjectCorrection::Problem::Unreadable, QString::fromUtf8(done.text())};
    }
    done = apply(*file.getDataset(), changes);
    if (done.good()) {
        done = file.saveFile(QFile::encodeName(target).constData(), file.getDataset()->getOriginalXfer());
    }
    return done.good()
        ? ObjectCorrection()
        : ObjectCorrection{ObjectCorrection::Problem::Unwritable, QString::fromUtf8(done.text())};
}
