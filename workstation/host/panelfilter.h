#pragma once

#include <QString>

#include <optional>

/// Which rows of the query panel are checked.
struct PanelRows
{
    bool name = true;
    bool patientId = false;
    bool firstDay = false;
    bool lastDay = false;
};

/// Makes the text that the query panel emits a condition that finds people.
namespace PanelFilter {

/**
 * The panel joins its parts by "&&" and puts the values in as they were typed, so that a value may look like
 * a part of the filter: the text is taken apart from its ends, by the rows that are checked.
 *
 * A name finds every stored name that holds each of its words, whatever their order, case, accents and width;
 * an ID must be the same but for blanks around it; the last day counts as a whole. A row that is empty or not
 * checked says nothing, though the panel always emits both days.
 * @return an SQL condition on the patient table, empty for all patients; nothing for a text that no panel
 * with such rows emits
 */
std::optional<QString> condition(const QString &emitted, const PanelRows &rows);

} // namespace PanelFilter
