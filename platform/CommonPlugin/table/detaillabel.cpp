#include "detaillabel.h"

DetailLabel::DetailLabel(QWidget *parent)
    : QLabel(parent)
{
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void DetailLabel::setDetail(const QString &text)
{
    if (text != this->text()) {
        setText(text);
        setVisible(!text.isEmpty());
    }
}
