#include "previewfooter.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>

PreviewFooter::PreviewFooter(QWidget *parent)
    : QWidget(parent)
    , m_position(new QLabel(this))
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_level(new QLabel(this))
{
    m_slider->setAccessibleName(tr("Image"));
    m_slider->setToolTip(tr("Goes to an image"));
    // Wide enough for all that comes, so that nothing moves while images go by.
    for (const auto &[label, widest] : {std::pair(m_position, tr("Image %1 of %2").arg(99999).arg(99999)),
             std::pair(m_level, QStringLiteral("W 99999  L -99999   9999 %"))}) {
        label->setFixedWidth(label->fontMetrics().horizontalAdvance(widest));
    }
    m_level->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(m_position);
    row->addWidget(m_slider, 1);
    row->addWidget(m_level);
    connect(m_slider, &QSlider::valueChanged, this, &PreviewFooter::imageWanted);
}

void PreviewFooter::setCount(int images)
{
    m_count = images;
    {
        const QSignalBlocker silent(m_slider);
        m_slider->setRange(0, std::max(0, images - 1));
        m_slider->setValue(0);
    }
    m_slider->setEnabled(images > 1);
    showPosition();
}

void PreviewFooter::setCurrent(int index)
{
    m_slider->setValue(index);
    showPosition();
}

void PreviewFooter::showPosition()
{
    m_position->setText(
        m_count == 0 ? QString() : tr("Image %1 of %2").arg(m_slider->value() + 1).arg(m_count));
}

void PreviewFooter::setPicture(const WindowLevel &window, double scale)
{
    QStringList parts;
    if (window.isValid()) {
        parts.append(tr("W %1  L %2").arg(std::lround(window.width)).arg(std::lround(window.centre)));
    }
    if (scale > 0) {
        parts.append(tr("%1 %").arg(std::lround(scale * 100)));
    }
    m_level->setText(parts.join(QStringLiteral("   ")));
}

QString PreviewFooter::text() const
{
    return m_position->text() + QLatin1Char(' ') + m_level->text();
}
