#pragma once

#include <QString>
#include <QStringList>

/// What people know a send by, as it was when it was asked for.
struct SendLabel
{
    QString destination; ///< its configured name; empty where nobody gave one
    QStringList patients; ///< names of the first few whose images are sent, as they are shown
    int patientCount = 0; ///< of all of them; 0 where nobody knows
};
