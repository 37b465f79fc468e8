#pragma once

#include "ntableheader.h"

#include <QStringList>

/// A header that paints captions for people in the place of its model's texts, which stay the columns' names.
class CaptionHeader : public NTableHeader
{
    Q_OBJECT

public:
    /// @param chosenWidth the width that the user chose for a column, 0 for none
    CaptionHeader(const std::function<int(int)> &chosenWidth, QWidget *parent);

    /// One for each column; a column beyond them has none.
    void setCaptions(const QStringList &captions);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int column) const override;
    QSize sectionSizeFromContents(int column) const override;

private:
    QStyleOptionHeader option(int column) const;

    QStringList m_captions;
};
