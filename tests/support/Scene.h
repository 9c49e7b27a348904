#pragma once

#include "ChangeList.h"
#include "RunningProgram.h"

/// A home with what a table says that it has, the program that runs there, and all that changes
/// when it is used.
class Scene
{
public:
    explicit Scene(const QStringList &items);

    /// Does what these steps say, with ", " between them:
    ///     click button        menu quitItem       segment segController 1     open confirmSheet
    ///     type input a b      key input Return    press Space     to what has the focus
    ///     focus input         pick frPopup 4      close mWindow   minimize mWindow
    ///     drop input a b      drag input a        leave input     away            and back again
    ///     set label a         has a: b            putIntoHome()   clipboard a b   to be pasted
    ///     remove a            hide a b            b is moved to a, and a link takes its place
    ///     panel a             the next file dialog gets that, or none
    ///     tick 50, rest       steps of a bar, and until no bar runs
    ///     card                what is told of the template has come, and is watched from here on
    ///     unread              nothing comes of the reading of a template from here on
    ///     shrink mWindow      to its smallest size
    ///     launch              everything is new that is not on, shown, unchecked
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
