#pragma once

#include "cloudsession.h"
#include "webfailure.h"

#include <QMainWindow>
#include <QPointer>

class BrowserFoot;
class CloudQuestionForm;
class CloudSignIn;
class LoginForm;
class QListView;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class SeriesPreview;
class SeriesModel;
class ServiceView;
class StudyModel;

/**
 * Looks through the studies of a cloud service, shows the series of one as pictures, and opens a series in
 * the preview. Signs in by what username.ini and the desktop's secret store know, else asks. GUI thread.
 */
class BrowserWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit BrowserWindow(QWidget *parent = nullptr);
    ~BrowserWindow() override;

    /// Signs in as whoever was remembered, or asks.
    void begin();
    void setSession(const CloudSession &session);

private:
    void build();
    QWidget *buildLists();
    void connectParts();
    void askToSignIn();
    void search();
    void chooseStudy();
    void openSeries();
    void showFetch(SeriesPreview *fetch);
    void onFailure(const WebFailure &failure);
    void endFetch();
    QString chosenStudy() const;

    ServiceView *const m_service;
    CloudSignIn *const m_signIn;
    StudyModel *const m_studies;
    SeriesModel *const m_series;
    QSortFilterProxyModel *const m_sorted;
    QPointer<LoginForm> m_login;
    QPointer<SeriesPreview> m_fetch;
    CloudQuestionForm *m_question = nullptr;
    QPushButton *m_search = nullptr;
    QTableView *m_studyList = nullptr;
    QListView *m_seriesList = nullptr;
    BrowserFoot *m_foot = nullptr;
};
