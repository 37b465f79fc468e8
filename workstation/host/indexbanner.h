#pragma once

#include <QFrame>

class QLabel;

/// A strip across the top of the window that says why there is no index. Hidden until it has something to
/// say.
class IndexBanner : public QFrame
{
    Q_OBJECT

public:
    explicit IndexBanner(QWidget *parent = nullptr);

    void say(const QString &text);
    QString text() const;

private:
    QLabel *const m_label;
};
