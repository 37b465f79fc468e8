#pragma once

struct WindowParts;

/// The connections between the parts of a workstation window, one function for each collaboration. All parts
/// must be there.
namespace WindowWiring {

/// Commits of anybody reach the tables, the tree, the search, the pictures and the status bar.
void connectIndex(const WindowParts &parts);
/// What the patient table lists, and the menu that says so.
void connectListing(const WindowParts &parts);
/// The query panel finds patients.
void connectQueryPanel(const WindowParts &parts);
/// The records that the status bar, the launchers and the pictures are about.
void connectSelection(const WindowParts &parts);

} // namespace WindowWiring
