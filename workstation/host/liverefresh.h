#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

class RecordForm;

/**
 * Shows new rows in the record forms while somebody writes to the index.
 *
 * Reloads the forms that are visible, which keep their selection and scroll position; not while an edit is
 * unsaved, an editor is open or a mouse button is down, and seldom where a reload is slow. Owned by the
 * window; GUI thread.
 */
class LiveRefresh : public QObject
{
    Q_OBJECT

public:
    LiveRefresh(QVector<RecordForm *> forms, QObject *parent);

    /// True while rows are waiting to be shown.
    bool isPending() const { return m_pending; }

public slots:
    void onIndexChanged();
    /// Reads the visible forms now; those with unsaved edits or an open editor stay as they are.
    void refreshNow();

signals:
    /// What stood in the index at the last change is on screen.
    void refreshed();

private:
    void tryReload();
    bool mustHold() const;

    QVector<QPointer<RecordForm>> m_forms;
    QTimer m_timer;
    QElapsedTimer m_sinceReload;
    qint64 m_pauseMs = 0;
    bool m_pending = false;
};
