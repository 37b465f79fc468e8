#pragma once

#include <QObject>
#include <QVector>

class PatientManagerMainWindow;
class QAction;
class QModelIndex;
class QTableView;
class RecordForm;

/**
 * Lets the user edit records: F2 on a cell, Submit and Revert while something is unsaved, and a question
 * before anything would drop unsaved edits (a refresh, another row above the edited table, a new sort order).
 *
 * Keys, UIDs, counts and file places stay read-only. Owned by the window; GUI thread.
 */
class EditController : public QObject
{
    Q_OBJECT

public:
    /// @param forms from the patient form down
    EditController(QVector<RecordForm *> forms, PatientManagerMainWindow *library, QObject *parent);

    /// "Edit Cell": acts on the table that has the focus.
    QAction *editAction() const { return m_editAction; }
    bool hasUnsavedEdits() const;
    /// True where nothing is unsaved, or the user agrees to lose it.
    bool mayDropEdits();

    /// False for a column that identifies a record, or that the index keeps up itself.
    static bool isEditable(const QString &column);

signals:
    /// The user has had the tables read again.
    void refreshed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void editCurrentCell();
    void updateActions();
    void takeOverRefresh();
    void protect(RecordForm *form);
    bool confirmLoss(const QVector<RecordForm *> &forms);
    bool confirmPress(int level, bool onHeader, const QModelIndex &index);
    QVector<RecordForm *> editedFrom(int level) const;

    const QVector<RecordForm *> m_forms;
    PatientManagerMainWindow *const m_library;
    QAction *const m_editAction;
    bool m_swallowRelease = false;
};
