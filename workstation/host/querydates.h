#pragma once

#include <QObject>
#include <QTimer>

class QCheckBox;
class QDateEdit;
class QWidget;

/**
 * The two days of the query panel: their check boxes enable them, and a day that is not checked stands at the
 * edge of what there is, from the oldest record of the index to today, as the index grows and days pass.
 * Owned by the panel; GUI thread.
 */
class QueryDates : public QObject
{
    Q_OBJECT

public:
    explicit QueryDates(QWidget *panel);

public slots:
    /// Looks again: the index has changed, or a day may have passed.
    void update();

private:
    QCheckBox *const m_firstCheck;
    QDateEdit *const m_first;
    QCheckBox *const m_lastCheck;
    QDateEdit *const m_last;
    QTimer m_timer;
};
