#pragma once

#include "TestHome.h"

/// A home with a whole library, in each category the template "Old", and the template "Glow" on
/// the desktop.
class LibraryHome : public TestHome
{
public:
    struct Category
    {
        QString name;
        QString choice; ///< the control that selects it
        QString folder; ///< inside the home
        QString installedText;
        QString customInstalledText;
    };

    LibraryHome();

    [[nodiscard]] static const QList<Category> &categories();
    /// The folder of the titles, for all tests that need but one category.
    [[nodiscard]] static QString titles() { return categories().at(3).folder; }

    /// That snapshot, had this one file or tree been moved: to nowhere when `to` is empty.
    [[nodiscard]] static QMap<QString, QByteArray>
    withMoved(const QMap<QString, QByteArray> &snapshot, const QString &from, const QString &to);
};
