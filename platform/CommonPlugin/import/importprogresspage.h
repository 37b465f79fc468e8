#pragma once

#include "importrate.h"

#include <QElapsedTimer>
#include <QWidget>

class ElidedLabel;
class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
struct ImportProgress;

/// The page of a running import: files done of found, rate, times, the file being read, Cancel.
class ImportProgressPage : public QWidget
{
    Q_OBJECT

public:
    explicit ImportProgressPage(QWidget *parent = nullptr);

    /// Shows an import that waits for its turn.
    void reset();
    /// Time counts from here.
    void begin();
    void showProgress(const ImportProgress &progress);
    void showCancelling();

signals:
    void cancelRequested();

private:
    void build();
    QLabel *addValue(QGridLayout *grid, int place, const QString &caption);
    void showTimes(const ImportProgress &progress);

    ImportRate m_rate;
    QElapsedTimer m_time;
    QLabel *m_headline = nullptr;
    QProgressBar *m_bar = nullptr;
    ElidedLabel *m_current = nullptr;
    QLabel *m_files = nullptr;
    QLabel *m_speed = nullptr;
    QLabel *m_elapsed = nullptr;
    QLabel *m_left = nullptr;
    QPushButton *m_cancel = nullptr;
};
