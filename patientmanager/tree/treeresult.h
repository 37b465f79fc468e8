#pragma once

#include <QSet>
#include <QStringList>

class QObject;
class QPatients;
class QPatientTreeModel;

/**
 * What a stored inquiry found, ready to be shown: the model over its records, and how the columns of all
 * levels are shown. Reads the captions on the default connection.
 */
struct TreeResult
{
    /// @param patients what was found; outlives the model
    /// @param parent owns the model
    TreeResult(QPatients *patients, QObject *parent);

    QPatientTreeModel *model;
    int patientColumns; ///< they come first
    QStringList captions; ///< of all columns
    QSet<int> hiddenColumns;
};
