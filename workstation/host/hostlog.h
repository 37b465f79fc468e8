#pragma once

/// Keeps off the terminal what Qt says by design and no user can act on: the slots that are named after
/// widgets which the forms do not have, what the offscreen platform lacks, and debugging notes. All else
/// goes where it went before.
void installHostLog();
