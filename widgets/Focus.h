#pragma once

class QLineEdit;
class QWidget;

enum class FocusRing { Default, None };

/// Whether the control shows the platform's focus ring. Where the style is not the Mac's, the
/// dynamic property "focusRing" (a bool) tells a style sheet the same.
void setFocusRing(QWidget *control, FocusRing ring);

/// Gives the control its window's keyboard focus. No control, or one that is not on screen,
/// leaves the window without a focused control.
void makeFirstResponder(QWidget *window, QWidget *control);

/// Empties a field for good: undoing brings nothing back, as it would after QLineEdit::clear().
void forget(QLineEdit *field);

/// Shows the window in front of the others, with the keyboard's focus.
void makeKeyAndOrderFront(QWidget *window);
