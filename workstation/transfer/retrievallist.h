#pragma once

#include "retrieval.h"

#include <QWidget>

class DetailLabel;
class PlainTableView;
class QPushButton;
class RetrievalModel;
class RetrievalService;

/// The retrievals of a service as a list, with what can be done with them. GUI thread.
class RetrievalList : public QWidget
{
    Q_OBJECT

public:
    /// @param service outlives the list
    explicit RetrievalList(RetrievalService *service, QWidget *parent = nullptr);

private:
    void buildTable();
    QPushButton *addButton(QLayout *layout, const QString &name, const QString &text, const QString &toolTip);
    void forChosen(void (RetrievalService::*request)(qint64));
    QVector<Retrieval> chosen() const;
    void update();
    void enableButtons();
    void showNotice();

    RetrievalService *const m_service;
    RetrievalModel *const m_model;
    PlainTableView *const m_table;
    DetailLabel *const m_notice; ///< of the current retrieval
    QPushButton *m_cancel = nullptr;
    QPushButton *m_retry = nullptr;
    QPushButton *m_remove = nullptr;
};
