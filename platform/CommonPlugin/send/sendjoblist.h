#pragma once

#include <QWidget>

class DetailLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
struct SentJob;

/// The sends that SendNotifier knows, a line for each destination, to be cancelled and tried again; hidden
/// where there are none. GUI thread.
class SendJobList : public QWidget
{
    Q_OBJECT

public:
    explicit SendJobList(QWidget *parent = nullptr);

    /// Shows them as they stand now.
    void update();

private:
    void buildTree();
    void buildButtons();
    QPushButton *addButton(const QString &text, const QString &name, const QString &toolTip);
    void showJobs();
    void fillItem(QTreeWidgetItem *item, const SentJob &job);
    void showNotice();
    void enableButtons();
    qint64 currentJob() const;

    QTreeWidget *m_jobs = nullptr;
    DetailLabel *m_notice = nullptr; ///< of the chosen send
    QPushButton *m_retry = nullptr;
    QPushButton *m_cancel = nullptr;
};
