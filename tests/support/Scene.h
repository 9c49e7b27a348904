#pragma once

#include "ChangeList.h"
#include "RunningProgram.h"

/// A home with what a table says that it has, the program that runs there, and all that changes
/// when it is used.
class Scene
{
public:
    explicit Scene(const QStringList &items);

    // clang-format off
    /// Does what these steps say, with ", " between them:
    ///     click button, menu quitItem, segment segController 1, open confirmSheet
    ///     close mWindow, minimize mWindow
    ///     shrink mWindow      to its smallest size
    ///     type input a b, key input Return, set label a, focus input, pick frPopup 4
    ///     press Space         to what has the focus
    ///     clipboard a b       is there to paste
    ///     drop input a b, drag input a
    ///     leave input         away, and back again
    ///     panel a             the next file dialog gets that, or none
    ///     has a: b            putIntoHome()
    ///     remove a
    ///     hide a b            b is moved to a, and a link takes its place
    ///     tick 50             steps of a bar
    ///     rest                until no bar runs
    ///     card                what is told of the template has come, and is watched from here on
    ///     unread              nothing comes of the reading of a template from here on
    ///     launch              everything is new that is not on, shown, unchecked
    // clang-format on
    /// LIB stands for the library's path. A step that is none, or cannot be done, fails the test.
    void perform(const QString &steps);

    [[nodiscard]] const RunningProgram &program() const { return m_program; }
    /// Since the last time.
    [[nodiscard]] QStringList changes() { return m_changes.take(); }

private:
    struct Furnished : TestHome
    {
        explicit Furnished(const QStringList &items);
    };

    const Furnished m_home;
    const RunningProgram m_program;
    ChangeList m_changes{m_home};
};
