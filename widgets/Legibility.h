#pragma once

#include <QFont>
#include <QIcon>

class QAbstractButton;
class QLabel;
class QObject;
class QWidget;

/// The font of a heading beside text of the program's font, whatever that font is.
QFont headingFont();

/// A length that is meant for text of the usual size, for text of this widget's.
int besideText(const QWidget &widget, int pixels);

/// An icon of such a size, from pictures that are drawn for the usual one.
QPixmap pictureBesideText(const QWidget &widget, const QIcon &icon, int pixels);

/// Has a button's icon of such a size, which is meant for text of the usual size, suit its own
/// text.
void growIcon(QAbstractButton *button, int pixels);

/// Shows a warning's icon in a label before its text, or none. The first look for it goes through
/// the desktop's icons, which takes its time: not at a start.
void showWarningIcon(QLabel *label, bool isShown);

/// While the owner lives, placeholders stand out from what they stand on at 4.5 to 1, whatever the
/// desktop's colours are.
void keepPlaceholdersLegible(QObject *owner);
