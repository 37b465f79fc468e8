#pragma once

#include <QFrame>

class QLabel;
struct ImageInfo;

/// Whose image it is and what it is, in two lines, and the reminder that this is no place for a diagnosis.
/// GUI thread.
class PreviewBanner : public QFrame
{
    Q_OBJECT

public:
    explicit PreviewBanner(QWidget *parent = nullptr);

    void show(const ImageInfo &info);
    using QWidget::show;
    void clear();
    /// Both lines, as they are shown.
    QString text() const;

private:
    QLabel *const m_patient;
    QLabel *const m_study;
};
