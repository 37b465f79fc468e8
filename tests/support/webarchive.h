#pragma once

#include "dicomservers.h"

class PostgresServer;

/// A real DICOMweb archive on the loopback, with one user.
namespace WebArchive {

constexpr char user[] = "ann";
constexpr char password[] = "marker-0pen-sesame";

/// @param settings added to its configuration, or in place of ours
/// @param database keeps index and files, and must outlive the archive; null for SQLite and a folder
std::unique_ptr<DicomServer> start(
    const QJsonObject &settings = {}, const PostgresServer *database = nullptr);
/// Where the archive's DICOMweb service answers.
QString address(const DicomServer &archive);

} // namespace WebArchive
