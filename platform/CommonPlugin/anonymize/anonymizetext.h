#pragma once

#include "deidentifyreport.h"
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
    /// Why names may be seen in a picture; empty where they cannot.
    static QString burnedIn(BurnedIn burnedIn);
    /// What must be looked at before copies leave: names in the pictures themselves; empty where nothing.
    static QString burnedIn(const DeidentifyReport &report);
    /// What became of it all, a sentence each.
    static QStringList summary(const DeidentifyReport &report);
    /// The same with every file that failed, as a text to be kept.
    static QString whole(const DeidentifyReport &report);
};
