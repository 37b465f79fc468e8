#pragma once

#include "indexrecord.h"
#include "recordcolumns.h"
#include "recordfamily.h"

#include <QList>

class QStudy;

/// One patient of the index with the studies that were read or given to it, which it owns.
class IMAGEBASE_EXPORT QPatient : public IndexRecord
{
    Q_OBJECT
    PM_PATIENT_COLUMNS(PM_RECORD_PROPERTY)

public:
    enum class Column { PM_PATIENT_COLUMNS(PM_RECORD_COLUMN) };

    explicit QPatient(QObject *parent = nullptr);
    ~QPatient() override;

    /// Back to a patient without key, values and studies.
    void clear();
    void setPatientPK(qint64 pk) { setPk(pk); }
    /// As stored: components parted by carets.
    QString patientName() const;

    /// Newest first, or in the order of setStudys().
    QList<QStudy *> getStudys() const { return m_studies; }
    /// Takes the studies over in the place of those it has.
    void setStudys(const QList<QStudy *> &studies);

    /// Reads all studies of the patient, without their series, in the place of those it has.
    bool searchStudys();
    /// Reads the record's own row; a patient without a key takes that of its first study first. @return
    /// whether there is such a row
    bool searchPatientInfo();

private:
    friend class QStudy;
    friend class RecordTreeReader;
    static RecordFamily<QPatient, QStudy> family();
    QPatient(qint64 pk, const RecordRow &row);

    QList<QStudy *> m_studies;
};
