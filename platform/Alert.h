#pragma once

#include <QString>

class QWidget;

/// A warning with one button "OK"; comes back when it was pressed.
void runAlert(QWidget *window, const QString &message, const QString &informativeText);
