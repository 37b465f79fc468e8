#pragma once

#include "commonplugin_export.h"
#include "webfailure.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

class CloudQuestionForm;
class CloudResultsPanel;
class CloudSearch;
class CloudStudyModel;
class DownloadEngine;
class DownloadListPanel;
class DicomJson;
class HoldingsCounter;
class QLabel;
class QPushButton;
struct DownloadStudy;

/**
 * The window that searches the cloud service for studies and brings the chosen ones into the index. One for
 * the process; GUI thread. What was begun goes on while the window is hidden, and after a restart.
 */
class COMMONPLUGIN_EXPORT DownloadCloudDataForm : public QWidget
{
    Q_OBJECT

public:
    static DownloadCloudDataForm *instance();
    /// Goes on with downloads that an earlier run of the program has left, without showing the window. For a
    /// host that has opened its index.
    static void resumeDownloads() { instance()->reflesh(); }
    /// Whether something is being fetched; for a host that is about to end.
    static bool isDownloading();

    /// The window that it accompanies: it is shown beside that. May be null; not owned.
    void setMainWindow(QWidget *window);
    /// Shows what holds now: who is signed in, and what the index has of the studies in the list.
    void reflesh();

public slots:
    /// The session of whoever is signed in. May come several times for one.
    void onJessionInfo(QByteArray sessionId);

signals:
    /// Something has come into the index.
    void imported();

private:
    explicit DownloadCloudDataForm(QWidget *parent = nullptr);

    void build();
    QWidget *buildSearch();
    void takeSession();
    void takeEngine();
    void search();
    void onSearched(const WebFailure &failure, bool isCutShort);
    void onListed(const QString &studyUid, const QVector<DicomJson> &series, const WebFailure &failure);
    void askToSignIn(const WebFailure &failure);
    void fetch(const DownloadStudy &study);
    void download();
    void showHoldings();
    void refreshButtons();

    QPointer<QWidget> m_mainWindow;
    QPointer<DownloadEngine> m_engine;
    CloudSearch *m_search;
    CloudStudyModel *m_model;
    HoldingsCounter *m_holdings;
    QLabel *m_who = nullptr;
    CloudQuestionForm *m_question = nullptr;
    QPushButton *m_searchButton = nullptr;
    QPushButton *m_stopButton = nullptr;
    CloudResultsPanel *m_results = nullptr;
    DownloadListPanel *m_downloads = nullptr;
    QByteArray m_session; ///< its id
    QSet<QString> m_toFetch; ///< studies that are fetched as soon as their series are known
};
