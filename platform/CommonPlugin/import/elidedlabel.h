#pragma once

#include <QWidget>

/// A line of text that is cut in the middle where it does not fit, as suits a path; the whole of it is its
/// tool tip.
class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
};
