#pragma once

class PatientManagerMainWindow;

/// All that the forms of the window say to one another, on one screen: the forms themselves do not know each
/// other.
namespace WindowConnections {

/// Called once, when the forms exist. The order counts: receivers of one signal run in the order of their
/// connections.
void connectForms(PatientManagerMainWindow *window);

} // namespace WindowConnections
