#pragma once

#include "changerecorder.h"
#include "deidentifyoptions.h"
#include "keptvalues.h"
#include "treatment.h"
#include "valuegatherer.h"

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
    /// @param identity what tells the patient from others
    DatasetCleaner(
        const DeidentifyOptions &options, const Pseudonyms &pseudonyms, const QByteArray &identity);

    /// Keeps a list of what is changed.
    void setRecording(bool on) { m_recorder.setOn(on); }
    /// @return false where the data set has more elements side by side than any object has
    bool clean(DcmItem &dataset);

    const QVector<AttributeChange> &changes() const { return m_recorder.changes(); }
    bool hadContent() const { return m_gatherer.hadContent(); } ///< what a report says in its items
    bool hadDocument() const { return m_gatherer.hadDocument(); }
    QString patientName() const { return m_name; }
    QString patientId() const { return m_id; }

private:
    /// Where an item stands.
    struct Place
    {
        int depth = 0;
        bool isStrict = false;
        QByteArray characterSet; ///< of what is around it, until it has one of its own
        QString path;
    };

    void cleanItem(DcmItem &item, const Place &around);
    void enter(DcmSequenceOfItems &sequence, const Place &place);
    DcmElement *treat(DcmItem &item, DcmElement *element, Treatment treatment);
    DcmElement *treatText(DcmItem &item, DcmElement *element, Treatment treatment);
    DcmElement *keep(DcmItem &item, DcmElement *element);
    DcmElement *putDummy(DcmItem &item, DcmElement *element);
    DcmElement *putText(DcmItem &item, DcmElement *element, const QByteArray &text);
    DcmElement *rename(DcmItem &item, DcmElement *element);

    const DeidentifyOptions &m_options;
    IdentifyingValues m_values;
    TextCleaner m_texts;
    KeptValues m_kept;
    ValueGatherer m_gatherer;
    ChangeRecorder m_recorder;
    const QString m_name; ///< of the patient from now on
    const QString m_id;
    const int m_daysBack;
};
