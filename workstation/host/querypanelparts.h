#pragma once

/// Object names of the parts of the query panel that the host works with in more than one place.
namespace QueryPanelPart {
inline constexpr char firstDayCheck[] = "InPatientNoCheck";
inline constexpr char firstDay[] = "InPatientNo";
inline constexpr char lastDayCheck[] = "OutPatientCheck";
inline constexpr char lastDay[] = "OutPatient";
inline constexpr char search[] = "search";
inline constexpr char advanceInquiry[] = "AdvanceInquiry";
} // namespace QueryPanelPart
