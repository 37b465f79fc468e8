#include "samplecatalogue.h"
#include "samplewriter.h"

#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

bool writeSeries(const CataloguePatient &person, const CatalogueStudy &study, SamplePosition position,
    const QString &folder)
{
    const SampleSeries &series = study.series[position.series];
    for (position.slice = 0; position.slice < series.slices; ++position.slice) {
        const QString path =
            QStringLiteral("%1/%2.dcm").arg(folder).arg(position.slice + 1, 3, 10, QLatin1Char('0'));
        const QString error = SampleWriter(person.patient, study.study, series, position).write(path);
        if (!error.isEmpty()) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(error));
            return false;
        }
    }
    return true;
}

bool writePatient(const CataloguePatient &person, int number, const QString &folder)
{
    SamplePosition position;
    position.patient = number;
    for (position.study = 0; position.study < person.studies.size(); ++position.study) {
        const CatalogueStudy &study = person.studies[position.study];
        for (position.series = 0; position.series < study.series.size(); ++position.series) {
            const QString leaf = QStringLiteral("%1/study%2/series%3")
                                     .arg(folder)
                                     .arg(position.study + 1)
                                     .arg(position.series + 1);
            if (!QDir().mkpath(leaf) || !writeSeries(person, study, position, leaf)) {
                return false;
            }
        }
    }
    return true;
}

/// A patient's folder appears when it is complete, so that a run that was broken off leaves no half of it.
bool addPatient(const CataloguePatient &person, int number, const QDir &target)
{
    const QString folder = target.filePath(person.patient.folder);
    const QString unfinished = target.filePath(QLatin1Char('.') + person.patient.folder);
    if (QDir(folder).exists()) {
        return true;
    }
    QDir(unfinished).removeRecursively();
    return writePatient(person, number, unfinished) && QDir().rename(unfinished, folder);
}

} // namespace

/// samplegen FOLDER: writes the patients of the sample set that FOLDER does not have yet.
int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: samplegen FOLDER\n");
        return 2;
    }
    const QDir target(QFile::decodeName(argv[1]));
    int number = 0;
    for (const CataloguePatient &person : sampleCatalogue()) {
        if (!addPatient(person, number++, target)) {
            std::fprintf(stderr, "could not write %s\n", qPrintable(target.filePath(person.patient.folder)));
            return 1;
        }
    }
    return 0;
}
