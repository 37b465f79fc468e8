#pragma once

#include "attributes.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

class PatientManagerMainWindow;
class RecordForm;

/// Some records of one level.
struct RecordSelection
{
    RecordLevel level = RecordLevel::Patient;
    QList<qlonglong> keys;

    bool isEmpty() const { return keys.isEmpty(); }
    /// In whatever order.
    bool isOfSameRecords(const RecordSelection &other) const;
    /// "1 patient", "3 series"; empty where nothing is selected.
    QString text() const;
};

/**
 * What is selected in the tables and the tree, so that the text beside an action can name what it will touch.
 *
 * Follows what the forms and the tree report, and drops what is no longer listed. Owned by the window; GUI
 * thread.
 */
class SelectionStatus : public QObject
{
    Q_OBJECT

public:
    /// @param forms from the patient form down
    SelectionStatus(
        const PatientManagerMainWindow *library, QVector<RecordForm *> forms, QObject *parent = nullptr);

    /// The latest selection: records picked in the tree by a double click, or listed by a click on what they
    /// belong to; images; or what forActions() says.
    RecordSelection current() const;
    /// What an action of the library works on: the selected series, else the studies, else the patients. Of
    /// images and of what a click in the tree has listed it knows nothing.
    RecordSelection forActions() const;

public slots:
    /// Ends what was picked in the tree: the selection of the tables stands again, and is reported.
    void leaveTree();
    /// The index has changed: a pick in the tree ends with its records.
    void dropGone();

signals:
    /// Once for all that happens at a time.
    void changed();

private:
    void watch(RecordForm *form);
    void watchTree();
    bool hasSelection(int level) const;

    const PatientManagerMainWindow *const m_library;
    const QVector<RecordForm *> m_forms;
    QTimer m_change;
    bool m_isFromTree = false; ///< whether the latest selection was made in the tree
    RecordSelection m_listed; ///< by the latest click in the tree, until somebody else reports
};
