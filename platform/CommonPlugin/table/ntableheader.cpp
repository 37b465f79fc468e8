#include "ntableheader.h"

NTableHeader::NTableHeader(const std::function<int(int)> &chosenWidth, QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
    , m_chosenWidth(chosenWidth)
{
    setSectionsClickable(true);
    setHighlightSections(true);
    connect(this, &QHeaderView::sectionResized, this, &NTableHeader::noteResize);
    // Connected before the view's own answer to a double click, which then finds no chosen width.
    connect(this, &QHeaderView::sectionHandleDoubleClicked, this,
        [this](int column) { emit widthChosen(column, 0); });
}

QSize NTableHeader::sectionSizeFromContents(int column) const
{
    return withChosenWidth(column, QHeaderView::sectionSizeFromContents(column));
}

QSize NTableHeader::withChosenWidth(int column, const QSize &size) const
{
    const int chosen = m_chosenWidth(column);
    return chosen > 0 ? QSize(chosen, size.height()) : size;
}

void NTableHeader::mousePressEvent(QMouseEvent *event)
{
    m_pressed = true;
    m_dragged = -1;
    QHeaderView::mousePressEvent(event);
}

void NTableHeader::mouseReleaseEvent(QMouseEvent *event)
{
    QHeaderView::mouseReleaseEvent(event);
    m_pressed = false;
    if (m_dragged >= 0) {
        emit widthChosen(m_dragged, sectionSize(m_dragged));
        m_dragged = -1;
    }
}

void NTableHeader::noteResize(int column, int /*oldSize*/, int newSize)
{
    if (m_pressed && newSize > 0) {
        m_dragged = column;
    }
}
