#pragma once

#include "deidentifyoptions.h"
#include "identifyingvalues.h"
#include "textcleaner.h"
#include "treatment.h"

class DcmElement;
class DcmItem;

/// Collects what a data set says of whose it is, before any of it goes. Elements of unknown kind become
/// those that the standard has there.
class ValueGatherer
{
public:
    /// All outlive it.
    ValueGatherer(const DeidentifyOptions &options, IdentifyingValues &values, TextCleaner &texts);

    /// @return false where the data set has more elements side by side than any object has
    bool gather(DcmItem &dataset) { return gather(dataset, Place()); }

    bool hadContent() const { return m_hadContent; } ///< what a report says in its items
    bool hadDocument() const { return m_hadDocument; }

private:
    struct Place
    {
        int depth = 0;
        bool isStrict = false;
        QByteArray characterSet;
    };

    bool gather(DcmItem &item, const Place &around);
    void gatherValue(DcmElement &element, Treatment treatment);

    const DeidentifyOptions &m_options;
    IdentifyingValues &m_values;
    TextCleaner &m_texts;
    bool m_hadContent = false;
    bool m_hadDocument = false;
};
