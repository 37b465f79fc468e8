#pragma once

#include "cloudclientplugin_export.h"

#include <QJsonObject>
#include <QStringList>
#include <QVector>

/// A data set as the DICOM JSON model writes it; what is absent or of another shape reads as empty.
class CLOUDCLIENTPLUGIN_EXPORT DicomJson
{
public:
    DicomJson() = default;
    explicit DicomJson(QJsonObject dataSet)
        : m_dataSet(std::move(dataSet))
    { }

    /// All values of an element as texts. A person name comes with its groups, as
    /// "Alphabetic=Ideographic=Phonetic".
    /// @param tag group in the high 16 bits
    QStringList texts(quint32 tag) const;
    QString text(quint32 tag) const { return texts(tag).value(0); }
    /// A whole number, -1 where there is none.
    qint64 number(quint32 tag) const;
    /// The items of a sequence.
    QVector<DicomJson> items(quint32 tag) const;
    bool isEmpty() const { return m_dataSet.isEmpty(); }

    /// The data sets of a service's answer: an array of them, or a single one.
    /// @param isGood false where the bytes are nothing of the kind; null where that does not matter
    static QVector<DicomJson> read(const QByteArray &answer, bool *isGood = nullptr);

private:
    QJsonArray values(quint32 tag) const;

    QJsonObject m_dataSet;
};

/// Elements that services are asked for.
namespace DicomTag {
constexpr quint32 sopInstanceUid = 0x00080018;
constexpr quint32 studyDate = 0x00080020;
constexpr quint32 studyTime = 0x00080030;
constexpr quint32 accessionNumber = 0x00080050;
constexpr quint32 modality = 0x00080060;
constexpr quint32 modalitiesInStudy = 0x00080061;
constexpr quint32 studyDescription = 0x00081030;
constexpr quint32 seriesDescription = 0x0008103e;
constexpr quint32 referencedClass = 0x00081150;
constexpr quint32 referencedInstance = 0x00081155;
constexpr quint32 warningReason = 0x00081196;
constexpr quint32 failureReason = 0x00081197;
constexpr quint32 failedSequence = 0x00081198;
constexpr quint32 referencedSequence = 0x00081199;
constexpr quint32 patientName = 0x00100010;
constexpr quint32 patientId = 0x00100020;
constexpr quint32 birthDate = 0x00100030;
constexpr quint32 sex = 0x00100040;
constexpr quint32 studyUid = 0x0020000d;
constexpr quint32 seriesUid = 0x0020000e;
constexpr quint32 seriesNumber = 0x00200011;
constexpr quint32 seriesInStudy = 0x00201206;
constexpr quint32 imagesInStudy = 0x00201208;
constexpr quint32 imagesInSeries = 0x00201209;

/// As a service's query names it, as "0020000D".
CLOUDCLIENTPLUGIN_EXPORT QString name(quint32 tag);
} // namespace DicomTag
