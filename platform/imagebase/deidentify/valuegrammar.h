#pragma once

#include "elementtext.h"

/// Whether the values of an element are what its kind says: a number may be no name. Laxer than the standard
/// where a value still says nothing but a number or a time.
namespace ValueGrammar {

/// Whether a kind has a grammar at all: numbers, dates, times, ages and UIDs.
bool isKnown(DcmEVR vr);
/// @param value one of possibly several; empty is right
bool isRight(DcmEVR vr, const QByteArray &value);

} // namespace ValueGrammar
