#pragma once

#include "cloudsession.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// What the browser says, how far a fetch is, and who is signed in; with the buttons for each. GUI thread.
class BrowserFoot : public QWidget
{
    Q_OBJECT

public:
    explicit BrowserFoot(QWidget *parent);

    void say(const QString &text);
    void setSession(const CloudSession &session);
    void setFetching(bool isFetching);
    void setOpenable(bool isOpenable);

signals:
    void stopWanted();
    void openWanted();
    void signInWanted();

private:
    QLabel *m_said = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_stop = nullptr;
    QPushButton *m_open = nullptr;
    QLabel *m_who = nullptr;
    QPushButton *m_signIn = nullptr;
};
