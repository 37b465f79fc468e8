#pragma once

#include "commonplugin_export.h"

#include <QHeaderView>

#include <functional>

/// The header of a table or tree of records: tells which column the user dragged to which width, and keeps a
/// chosen width where it is narrower than the caption.
class COMMONPLUGIN_EXPORT NTableHeader : public QHeaderView
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
    /// The size with the width that the user chose in the place of its own.
    QSize withChosenWidth(int column, const QSize &size) const;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void noteResize(int column, int oldSize, int newSize);

    std::function<int(int)> m_chosenWidth;
    bool m_pressed = false;
    int m_dragged = -1; ///< the column whose width changed since the mouse was pressed
};
