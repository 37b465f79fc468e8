#pragma once

#include "importreport.h"

#include <QWidget>

#include <array>

class ImportIssueModel;
class QLabel;
class QLayout;
class QPushButton;
class QTableView;

/// The page of an import that has ended: every count, every file that was not indexed with its reason; to be
/// saved, or tried again.
class ImportReportPage : public QWidget
{
    Q_OBJECT

public:
    explicit ImportReportPage(QWidget *parent = nullptr);

    void setReport(const ImportReport &report);

signals:
    void retryRequested(const QStringList &paths);
    void closeRequested();

private:
    void build();
    QLayout *buildCounts();
    QTableView *buildIssues();
    QLayout *buildButtons();
    QPushButton *addButton(QLayout *layout, const QString &text, const QString &toolTip);
    void askWhereToSave();
    void save(const QString &path);

    ImportReport m_report;
    QLabel *m_headline = nullptr;
    std::array<QLabel *, static_cast<std::size_t>(FileVerdict::Count)> m_counts{};
    QLabel *m_found = nullptr;
    ImportIssueModel *m_model;
    QLabel *m_issuesCaption = nullptr;
    QTableView *m_issues = nullptr;
    QPushButton *m_retry = nullptr;
    QPushButton *m_close = nullptr;
};
