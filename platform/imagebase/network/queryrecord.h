#pragma once

#include <QHash>
#include <QString>

/// The attributes that are asked of an archive, by tag (group in the high 16 bits).
namespace QueryTag {
inline constexpr quint32 level = 0x00080052;
inline constexpr quint32 failedInstances = 0x00080058;
inline constexpr quint32 patientName = 0x00100010;
inline constexpr quint32 patientId = 0x00100020;
inline constexpr quint32 issuerOfPatientId = 0x00100021;
inline constexpr quint32 birthDate = 0x00100030;
inline constexpr quint32 sex = 0x00100040;
inline constexpr quint32 patientStudies = 0x00201200;
inline constexpr quint32 studyUid = 0x0020000d;
inline constexpr quint32 studyId = 0x00200010;
inline constexpr quint32 studyDate = 0x00080020;
inline constexpr quint32 studyTime = 0x00080030;
inline constexpr quint32 accessionNumber = 0x00080050;
inline constexpr quint32 studyDescription = 0x00081030;
inline constexpr quint32 referringPhysician = 0x00080090;
inline constexpr quint32 modalitiesInStudy = 0x00080061;
inline constexpr quint32 classesInStudy = 0x00080062;
inline constexpr quint32 studySeries = 0x00201206;
inline constexpr quint32 studyInstances = 0x00201208;
inline constexpr quint32 seriesUid = 0x0020000e;
inline constexpr quint32 seriesNumber = 0x00200011;
inline constexpr quint32 modality = 0x00080060;
inline constexpr quint32 seriesDescription = 0x0008103e;
inline constexpr quint32 seriesDate = 0x00080021;
inline constexpr quint32 bodyPart = 0x00180015;
inline constexpr quint32 seriesInstances = 0x00201209;
inline constexpr quint32 instanceUid = 0x00080018;
inline constexpr quint32 classUid = 0x00080016;
inline constexpr quint32 instanceNumber = 0x00200013;
} // namespace QueryTag

/// Values by tag, as Unicode; several values of one attribute stay joined by a backslash. Of a request: an
/// empty value asks for the attribute.
using QueryRecord = QHash<quint32, QString>;
