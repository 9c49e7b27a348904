#pragma once

#include "app/BrimvaleAppDelegate.h"

#include <QApplication>
#include <QMimeData>
#include <QTimer>

/// The program as main() starts it, in the home of the moment, for as long as this lives. The
/// windows and controls are found by their object names, and used as a user does.
class RunningProgram
{
public:
    RunningProgram();

    /// The control, window or menu item of that name; a test without it cannot go on.
    template <class Type>
    [[nodiscard]] Type *find(const QString &name) const;

    /// Of a label, a field or a button.
    [[nodiscard]] QString text(const QString &name) const;
    /// False for a control that was hidden, also while its window is not on screen.
    [[nodiscard]] bool isShown(const QString &name) const;

    /// With the mouse; what is disabled or hidden gets no click.
    void click(const QString &name) const;
    /// Replaces what is in a field, with the keyboard.
    void type(const QString &name, const QString &text) const;
    void pressKey(const QString &name, Qt::Key key) const;
    /// 0 is Install, 1 is Edit.
    void chooseMode(int segment) const;

    /// Drags data to the middle of a control that is on screen, and drops it there. Answers what
    /// the drag source is told that the drop did; nothing where it would not have dropped.
    Qt::DropAction drop(const QString &name, const QMimeData &data,
                        Qt::DropActions allowed = Qt::CopyAction | Qt::MoveAction |
                                                  Qt::LinkAction) const;
    Qt::DropAction dropFiles(const QString &name, const QStringList &paths) const;
    /// Drags files there, and out of the window again.
    void drag(const QString &name, const QStringList &paths) const;
    void leave(const QString &name) const;

private:
    BrimvaleAppDelegate m_delegate;
};

template <class Type>
Type *RunningProgram::find(const QString &name) const
{
    for (QWidget *each : QApplication::topLevelWidgets()) {
        auto *window = each->objectName() == name ? qobject_cast<Type *>(each) : nullptr;
        if (auto *found = window ? window : each->findChild<Type *>(name))
            return found;
    }
    auto *found = m_delegate.findChild<Type *>(name);
    if (!found)
        qFatal("the program has no %s", qUtf8Printable(name));
    return found;
}
