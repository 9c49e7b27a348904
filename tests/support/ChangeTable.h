#pragma once

#include "ChangeList.h"
#include "RunningProgram.h"

/// Tables of actions, in files beside the tests. A row is "start state | action | every change",
/// where the start state and the action are steps with ", " between them, each as its function in
/// RunningProgram:
///     click button        menu quitItem       segment segController 1     open confirmSheet
///     type input a b      key input Return    pick frPopup 4              close mWindow
///     drop input a b      drag input a        leave input
///     set label a         remove a            hide a b            b is moved to a, and a link
///     panel a             how the next file dialog is answered: with that path, or cancelled
///     focus input         rest                waits until a bar has run
///     launch              everything is new that is not on, shown, unchecked
/// A line that starts with blanks goes on with the row before it. "name := text" names a start
/// state, or "$name", changes that many rows have. "start" is the program as it starts.
class ChangeTable
{
public:
    /// In the data function of a test; the file is named from the folder of all tests.
    static void addRows(const QString &file);
    /// In the test; the home holds what the rows need.
    static void run(const TestHome &home);
};
