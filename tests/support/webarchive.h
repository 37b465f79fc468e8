#pragma once

#include "dicomservers.h"

/// A real DICOMweb archive on the loopback, with one user.
namespace WebArchive {

constexpr char user[] = "ann";
constexpr char password[] = "marker-0pen-sesame";

/// @param settings added to its configuration, or in place of ours
std::unique_ptr<DicomServer> start(const QJsonObject &settings = {});
/// Where the archive's DICOMweb service answers.
QString address(const DicomServer &archive);

} // namespace WebArchive
