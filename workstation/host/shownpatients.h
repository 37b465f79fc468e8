#pragma once

#include "datepick.h"
#include "foundkeys.h"
#include "patientfinder.h"

#include <QObject>
#include <QTimer>
#include <QVector>

#include <functional>
#include <vector>

class EditController;
class PatientForm;
class RecordForm;

/**
 * Which patients the patient table lists: those that arrived today, all, or what a search or a query finds.
 * The one place of the host that sets the filter of that table.
 *
 * The library fills the table, too (from the patient tree): who did it last wins, and this object then
 * answers with DatePick::Other, as it does for a query. A search stays in force: what comes in and matches
 * appears. While something is being edited no table is filled anew. Owned by the window; GUI thread.
 */
class ShownPatients : public QObject
{
    Q_OBJECT

public:
    /// @param forms from the patient form down
    ShownPatients(const QVector<RecordForm *> &forms, EditController *edits, QObject *parent);

    /// A text and a pick, as show() takes them.
    struct Wish
    {
        QString text;
        DatePick pick = DatePick::ArrivedToday;
    };

    /// What was asked of show() last, whatever has been listed since: what a next start goes on with.
    const Wish &wish() const { return m_wish; }
    const QString &text() const { return m_text; }
    DatePick pick() const { return m_pick; }
    /// The SQL condition of the rows in the table, whoever has filled it.
    const QString &filter() const { return m_filter; }
    /// Patients in the table.
    int count() const;
    PatientFinder *finder() { return &m_finder; }

    /**
     * Lists the patients that a text and a pick ask for. A text goes with study dates only: it is dropped for
     * ArrivedToday.
     * @return false where the user keeps unsaved edits: nothing has changed then
     */
    bool show(const QString &text, DatePick pick);
    /// As show(), but nobody has asked for it: the wish stays.
    bool showInstead(const QString &text, DatePick pick);
    /// Lists the patients of an SQL condition, all for an empty one, and reports that nothing is selected any
    /// more. @return as show()
    bool showCondition(const QString &condition);
    /// Calls back once what show() was asked for is in the table: at once where it is. Another show() forgets
    /// it.
    void onceShown(std::function<void()> action);

public slots:
    void onIndexChanged();

signals:
    /// A call of show() or showCondition() begins to list others; the user has agreed to it.
    void asked();
    /// What is asked for, or the rows of the table.
    void changed();
    /// The rows of a call of show() or showCondition() are in the table.
    void listed();
    /// The patients that the search in force finds are others than those in the table.
    void outdated();

private:
    bool isSearch() const;
    bool ask(QString text, DatePick pick);
    void fill();
    void apply(const QString &filter);
    void onAnswered(const std::vector<qint64> &keys, bool isFirst);
    void onRowsRead();
    void onMinute();
    bool isBeingEdited() const;

    PatientForm *const m_form;
    const QVector<RecordForm *> m_forms;
    EditController *const m_edits;
    PatientFinder m_finder;
    FoundKeys m_found;
    std::vector<qint64> m_keys; ///< in m_found
    Wish m_wish;
    QString m_text;
    DatePick m_pick = DatePick::ArrivedToday;
    QString m_filter; ///< that this object has given to the table, or found there
    QString m_dueFilter; ///< waits for the end of an edit
    QTimer m_retry;
    QTimer m_minute;
    QDate m_day;
    bool m_isDue = false; ///< the rows that were asked for are not in the table yet
    std::function<void()> m_onceShown;
};
