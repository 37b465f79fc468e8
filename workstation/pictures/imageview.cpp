#include "imageview.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int wheelStep = 120;
constexpr double leastScale = 0.02;
constexpr double mostScale = 32;
constexpr QSize usualSize{760, 640};
const QColor ground(16, 16, 16);
const QColor onGround(225, 225, 225);

} // namespace

ImageView::ImageView(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 160);
}

QSize ImageView::sizeHint() const
{
    return usualSize;
}

void ImageView::setPicture(const QImage &picture, double pixelHeight)
{
    m_picture = picture;
    m_pixelHeight = pixelHeight > 0 ? pixelHeight : 1;
    m_message.clear();
    setAccessibleDescription(QString());
    update();
}

void ImageView::setMessage(const QString &message)
{
    m_picture = QImage();
    m_message = message;
    setAccessibleDescription(message);
    update();
}

double ImageView::scale() const
{
    if (!isFitted() || m_picture.isNull()) {
        return isFitted() ? 1 : m_scale;
    }
    return std::min(double(width()) / m_picture.width(), height() / (m_picture.height() * m_pixelHeight));
}

void ImageView::fit()
{
    m_scale = 0;
    m_offset = {};
    update();
    emit scaleChanged();
}

void ImageView::setScale(double scale)
{
    const double before = this->scale();
    m_scale = std::clamp(scale, leastScale, mostScale);
    m_offset *= m_scale / before;
    update();
    emit scaleChanged();
}

void ImageView::zoomBy(double factor)
{
    setScale(scale() * factor);
}

QRectF ImageView::target() const
{
    const double factor = scale();
    QRectF place(0, 0, m_picture.width() * factor, m_picture.height() * factor * m_pixelHeight);
    place.moveCenter(QRectF(rect()).center() + m_offset);
    return place;
}

void ImageView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    if (m_picture.isNull()) {
        painter.setPen(onGround);
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, m_message);
        return;
    }
    // Enlarged a lot, single pixels are what somebody wants to see.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale() < 4);
    painter.drawImage(target(), m_picture);
    ++m_paints;
}

void ImageView::resizeEvent(QResizeEvent * /*event*/)
{
    if (isFitted()) {
        emit scaleChanged();
    }
}

void ImageView::wheelEvent(QWheelEvent *event)
{
    m_wheel -= event->angleDelta().y();
    const int steps = m_wheel / wheelStep;
    m_wheel -= steps * wheelStep;
    event->accept();
    if (steps == 0) {
        return;
    }
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomBy(steps < 0 ? zoomStep : 1 / zoomStep);
    } else {
        emit scrolled(steps);
    }
}

void ImageView::mousePressEvent(QMouseEvent *event)
{
    m_last = event->pos();
}

void ImageView::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint moved = event->pos() - m_last;
    m_last = event->pos();
    const bool isPan = event->buttons().testFlag(Qt::MiddleButton)
        || (event->buttons() != Qt::NoButton && event->modifiers().testFlag(Qt::ControlModifier));
    if (isPan) {
        if (isFitted()) {
            setScale(scale());
        }
        m_offset += moved;
        update();
    } else if (event->buttons() & (Qt::LeftButton | Qt::RightButton)) {
        emit windowDragged(double(moved.x()) / width(), double(moved.y()) / height());
    }
}
