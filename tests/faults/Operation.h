#pragma once

#include <QStringList>

#include <filesystem>
#include <vector>

/// The operations of the program in `operations.table`, to be tried with every call of them
/// failing. All that they do is in the current folder, which has a folder "home", and "other",
/// which may lead to another file system.
namespace Faults {

struct Operation
{
    QString name;
    QStringList made;
    QStringList steps;
    QStringList end;   ///< is what would be made so
    QStringList races; ///< what another process does in the middle, for the shell
    QString system;
};

std::vector<Operation> operations();

/// Empties these folders and makes the same each time, with times older than any change that comes.
void renew(const QStringList &made);

/// As the program of whoever has this home: whether it says that all is done.
[[nodiscard]] bool perform(const QStringList &steps);

QString contentOf(const std::filesystem::path &file);

} // namespace Faults
