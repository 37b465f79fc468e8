#pragma once

#include <QHash>
#include <QObject>
#include <QVector>

class QKeyEvent;
class RecordForm;

/**
 * Lets keys and the right mouse button choose records as a click does, so that the tables below never show
 * another record's parts than those of the highlighted row. Acts when the key is let go: holding it down only
 * moves the row. Tab leaves a table instead of walking through its cells.
 *
 * Does nothing while a table below holds unsaved edits. Owned by the window; GUI thread.
 */
class RowKeys : public QObject
{
    Q_OBJECT

public:
    /// @param forms from the patient form down
    RowKeys(QVector<RecordForm *> forms, QObject *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What is highlighted: the current row, and how many are selected.
    struct Highlight
    {
        int row = -1;
        int selected = 0;
        bool operator!=(const Highlight &other) const
        {
            return row != other.row || selected != other.selected;
        }
    };

    Highlight highlight(int level) const;
    void onKey(int level, const QKeyEvent &key);
    void choose(int level) const;

    const QVector<RecordForm *> m_forms;
    QHash<const QObject *, int> m_levels; ///< of each view and its viewport
    Highlight m_before; ///< when the key went down
};
