#include "DropHint.h"

#include <QPainter>

DropHint::DropHint(QWidget *parent) : QFrame(parent) {}

void DropHint::setHighlighted(bool highlighted)
{
    m_isHighlighted = highlighted;
    update();
}

void DropHint::setFilled(bool filled)
{
    m_isFilled = filled;
    update();
}

void DropHint::paintEvent(QPaintEvent *)
{
    constexpr qreal cornerRadius = 10;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor line = palette().color(m_isHighlighted ? QPalette::Highlight : QPalette::WindowText);
    QColor fill = line;
    line.setAlphaF(m_isHighlighted ? 1.0F : 0.35F);
    fill.setAlphaF(m_isHighlighted ? 0.12F : 0.03F);
    QPen pen(line, m_isHighlighted ? 2 : 1.5);
    if (!m_isFilled || m_isHighlighted)
        pen.setDashPattern({4, 3});
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius, cornerRadius);
}
