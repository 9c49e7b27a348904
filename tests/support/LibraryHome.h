#pragma once

#include "TestHome.h"

/// A home with a whole library, in each category the template "Old", and the template "Glow" on
/// the desktop.
class LibraryHome : public TestHome
{
public:
    LibraryHome();
    /// Puts the same into another home.
    static void fill(const TestHome &home);

    [[nodiscard]] static QStringList categories();
    /// Of a category, inside the home.
    [[nodiscard]] static QString folder(const QString &category);
    /// The folder of the titles, for all tests that need but one category.
    [[nodiscard]] static QString titles() { return folder(QStringLiteral("Titles")); }
};
