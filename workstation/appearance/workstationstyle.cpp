#include "workstationstyle.h"

#include "palettes.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

constexpr qreal cornerRadius = 2;
/// Contrast of 3 and more to all grounds of the dark theme.
constexpr QRgb lightLine = 0xff868d97;

bool isFrame(QStyle::PrimitiveElement element)
{
    return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorItemViewItemCheck
        || element == QStyle::PE_FrameLineEdit;
}

/// Qt points down for what ascends; the other tables that people know point up.
QStyleOptionHeader turned(QStyleOptionHeader header)
{
    if (header.sortIndicator != QStyleOptionHeader::None) {
        header.sortIndicator = header.sortIndicator == QStyleOptionHeader::SortUp
            ? QStyleOptionHeader::SortDown
            : QStyleOptionHeader::SortUp;
    }
    return header;
}

} // namespace

WorkstationStyle::WorkstationStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{ }

void WorkstationStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
    if (element == PE_IndicatorHeaderArrow && header) {
        const QStyleOptionHeader upright = turned(*header);
        QProxyStyle::drawPrimitive(element, &upright, painter, widget);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRound = element == PE_IndicatorRadioButton;
    const bool isDark = Palettes::isDark(option->palette);
    const bool isFocused = element == PE_FrameLineEdit && (option->state & State_HasFocus);
    const bool isEnabled = option->state & State_Enabled;
    if (!isDark || !isEnabled || isFocused || !(isRound || isFrame(element))) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QColor(lightLine));
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isRound) {
        painter->drawEllipse(frame);
    } else {
        painter->drawRoundedRect(frame, cornerRadius, cornerRadius);
    }
    painter->restore();
}
