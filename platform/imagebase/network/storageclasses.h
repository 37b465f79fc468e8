#pragma once

/// Which services and encodings the receiver takes: it keeps objects as they come, so it need not know how to
/// read them all.
namespace StorageClasses {

/// Whether a class is one of storage: one that the toolkit lists, one of the standard's newer ones, or with
/// any a private one. Never one of the standard's other services.
bool isStorage(const char *abstractSyntax, bool any);
/// Whether it is a transfer syntax of the standard.
bool isTransferSyntax(const char *syntax);

} // namespace StorageClasses
