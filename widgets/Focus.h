#pragma once

#include <QPointer>
#include <QWidget>

class QLineEdit;

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

/// Leaves the window without a focused control, also when it comes to the front again: Qt would
/// then choose the first one.
void takeFocusOffControls(QWidget *window);

/// While it lives, controls of the window may be disabled and hidden. Qt hands the focus of such
/// a control on to the next one, where a Space would press what nobody chose; afterwards no
/// control has it.
class FocusGuard
{
    Q_DISABLE_COPY_MOVE(FocusGuard)

public:
    explicit FocusGuard(QWidget *window);
    ~FocusGuard();

private:
    QWidget *m_window;
    QPointer<QWidget> m_focused;
};
