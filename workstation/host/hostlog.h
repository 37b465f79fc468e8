#pragma once

/// Keeps off the terminal what the library makes Qt say by design and no user can act on: the slots that are
/// named after widgets which the forms do not have, and debugging notes. All else goes where it went before.
void installHostLog();
