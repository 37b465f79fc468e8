#pragma once

#include <QTimer>

class QPatients;
class QPatientTreeModel;

/**
 * Deletes a tree that is no longer shown, with its records: a small one with the next events, a large one bit
 * by bit, so that nobody waits for it. Deletes itself at the end, or with the parent of the tree. GUI thread.
 */
class RetiredTree : public QObject
{
    Q_OBJECT

public:
    /// @param model of no view any more; it owns the records
    static void retire(QPatientTreeModel *model, QPatients *patients);

private:
    RetiredTree(QPatientTreeModel *model, QPatients *patients);
    void deleteSome();

    QPatientTreeModel *m_model;
    QPatients *m_patients;
    QTimer m_timer;
};
