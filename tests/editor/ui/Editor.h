#pragma once

#include "tests/editor/MotionFixtures.h"
#include "tests/support/LogLines.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

/// The program on its Edit side.
class Editor : public RunningProgram
{
public:
    Editor();

    void drop(const QStringList &paths) const;
    /// From the clipboard: any text, where keys give only Latin ones.
    void paste(const QString &name, const QString &text) const;
    [[nodiscard]] QColor colour(const QString &name) const;
    /// Only once the animation has ended do controls stand still.
    [[nodiscard]] bool waitForAnimation() const;
};

/// motionFile() with this in place of that, one after the other.
QByteArray motionFile(const QList<std::pair<QByteArray, QByteArray>> &replacements);

/// As the fourth child of motionFile()'s root.
QByteArray themedFile(const QByteArray &theme);

/// Every element, in document order: the path of names to it and the text directly in it, blanks
/// around it removed ("ozml/scene/sceneSettings/width=1920").
QStringList elements(const QByteArray &file);
/// The texts of all elements of that name.
QStringList texts(const QByteArray &file, const QString &name);
