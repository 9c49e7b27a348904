#pragma once

#include <QColor>

class QWidget;

/// A colour of components that count from 0 to 1; whatever lies outside is taken as the nearest.
QColor calibratedColour(float red, float green, float blue);

/// The colour of a label's text from now on, under every palette.
void setTextColour(QWidget *label, const QColor &colour);
