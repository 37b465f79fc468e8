#include "captionheader.h"

#include <QPainter>
#include <QStyleOptionHeader>

CaptionHeader::CaptionHeader(const std::function<int(int)> &chosenWidth, QWidget *parent)
    : NTableHeader(chosenWidth, parent)
{
    setSectionsClickable(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setSectionsMovable(true);
    setStretchLastSection(true);
    setResizeContentsPrecision(0);
}

void CaptionHeader::setCaptions(const QStringList &captions)
{
    m_captions = captions;
    viewport()->update();
}

QStyleOptionHeader CaptionHeader::option(int column) const
{
    QStyleOptionHeader header;
    initStyleOption(&header);
    header.section = column;
    header.text = m_captions.value(column);
    header.textAlignment = defaultAlignment();
    const int place = visualIndex(column);
    header.position = place == 0 ? QStyleOptionHeader::Beginning
        : place == count() - 1   ? QStyleOptionHeader::End
                                 : QStyleOptionHeader::Middle;
    return header;
}

void CaptionHeader::paintSection(QPainter *painter, const QRect &rect, int column) const
{
    QStyleOptionHeader header = option(column);
    header.rect = rect;
    const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, &header, this);
    header.text = header.fontMetrics.elidedText(header.text, Qt::ElideRight, rect.width() - margin);
    painter->save();
    style()->drawControl(QStyle::CE_Header, &header, painter, this);
    painter->restore();
}

QSize CaptionHeader::sectionSizeFromContents(int column) const
{
    const QStyleOptionHeader header = option(column);
    return withChosenWidth(
        column, style()->sizeFromContents(QStyle::CT_HeaderSection, &header, QSize(), this));
}
