#pragma once

#include "sampleseries.h"

struct CatalogueStudy
{
    SampleStudy study;
    QVector<SampleSeries> series;
};

struct CataloguePatient
{
    SamplePatient patient;
    QVector<CatalogueStudy> studies;
};

/// Everybody in the sample set: invented people, chosen so that every kind of name and image shows.
QVector<CataloguePatient> sampleCatalogue();
