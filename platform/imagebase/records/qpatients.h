#pragma once

#include "imagebase_export.h"
#include "inquirycondition.h"
#include "inquiryproblem.h"

#include <QList>
#include <QObject>
#include <QStringList>

class QPatient;
class QSeries;
class QStudy;

/**
 * The result of a stored inquiry: patients with their studies and series, which it owns.
 *
 * Read from one snapshot of Qt's default connection with one query a level. GUI thread.
 */
class IMAGEBASE_EXPORT QPatients : public QObject
{
    Q_OBJECT

public:
    explicit QPatients(QObject *parent = nullptr);
    ~QPatients() override;

    /**
     * Runs the stored inquiry of a name in the place of the result it has; the empty name finds the records
     * updated today. An inquiry that is not there, or cannot be understood, finds nothing: problem() says
     * why.
     * @return whether it ran
     */
    bool advanceQueryByName(const QString &name);
    /// Why the last inquiry found nothing.
    const InquiryProblem &problem() const { return m_problem; }

    /// By name; studies of a patient newest first; series of a study by number.
    QList<QPatient *> getAllPatient() const { return m_patients; }
    /// In the order of their patients.
    QList<QStudy *> getAllStudy() const { return m_studies; }
    QList<QSeries *> getAllSeries() const { return m_series; }

    /// Deletes the last patients with all below them: for whoever drops a large result bit by bit. The lists
    /// of all studies and series are empty from then on.
    void dropLast(int patients);

    /// "pk" and the columns that the field configuration shows: properties of the record class. As they were
    /// when the object was made.
    QStringList getPatientTitleList() const { return m_patientTitles; }
    QStringList getStudyTitleList() const { return m_studyTitles; }
    QStringList getSeriesTitleList() const { return m_seriesTitles; }
    /// Whether the field configuration hides the key of the studies.
    bool isStudyPkHidden() const { return m_studyPkHidden; }
    bool isSeriesPkHidden() const { return m_seriesPkHidden; }

private:
    void clear();
    void readTitles();
    void run(const InquiryConditions &conditions);

    QStringList m_patientTitles;
    QStringList m_studyTitles;
    QStringList m_seriesTitles;
    bool m_studyPkHidden = true;
    bool m_seriesPkHidden = true;
    QList<QPatient *> m_patients;
    QList<QStudy *> m_studies;
    QList<QSeries *> m_series;
    InquiryProblem m_problem;
};
