#pragma once

/// Databases of ours that lie beside an index, by what follows its name.
namespace BesideIndex {

/// The jobs of sends.
inline constexpr char sendJobs[] = ".send";

} // namespace BesideIndex
