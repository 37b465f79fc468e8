#pragma once

#include "correctionrequest.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// What the editor says, how far its work is, and its buttons. GUI thread.
class EditorFoot : public QWidget
{
    Q_OBJECT

public:
    explicit EditorFoot(QWidget *parent);

    void say(const QString &text, bool isProblem = false);
    void setSavable(bool isSavable);
    /// @param mayStop until progress tells otherwise
    void setWorking(bool isWorking, bool mayStop);
    void showProgress(const CorrectionProgress &progress);

signals:
    void saveWanted();
    void stopWanted();
    void closeWanted();

private:
    QLabel *m_said = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_close = nullptr;
    bool m_mayStop = false;
};
