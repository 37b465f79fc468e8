#pragma once

#include <QObject>
#include <QVector>

class PatientManagerMainWindow;
class QMainWindow;
class RecordForm;
class TableStage;

/**
 * Keeps for each user how the window looks: its place, docks and tool bars, the heights of the tables, and
 * the order of columns and rows of each. (Column widths are kept by the tables themselves, hidden columns by
 * the index.) What is kept is taken back only as far as it makes sense: the window always lies on a screen,
 * columns go by their names. Owned by the window; GUI thread.
 */
class LayoutKeeper : public QObject
{
    Q_OBJECT

public:
    /// @param frame the window itself, with the docks of the host; the library's docks are kept, too
    LayoutKeeper(QMainWindow *frame, PatientManagerMainWindow *library, TableStage *stage,
        QVector<RecordForm *> forms, QObject *parent);

    void restore();
    /// Without an index only what stands around the library.
    void save() const;

private:
    void bringOnScreen();

    QMainWindow *const m_frame;
    PatientManagerMainWindow *const m_library;
    TableStage *const m_stage;
    const QVector<RecordForm *> m_forms;
};
