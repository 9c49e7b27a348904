#pragma once

#include "tests/editor/MotionFixtures.h"
#include "tests/support/LogLines.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

/// The program on its Edit side, in a home of its own.
class Editor : public TestHome, public RunningProgram
{
public:
    Editor() { chooseMode(1); }

    void dropFiles(const QStringList &paths) const;
    /// Makes the file, and drops it.
    void load(const QByteArray &content, const QString &name = QStringLiteral("Intro.motn")) const;
    /// From the clipboard: any text, where keys give only Latin ones.
    void paste(const QString &name, const QString &text) const;

    [[nodiscard]] QStringList texts(const QStringList &names) const;
    [[nodiscard]] bool areEnabled(const QStringList &names, bool enabled = true) const;
    [[nodiscard]] QColor colour(const QString &name) const;
    [[nodiscard]] bool waitUntilActive(const QString &window) const;
    /// For the end of the animation that has just been started.
    [[nodiscard]] bool waitForAnimation() const;
};

/// motionFile() with this in place of that, one after the other.
QByteArray motionFile(const QList<std::pair<QByteArray, QByteArray>> &replacements);

/// motionFile() with a theme, where it is inserted.
QByteArray themedFile(const QByteArray &theme);

/// Every element, in document order: the path of names to it and the text directly in it, blanks
/// between elements left out ("ozml/scene/sceneSettings/width=1920").
QStringList elements(const QByteArray &file);
