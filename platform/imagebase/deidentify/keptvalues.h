#pragma once

#include "identifyingvalues.h"
#include "pseudonyms.h"
#include "textcleaner.h"

#include <optional>

class DcmElement;
class DcmItem;

/// Looks through values that stay: they must not say what went.
class KeptValues
{
public:
    /// All outlive it.
    KeptValues(const IdentifyingValues &values, TextCleaner &texts, const Pseudonyms &pseudonyms);

    /// What a value has to be; nothing where it may stay. Empty: it has to go.
    /// @param item that it stands in, in the character set of the texts
    std::optional<QByteArray> mended(DcmItem &item, DcmElement &element);
    /// UIDs that stand for others; those of the standard stay.
    QByteArray newUids(const QByteArray &uids) const;

private:
    QByteArray mendedText(DcmItem &item, DcmElement &element, const QByteArray &text);
    QByteArray mendedTerms(const QByteArray &terms);
    QByteArray mendedNumbers(DcmElement &element, const QByteArray &numbers);
    bool isTellingBytes(DcmElement &element) const;

    const IdentifyingValues &m_values;
    TextCleaner &m_texts;
    const Pseudonyms &m_pseudonyms;
};
