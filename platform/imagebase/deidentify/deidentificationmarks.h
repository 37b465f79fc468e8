#pragma once

#include "deidentifyoptions.h"

class DcmItem;

/// Says in a data set that it has been made anonymous, by what profile and options: in the attributes and
/// codes that the standard has for it.
/// @param hadContent whether a report's items were cleaned
void markDeidentified(DcmItem &dataset, const DeidentifyOptions &options, bool hadContent);
