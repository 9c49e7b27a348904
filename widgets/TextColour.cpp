#include "TextColour.h"

#include <QWidget>

#include <algorithm>

QColor calibratedColour(float red, float green, float blue)
{
    return QColor::fromRgbF(std::clamp(red, 0.0F, 1.0F), std::clamp(green, 0.0F, 1.0F),
                            std::clamp(blue, 0.0F, 1.0F));
}

void setTextColour(QWidget *label, const QColor &colour)
{
    QPalette palette = label->palette();
    palette.setColor(label->foregroundRole(), colour);
    label->setPalette(palette);
}
