#pragma once

#include "deidentifyreport.h"
#include "importreport.h"
#include "sitekey.h"

#include <QCoreApplication>
#include <QStringList>

/// The sentences about anonymous copies. GUI thread.
class AnonymizeText
{
    Q_DECLARE_TR_FUNCTIONS(AnonymizeText)

public:
    /// Why a file has not been copied.
    static QString problem(DeidentifyProblem problem);
    /// Why there is no key.
    static QString keyProblem(const SiteKey::Result &key, const QString &path);
    static QString noImages();
    static QString noFolder(const QString &path);
    /// Why names may be seen in a picture; empty where they cannot.
    static QString burnedIn(BurnedIn burnedIn);
    /// What must be looked at before copies leave: names in the pictures themselves; empty where nothing.
    static QString burnedIn(const DeidentifyReport &report);
    /// What became of it all, a sentence each.
    static QStringList summary(const DeidentifyReport &report);
    /// What became of their import into the index.
    static QStringList imported(const ImportReport &report);
    /// What became of copies that the index did not take before it was stopped.
    static QString notTaken(qint64 copies);
    /// That a report names originals, and whom it is for.
    static QString ownUse();
    /// How the copies were made, an option each.
    static QStringList options(const DeidentifyOptions &options);
    /// All that is known, with every file that failed, as a text to be kept.
    /// @param extra more sentences about what became of it
    static QString whole(
        const DeidentifyReport &report, const DeidentifyRequest &request, const QStringList &extra);
};
