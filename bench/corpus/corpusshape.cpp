#include "corpusshape.h"

bool CorpusShape::isValid() const
{
    return patients > 0 && series >= patients && files >= series && side > 0 && side <= 1024;
}

CorpusPosition CorpusShape::position(int file) const
{
    const int imagesOfSeries = (files + series - 1) / series;
    const int seriesOfPatient = (series + patients - 1) / patients;
    CorpusPosition result;
    result.series = file / imagesOfSeries;
    result.image = file % imagesOfSeries;
    result.patient = result.series / seriesOfPatient;
    return result;
}
