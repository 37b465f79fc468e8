#pragma once

#include "attributechange.h"
#include "deidentifyoptions.h"
#include "identifyingvalues.h"
#include "pseudonyms.h"
#include "textcleaner.h"
#include "treatment.h"

#include <QVector>

class DcmElement;
class DcmItem;
class DcmSequenceOfItems;

/**
 * Takes out of a data set what identifies, by the profile: first all such values are gathered, then each
 * element is treated, and what stays is looked through for them. One for each data set; the pixels are not
 * its business.
 */
class DatasetCleaner
{
public:
    /// Both outlive it.
    DatasetCleaner(const DeidentifyOptions &options, const Pseudonyms &pseudonyms);

    /// Keeps a list of what is changed.
    void setRecording(bool on) { m_isRecording = on; }
    /// @return false where the data set has more elements side by side than any object has
    bool clean(DcmItem &dataset);

    const QVector<AttributeChange> &changes() const { return m_changes; }
    bool hadContent() const { return m_hadContent; } ///< what a report says in its items
    bool hadDocument() const { return m_hadDocument; }
    QString patientName() const { return m_name; }
    QString patientId() const { return m_id; }

private:
    /// Where an item stands.
    struct Place
    {
        int depth = 0;
        bool isStrict = false;
        QString path;
    };

    void identify(DcmItem &dataset);
    bool gather(DcmItem &item, int depth, bool isStrict);
    void gatherValue(DcmElement &element, Treatment treatment);
    void cleanItem(DcmItem &item, const Place &place);
    void enter(DcmSequenceOfItems &sequence, const Place &place);
    DcmElement *treat(DcmItem &item, DcmElement *element, Treatment treatment, const Place &place);
    DcmElement *putDummy(DcmItem &item, DcmElement *element);
    DcmElement *putText(DcmItem &item, DcmElement *element, const QByteArray &text);
    DcmElement *sweep(DcmItem &item, DcmElement *element);
    DcmElement *rename(DcmItem &item, DcmElement *element);
    QByteArray newUids(const QByteArray &uids) const;
    AttributeChange describe(DcmElement &element, const Place &place);
    void record(AttributeChange change, DcmElement *after);
    void selectCharacterSet(DcmItem &item);

    const DeidentifyOptions &m_options;
    const Pseudonyms &m_pseudonyms;
    IdentifyingValues m_values;
    TextCleaner m_texts;
    QString m_name; ///< of the patient from now on
    QString m_id;
    int m_daysBack = 0;
    bool m_isRecording = false;
    bool m_hadContent = false;
    bool m_hadDocument = false;
    QVector<AttributeChange> m_changes;
};
