#pragma once

#include "cloudsession.h"
#include "webfailure.h"

#include <QMainWindow>
#include <QPointer>

class CloudSignIn;
class LoginForm;
class QLabel;
class QListView;
class QProgressBar;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class QuestionBar;
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
    QWidget *buildFoot();
    void connectParts();
    void askToSignIn();
    void search();
    void chooseStudy();
    void openSeries();
    void showFetch(SeriesPreview *fetch);
    void onFailure(const WebFailure &failure);
    void say(const QString &text);
    QString chosenStudy() const;

    ServiceView *const m_service;
    CloudSignIn *const m_signIn;
    StudyModel *const m_studies;
    SeriesModel *const m_series;
    QSortFilterProxyModel *const m_sorted;
    QPointer<LoginForm> m_login;
    QPointer<SeriesPreview> m_fetch;
    QuestionBar *m_question = nullptr;
    QTableView *m_studyList = nullptr;
    QListView *m_seriesList = nullptr;
    QLabel *m_said = nullptr;
    QLabel *m_who = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_stop = nullptr;
    QPushButton *m_signInButton = nullptr;
};
