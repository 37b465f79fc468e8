#pragma once

#include "deidentifier.h"

#include <QStringList>
#include <QVector>

/// What a run is asked to do: a plain value.
struct DeidentifyRequest
{
    QStringList files; ///< absolute
    QString folder; ///< that exists, in which the run makes one of its own
    QString name; ///< of that folder; a number is added where it is taken
    DeidentifyOptions options;
    QByteArray siteKey;
};

/// A file that is not among the results.
struct DeidentifyFailure
{
    QString path;
    DeidentifyProblem problem = DeidentifyProblem::None;
    QString detail;
};

/// A file whose copy may show names or faces in its pictures.
struct DoubtfulPicture
{
    QString path; ///< of the original
    BurnedIn burnedIn = BurnedIn::Possible;
};

/// What a run came to.
struct DeidentifyReport
{
    QString folder; ///< of the results, once they are in their place
    QStringList files; ///< the results there
    QVector<DeidentifyFailure> failures;
    QStringList names; ///< of the patients of the results, as they are now, each once
    QStringList modalities; ///< one for each name: of its first image
    QVector<DoubtfulPicture> doubtful; ///< among the results
    int leftOut = 0; ///< results that were not wanted because of burned-in names
    int sharedNumbers = 0; ///< IDs that several patients had, who were told apart by name and birth date
    int documents = 0; ///< results with an embedded document that is empty now
    bool isCancelled = false;
    DeidentifyProblem ended = DeidentifyProblem::None; ///< what ended the whole run
    QString endDetail;
};
