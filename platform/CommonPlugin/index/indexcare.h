#pragma once

#include "indexjob.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
struct MaintenanceResult;

/**
 * The care of the index: a check, compacting, a backup; one at a time, in the background, each with its
 * progress, a way to end it, and its result in words. The destructor ends what runs. GUI thread.
 */
class IndexCare : public QWidget
{
    Q_OBJECT

public:
    explicit IndexCare(QWidget *parent = nullptr);

    bool isRunning() const { return m_job != nullptr; }

public slots:
    void check();
    /// Refused while an import runs.
    void compact();
    /// Asks where to.
    void backUp();
    /// Ends what runs; the index stays as it was.
    void stop();

signals:
    /// The index may have another size than before.
    void changed();

private:
    using Sentence = QString (*)(const MaintenanceResult &result);

    void build();
    QPushButton *addButton(QLayout *row, const QString &text, const QString &name, const QString &hint);
    void run(const QString &doing, IndexJob::Work work, Sentence sentence);
    void showEnd(const QString &sentence);
    void setRunning(bool running);

    QList<QPushButton *> m_buttons;
    QProgressBar *m_bar = nullptr;
    QPushButton *m_stop = nullptr;
    QLabel *m_result = nullptr;
    IndexJob *m_job = nullptr;
};
