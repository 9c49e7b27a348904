#pragma once

#include "ChangeList.h"
#include "RunningProgram.h"

/// What a test does, in words:
///     click button        menu quitItem       segment segController 1     open confirmSheet
///     type input a b      key input Return    press Space                 to what has the focus
///     clipboard a b       is there to paste   pick frPopup 4              close mWindow
///     drop input a b      drag input a        leave input                 away, and back again
///     set label a         focus input         panel a     the next file dialog gets that, or none
///     has a: b            putIntoHome()       remove a    hide a b        b is moved to a, and a
///     link tick 50             steps of a bar      rest        until no bar runs card what is told
///     of the template has come, and is watched from here on launch              everything is new
///     that is not on, shown, unchecked
/// LIB stands for the library's path. A step that is none, or cannot be done, fails the test.
void perform(const QString &step, const RunningProgram &program, ChangeList &changes,
             const TestHome &home);
