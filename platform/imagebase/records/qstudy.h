#pragma once

#include "indexrecord.h"
#include "recordcolumns.h"
#include "recordfamily.h"

#include <QList>

class QPatient;
class QSeries;

/// One study of the index with the series that were read or given to it, which it owns. Belongs to its
/// patient.
class IMAGEBASE_EXPORT QStudy : public IndexRecord
{
    Q_OBJECT
    PM_STUDY_COLUMNS(PM_RECORD_PROPERTY)

public:
    enum class Column { PM_STUDY_COLUMNS(PM_RECORD_COLUMN) };

    explicit QStudy(qint64 pk, QObject *parent = nullptr);
    explicit QStudy(QObject *parent = nullptr);
    ~QStudy() override;

    /// Null until a patient has taken it over.
    QPatient *getPatient() const { return m_patient; }
    QString getStudyUID() const;
    /// In the order of their numbers, or in that of setSereis().
    QList<QSeries *> getSeries() const { return m_series; }
    /// Takes the series over in the place of those it has.
    void setSereis(const QList<QSeries *> &series);

    /// Reads the record's own row; a study without a key takes that of its first series first. @return
    /// whether there is such a row
    bool searchStudyInfo();
    /// Reads all series of the study in the place of those it has.
    bool searchSeries();

private:
    friend class QPatient;
    friend class QSeries;
    friend class RecordTreeReader;
    static RecordFamily<QStudy, QSeries> family();
    QStudy(qint64 pk, const RecordRow &row);
    static bool isBefore(const QStudy *a, const QStudy *b);

    QPatient *m_patient = nullptr;
    QList<QSeries *> m_series;
};
