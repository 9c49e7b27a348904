#pragma once

class QWidget;

/// From now on the window cannot become lower than its layout needs at its width: a layout by
/// itself counts a text that wraps as one line.
void keepContentsWhole(QWidget *window);
