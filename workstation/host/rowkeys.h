#pragma once

#include <QObject>
#include <QVector>

class RecordForm;

/**
 * Lets the arrow keys choose a record as a click does, so that the tables below never show another record's
 * parts than those of the highlighted row. Acts when the key is let go: holding it down only moves the row.
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
    void choose(int level) const;

    const QVector<RecordForm *> m_forms;
};
