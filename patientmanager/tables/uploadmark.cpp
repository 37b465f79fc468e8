#include "uploadmark.h"

#include "uploadstatus.h"

#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <array>
#include <optional>

namespace {

enum class Shape { Ring, Arrow, Tick };

struct Colours
{
    QRgb onLight;
    QRgb onDark;
};

/// By shape: each has a contrast of three to one and more to the ground of a row.
constexpr std::array<Colours, 3> colours{
    {{0xff5f6b76, 0xffa3afba}, {0xff9a5b00, 0xfff0b24b}, {0xff1d7a3a, 0xff6fcf8a}}};

std::optional<Shape> shapeOf(const QString &status)
{
    if (status == UploadStatus::notUploaded()) {
        return Shape::Ring;
    }
    if (status == UploadStatus::uploading()) {
        return Shape::Arrow;
    }
    return status == UploadStatus::uploaded() ? std::make_optional(Shape::Tick) : std::nullopt;
}

/// Shapes are drawn in a square of sixteen units.
class MarkEngine : public QIconEngine
{
public:
    MarkEngine(Shape shape, const QPalette &palette)
        : m_shape(shape)
        , m_ground(palette.color(QPalette::Base))
        , m_selected(palette.color(QPalette::HighlightedText))
        , m_selectedGround(palette.color(QPalette::Highlight))
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        constexpr qreal units = 16;
        const bool isSelected = mode == QIcon::Selected;
        const Colours &colour = colours[std::size_t(m_shape)];
        const bool isDark = m_ground.lightness() < 128;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / units, rect.height() / units);
        draw(painter, isSelected ? m_selected : QColor(isDark ? colour.onDark : colour.onLight),
            isSelected ? m_selectedGround : m_ground);
        painter->restore();
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }
    QIconEngine *clone() const override { return new MarkEngine(*this); }

private:
    void draw(QPainter *painter, const QColor &colour, const QColor &ground) const
    {
        const QRectF circle(2.5, 2.5, 11, 11);
        constexpr qreal line = 1.8;
        painter->setPen(QPen(colour, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        switch (m_shape) {
        case Shape::Ring:
            painter->drawEllipse(circle);
            break;
        case Shape::Arrow:
            painter->drawPolyline(QPolygonF({{3.5, 8}, {8, 3.5}, {12.5, 8}}));
            painter->drawLine(QPointF(8, 4), QPointF(8, 13.5));
            break;
        case Shape::Tick:
            painter->setBrush(colour);
            painter->drawEllipse(circle);
            painter->setPen(QPen(ground, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter->drawPolyline(QPolygonF({{5.2, 8.2}, {7.2, 10.2}, {10.9, 6}}));
            break;
        }
    }

    Shape m_shape;
    QColor m_ground;
    QColor m_selected;
    QColor m_selectedGround;
};

} // namespace

QIcon uploadMark(const QString &status, const QPalette &palette)
{
    const std::optional<Shape> shape = shapeOf(status);
    return shape ? QIcon(new MarkEngine(*shape, palette)) : QIcon();
}
