#include "Mark.h"

#include <QPainter>

Mark::Mark(QWidget *parent) : QFocusFrame(parent)
{
    hide();
}

void Mark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xe0, 0x8a, 0x00), 2)); // an amber that stands out on light and dark
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}
