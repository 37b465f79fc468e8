#pragma once

/// Whether the file system of an open file or folder makes the name of a new file or folder, and those of the
/// new folders above it, last by syncing just that.
bool syncsNames(int descriptor);
