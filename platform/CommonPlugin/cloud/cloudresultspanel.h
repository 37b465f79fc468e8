#pragma once

#include "webfailure.h"

#include <QWidget>

class CloudStudyModel;
class CloudStudyView;
class QLabel;
class QPushButton;

/// What a search in the cloud has found, what is to be said of it, and the button that fetches what is
/// checked. GUI thread.
class CloudResultsPanel : public QWidget
{
    Q_OBJECT

public:
    CloudResultsPanel(CloudStudyModel *model, QWidget *parent);

    /// Nothing was asked yet. @param canAsk whether somebody is signed in
    void showUnasked(bool canAsk);
    void showSearching();
    /// How a search ended.
    void showEnd(const WebFailure &failure, bool isCutShort);
    void say(const QString &text);

signals:
    void downloadWanted();

private:
    void refreshButton();

    CloudStudyModel &m_model;
    CloudStudyView *m_view;
    QLabel *m_said;
    QPushButton *m_downloadButton;
};
