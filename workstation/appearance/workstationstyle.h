#pragma once

#include <QProxyStyle>

/// Fusion, whose frames of fields and marks are darker than their surroundings: on dark colours it gives them
/// a light line, so that an empty field or an unchecked box is seen. A sort arrow points up where the order
/// ascends, and down where it descends. Owned by the application.
class WorkstationStyle : public QProxyStyle
{
    Q_OBJECT

public:
    WorkstationStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget = nullptr) const override;
};
