#pragma once

#include <QWidget>

class DetailLabel;
class PlainTableView;
class QLabel;
class SendFailureModel;

/// What the sends that SendNotifier knows could not bring to their destinations, and why; hidden where there
/// is nothing. GUI thread.
class SendFailureList : public QWidget
{
    Q_OBJECT

public:
    explicit SendFailureList(QWidget *parent = nullptr);

    /// Shows it as it stands now.
    void update();

private:
    void showReason();

    SendFailureModel *m_model = nullptr;
    QLabel *m_caption = nullptr;
    PlainTableView *m_failures = nullptr;
    DetailLabel *m_reason = nullptr; ///< of the chosen failure
};
