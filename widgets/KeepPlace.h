#pragma once

class QWidget;

/// From now on the control keeps its place while it is hidden, so that nothing around it moves.
void keepPlaceWhenHidden(QWidget *control);
