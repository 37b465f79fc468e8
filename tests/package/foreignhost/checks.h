#pragma once

#include <QString>

class PatientManagerMainWindow;

/// Counts what a stranger's program expects of the installed library and does not find.
namespace Checks {

void expect(bool held, const QString &what);
int failures();

/// Every signal and slot by its text, as hosts that connect by text look it up.
void signatures();
/// Calls the public operations that a host may call; what is missing from a header or an export does not
/// build.
void operations(PatientManagerMainWindow &window);
/// The same for the dialogs, the inquiries and the imports.
void platformOperations();
/// Follows the selection by text signatures, down to the patient that it stands for.
void selection(PatientManagerMainWindow &window);
/// Drives the query panel, and hears each of its signals by its text.
void queryPanel();

} // namespace Checks
