#pragma once

#include "datepick.h"

#include <QObject>
#include <QString>

class EditController;
class PatientManagerMainWindow;
class PatientQueryForm;
class ShownPatients;
class TreeController;

/**
 * Does what the query panel asks for: searches patients, hands the display to the stored inquiries and takes
 * it back, starts an import. Asks before that would drop unsaved edits. The stored inquiries give way as soon
 * as other patients are asked for elsewhere. Owned by the frame; GUI thread.
 */
class QueryPanelController : public QObject
{
    Q_OBJECT

public:
    QueryPanelController(PatientQueryForm *panel, PatientManagerMainWindow *library, ShownPatients *shown,
        EditController *edits, TreeController *tree);

signals:
    /// All four tables are to be seen.
    void allTablesWanted();
    /// What has filled the tables, for the status bar; empty as soon as that is no longer so.
    void told(const QString &text);

private:
    void connectKeys();
    void search(const QString &filter);
    void setAdvanced(bool on);
    void enterAdvanced();
    void leaveAdvanced();
    void giveWay();
    void restoreView();
    void chooseNothing();
    template <typename Widget>
    Widget *part(const char *name) const;
    bool isChecked(const char *box) const;

    PatientQueryForm *const m_panel;
    PatientManagerMainWindow *const m_library;
    ShownPatients *const m_shown;
    EditController *const m_edits;
    TreeController *const m_tree;
    bool m_isAdvanced = false;
    QString m_toldFilter; ///< of the rows that told() was about
    // What the simple view was like.
    QString m_simpleFilter;
    QString m_simpleText;
    DatePick m_simplePick = DatePick::AllDates;
    bool m_wasTreeOpen = false;
    bool m_wereImagesShown = true;
};
