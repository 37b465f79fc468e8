#pragma once

#include "archivesearch.h"

#include <QWidget>

class ArchiveModel;
class ArchiveQuestionForm;
class ArchiveResults;
class QComboBox;
class QLabel;
class QPushButton;
class QTimer;
class RetrievalService;

/**
 * The window that searches a configured archive and brings what is chosen there into the index. Retrievals
 * belong to the service and go on when it is closed. GUI thread.
 */
class QueryRetrieveWindow : public QWidget
{
    Q_OBJECT

public:
    /// @param service outlives the window
    explicit QueryRetrieveWindow(RetrievalService *service, QWidget *parent = nullptr);

public slots:
    /// The index has other images than before.
    void onIndexChanged();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();
    QWidget *buildQuestion();
    QWidget *buildResults();
    QPushButton *addButton(QLayout *layout, const QString &name, const QString &text, const QString &toolTip,
        void (QueryRetrieveWindow::*slot)());
    void readArchives();
    void search();
    void stop();
    void onEnded(const ArchiveAnswer &answer);
    void onSeries(const QString &studyUid, const QVector<QueryRecord> &series, const ArchiveAnswer &answer);
    void openRow(const QModelIndex &index);
    void retrieve();
    void enableButtons();
    void say(const QString &text);
    void countHeld();

    RetrievalService *const m_service;
    ArchiveSearch *const m_search;
    ArchiveModel *const m_model;
    QTimer *const m_heldTimer;
    QVector<Archive> m_archives;
    Archive m_searched; ///< the archive whose answers are shown
    QComboBox *m_archive = nullptr;
    ArchiveQuestionForm *m_question = nullptr;
    ArchiveResults *m_results = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_searchButton = nullptr;
    QPushButton *m_stopButton = nullptr;
    QPushButton *m_retrieveButton = nullptr;
};
