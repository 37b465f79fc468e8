#pragma once

#include <QList>
#include <QObject>
#include <QVector>

class EditController;
class PatientManagerMainWindow;
class QSplitter;
class RecordForm;

/// Which of the four tables stand in the window, one alone or all, and how they share its height. Owned by
/// the window; GUI thread.
class TableStage : public QObject
{
    Q_OBJECT

public:
    TableStage(PatientManagerMainWindow *library, QVector<RecordForm *> forms, EditController *edits,
        QObject *parent);

    /// All four, in the heights that the user gave them.
    void arrange();
    /// Heights of the information panel and the four tables; other numbers of them are not taken.
    QList<int> heights() const { return m_heights; }
    void setHeights(const QList<int> &heights);
    /// The images in the order in which they were taken, whatever the order of their files.
    void sortImages();
    /// Picks the first patient, study and series that there are, so that each table shows rows.
    void selectFirst();

public slots:
    /// Shows one table alone by its name, or all four and no panel (an empty name).
    void showTable(const QString &tableName);
    /// The patient table has been filled: where another one stands alone all come back.
    void showPatients();

private:
    void rejoin();
    void noteHeights();

    PatientManagerMainWindow *const m_library;
    const QVector<RecordForm *> m_forms;
    EditController *const m_edits;
    QSplitter *const m_splitter;
    QList<int> m_heights; ///< while all four stood there
};
