#pragma once

#include "imageformatform.h"
#include "patientform.h"
#include "seriesform.h"
#include "studyform.h"

#include <QJsonObject>

/**
 * The four record forms, joined by their selection signals and shown one above the other, and how long they
 * take to fill. Every time ends when the rows are painted. Needs the default connection on a filled index.
 */
class FormBench
{
public:
    explicit FormBench(int rounds);

    /// Shows all patients, sorts them by clicks on the header, and scrolls: times and growth of memory.
    QJsonObject manyPatients();
    /// Clicks on patients, and on the series with many images.
    QJsonObject clicks();

private:
    double showAll();
    double sortBy(int column);
    double clickRow(RecordForm &form, int row, const std::vector<RecordForm *> &filled);

    const int m_rounds;
    QWidget m_window;
    PatientForm *m_patients;
    StudyForm *m_studies;
    SeriesForm *m_series;
    ImageformatForm *m_images;
};
