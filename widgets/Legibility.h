#pragma once

#include <QFont>

class QObject;
class QWidget;

/// The font of a heading beside text of the program's font, whatever that font is.
QFont headingFont();

/// A length for an icon, which is meant for text of the usual size, beside text of this widget's.
int besideText(const QWidget &widget, int pixels);

/// While the owner lives, placeholders stand out from what they stand on at 4.5 to 1, whatever the
/// desktop's colours are.
void keepPlaceholdersLegible(QObject *owner);
