#pragma once

#include <QImage>
#include <QWidget>

/**
 * Shows one picture on a dark ground: fitted or at a scale, moved by the mouse. Tells what the mouse asks
 * for; what that does is its window's matter. GUI thread.
 */
class ImageView : public QWidget
{
    Q_OBJECT

public:
    /// By which it grows or shrinks at a time.
    static constexpr double zoomStep = 1.25;

    explicit ImageView(QWidget *parent = nullptr);

    /// @param pixelHeight how high a pixel is for each unit of its width
    void setPicture(const QImage &picture, double pixelHeight);
    /// A text in place of a picture.
    void setMessage(const QString &message);
    const QImage &picture() const { return m_picture; }

    bool isFitted() const { return m_scale <= 0; }
    /// Screen pixels for each pixel of the picture.
    double scale() const;
    void fit();
    /// Keeps the middle of the view where it is.
    void setScale(double scale);
    /// How often it has painted a picture; for tests and measuring.
    int paintCount() const { return m_paints; }

    QSize sizeHint() const override;

signals:
    /// Turns of the wheel, downwards.
    void scrolled(int steps);
    /// Of the window's width and of its centre, in shares of the view.
    void windowDragged(double width, double centre);
    void scaleChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QRectF target() const;
    void zoomBy(double factor);

    QImage m_picture;
    QString m_message;
    double m_pixelHeight = 1;
    double m_scale = 0; ///< 0 while fitted
    QPointF m_offset; ///< of the picture's middle from the view's
    QPoint m_last;
    int m_wheel = 0; ///< what is left of a turn, in eighths of a degree
    int m_paints = 0;
};
