#pragma once

#include "deidentifyoptions.h"

class DcmElement;

/// What is done with an element.
enum class Treatment : quint8 {
    Keep, ///< unless it has in it what identifies
    Remove,
    Empty,
    Dummy,
    NewUid,
    Pseudonym,
    Shift, ///< a date
    CleanText, ///< without the words that identify
    Enter, ///< a sequence: each item for itself
    EnterStrictly ///< a sequence that tells of persons or institutions: all texts go
};

/**
 * By the profile and its options; of several actions that the profile leaves open the one that is valid
 * whatever the kind of object makes of the attribute. Of what the profile does not name the patient's
 * attributes go, and what is not understood; UIDs are renewed, but for those of classes; texts in sentences
 * are treated like descriptions; the rest stays.
 * @param isStrict within a sequence whose texts all go
 */
Treatment treatmentOf(DcmElement &element, const DeidentifyOptions &options, bool isStrict);

/// The same without regard to the options: for a value that an option could not keep.
Treatment strictestOf(DcmElement &element);
