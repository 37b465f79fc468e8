#include "elidedlabel.h"

#include <QPainter>

namespace {
constexpr int wantedCharacters = 60;
constexpr int leastCharacters = 20;
} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString &text)
{
    if (text != m_text) {
        m_text = text;
        setToolTip(text);
        setAccessibleDescription(text);
        update();
    }
}

QSize ElidedLabel::sizeHint() const
{
    return {wantedCharacters * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {leastCharacters * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.drawText(rect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
        fontMetrics().elidedText(m_text, Qt::ElideMiddle, width()));
}
