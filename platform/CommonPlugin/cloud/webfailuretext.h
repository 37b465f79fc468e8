#pragma once

#include "commonplugin_export.h"
#include "webfailure.h"

#include <QString>

/// The sentences about a DICOMweb service that did not do what it was asked, for every window that shows one.
/// They depend on their parameters and the program's language alone: any thread, while that is not being
/// changed.
namespace WebFailureText {

/// Why, for people; empty where nothing failed. With the words of the service or the system where those say
/// more, and the number of an answer that has no sentence of its own.
COMMONPLUGIN_EXPORT QString of(const WebFailure &failure);

} // namespace WebFailureText
