#pragma once

#include "indexcounts.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class ImportCentre;
class QLabel;
class QStatusBar;

/// What the status bar says: what runs now, how many records there are, and which index it is. Owned by the
/// window.
class StatusPanel : public QObject
{
    Q_OBJECT

public:
    /// @param imports asked a few times a second what runs
    StatusPanel(QStatusBar *bar, const ImportCentre *imports);

    void setIndexPath(const QString &path);
    void setCounts(const IndexCounts &counts);
    /// What to say while nothing runs, until the selection changes after a while; takes the place of
    /// setListing(), too.
    void setIdleText(const QString &text);
    /// What has filled the tables last, said before the idle text; empty takes it back.
    void setListing(const QString &text);
    /// Why the patient tree shows nothing, said before the idle text; empty where there is nothing to say.
    void setTreeProblem(const QString &text);
    /// What waits for that which runs now, said behind it; empty where nothing does.
    void setNotice(const QString &text);
    /// What is selected, such as "3 series"; empty for nothing.
    void setSelection(const QString &text);

    QString activityText() const;
    QString countsText() const;

private:
    void update();

    const ImportCentre *const m_imports;
    QLabel *const m_activity;
    QLabel *const m_selection;
    QLabel *const m_counts;
    QLabel *const m_path;
    QTimer m_timer;
    QElapsedTimer m_sinceIdleText;
    QString m_idleText;
    QString m_listing;
    QString m_treeProblem;
    QString m_notice;
};
