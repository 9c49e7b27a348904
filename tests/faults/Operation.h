#pragma once

#include "Shim.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// An operation of the program, to be tried with every call of it failing. Paths begin with "home"
/// or "other".
namespace Faults {

namespace fs = std::filesystem;

/// A home folder, and a folder on another file system where there is one.
struct Disks
{
    fs::path root; ///< of the home; of the other too, unless that is another disk
    fs::path otherRoot;

    [[nodiscard]] fs::path at(const std::string &path) const
    {
        return (path.starts_with("other") ? otherRoot : root) / path;
    }
};

struct State
{
    std::string what;         ///< "file", "link to" or "folder", and the content
    std::string keeps = {};   ///< the permissions, the attribute "user.tag"
    std::string mayKeep = {}; ///< what a disk or a user may refuse: further mode bits, second names
    std::string time = {};    ///< not of a folder

    bool operator==(const State &) const = default;
};

/// Everything on both disks, by its path.
using Snapshot = std::map<std::string, State>;

enum class Ending { Done, Failed, Killed };
enum class Act { Copy, Move, Trash, Save };

struct Step
{
    Act act = Act::Move;
    std::string from;
    std::string to = {};
    std::function<bool(const std::string &)> isNew = {}; ///< of what a saved file holds
};

/// What another process does in the middle: it puts something aside, and writes `anothers`.
struct Race
{
    std::string name;
    std::string aside;
    std::string path;
    std::ios::openmode mode;
};

constexpr char anothers[] = "<a>from another process</a>";

struct Operation
{
    std::string name;
    /// Makes the same each time, the times of files and links included.
    std::function<void(const Disks &)> setUp;
    std::vector<Step> steps;
    std::vector<Race> races = {};
    Shim::System system = {};
    std::function<bool(const Disks &)> save = {};
};

std::vector<Operation> operations();

/// With HOME set to the home: whether the program says that it is done.
bool run(const Operation &operation, const Disks &disks);

/// Of what stands on both disks now.
Snapshot snapshotOf(const Disks &disks);

/// What is lost, doubled, half or wrong after a failure; empty when everything is where it was, or
/// where it should be.
std::string account(const Operation &operation, const Snapshot &before, Snapshot after,
                    Ending ending);

/// The same of a race: what another process wrote is there, and all but what it wrote over.
std::string accountForRace(const Snapshot &before, const Snapshot &after, bool hasHappened);

} // namespace Faults
