#pragma once

#include "Shim.h"

#include <QStringList>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// An operation of the program, to be tried with every call of it failing.
namespace Faults {

/// A home folder, and a folder on another file system where there is one. Both are empty before
/// each run.
struct Disks
{
    std::string home;
    std::string other;
};

struct State
{
    enum class Kind { Folder, File, Link, Special };
    Kind kind = Kind::File;
    std::string content; ///< of a file; what a link leads to
    std::string
        attributes; ///< mode, time, and the attribute "user.tag"; of a folder the mode alone

    bool operator==(const State &) const = default;
};

/// Everything on both disks, by paths like "home/Tree/file".
using Snapshot = std::map<std::string, State>;

enum class Ending { Done, Failed, Killed };

/// What another process does in the middle.
struct Race
{
    std::string name;
    /// Writes "from another process" to some file; false when there was nothing to write to.
    std::function<bool(const Disks &)> act;
};

struct Operation
{
    std::string name;
    /// Makes the same each time, the times of files and links included.
    std::function<void(const Disks &)> setUp;
    /// In a process of its own, with HOME set to the home: whether the program says it is done.
    std::function<bool(const Disks &)> run;
    /// What is lost, doubled, half or wrong after one failure; empty when all is well.
    std::function<QString(const Snapshot &before, const Snapshot &after, Ending ending)> account;
    bool needsTwoDisks = false;
    /// What they write is never lost, and nobody dies of it.
    std::vector<Race> races = {};
    Shim::System system = {};
};

/// Of what stands on both disks now.
Snapshot snapshotOf(const Disks &disks);

/// Of a copy or a save that did not come to its end; what lies in it counts too.
bool isLeftover(const std::string &path);

std::vector<Operation> fileOperations();
/// On a document and on the settings.
std::vector<Operation> documentOperations();

/// Makes the home folder that of this process.
void liveIn(const Disks &disks);

/// One step of a power failure, which is made around this program: "setup", "run" up to a call
/// (0: to the end), or "account" for what came of it. 0 when nothing is wrong.
int stage(const QStringList &arguments);

} // namespace Faults
