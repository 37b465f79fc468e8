#pragma once

#include <QHeaderView>

#include <functional>

/// The header of a record table: tells which column the user dragged to which width, and keeps a chosen width
/// where it is narrower than the caption.
class NTableHeader : public QHeaderView
{
    Q_OBJECT

public:
    /// @param chosenWidth the width that the user chose for a column, 0 for none
    NTableHeader(const std::function<int(int)> &chosenWidth, QWidget *parent);

signals:
    /// The mouse let go of a column's edge. @param width 0 where a double click asked for the width that fits
    void widthChosen(int column, int width);

protected:
    QSize sectionSizeFromContents(int column) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void noteResize(int column, int oldSize, int newSize);

    std::function<int(int)> m_chosenWidth;
    bool m_pressed = false;
    int m_dragged = -1; ///< the column whose width changed since the mouse was pressed
};
