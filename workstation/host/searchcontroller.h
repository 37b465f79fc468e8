#pragma once

#include <QObject>

class EditController;
class ImportCentre;
class NTableView;
class QAction;
class SearchBar;
class ShownPatients;
struct IndexCounts;

/**
 * Joins the search bar to the patient table: typing lists patients, what the table shows stands in the bar,
 * Enter leads into the table. Keeps the last search for each user. Owned by the window; GUI thread.
 */
class SearchController : public QObject
{
    Q_OBJECT

public:
    SearchController(
        SearchBar *bar, ShownPatients *shown, NTableView *table, EditController *edits, QObject *parent);

    /// "Find Patients…": leads to the bar.
    QAction *findAction() const { return m_findAction; }
    /// Lists what was asked for last when the window was closed.
    void restore();
    void save() const;
    /// Reads the patients for the first search, once the start is over and unless an import runs.
    void prepareWhenIdle(const ImportCentre *imports);

public slots:
    void setCounts(const IndexCounts &counts);

private:
    void onTextWanted(const QString &text);
    void show();
    void goToFirstRow();
    void say();

    SearchBar *const m_bar;
    ShownPatients *const m_shown;
    NTableView *const m_table;
    EditController *const m_edits;
    QAction *const m_findAction;
    qint64 m_total = 0; ///< patients of the index
    bool m_isUnreadable = false;
};
