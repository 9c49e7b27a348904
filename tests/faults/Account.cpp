#include "Operation.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>

namespace Faults {

namespace {

State stateOf(const fs::path &path)
{
    struct stat status = {};
    ::lstat(path.c_str(), &status);
    std::array<char, 64> tag = {};
    ::lgetxattr(path.c_str(), "user.tag", tag.data(), tag.size());
    const auto text = [](auto number) { return std::to_string(number) + ' '; };
    const std::string keeps = text(status.st_mode & 0777) + tag.data();
    const std::string mayKeep = text(status.st_mode);
    if (S_ISDIR(status.st_mode))
        return {"folder", keeps, mayKeep};
    const std::string time = text(status.st_mtim.tv_sec);
    if (S_ISLNK(status.st_mode))
        return {"link to " + fs::read_symlink(path).string(), keeps, mayKeep, time};
    std::ostringstream content;
    content << "file " << std::ifstream(path, std::ios::binary).rdbuf();
    return {content.str(), keeps, mayKeep + text(status.st_nlink), time};
}

bool isIn(const std::string &path, const std::string &root)
{
    return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
}

/// What stands at a path and below it, by relative paths.
Snapshot partOf(const Snapshot &all, const std::string &root)
{
    Snapshot part;
    for (const auto &[path, state] : all) {
        if (isIn(path, root))
            part[path.substr(root.size())] = state;
    }
    return part;
}

Snapshot without(Snapshot all, const std::string &root)
{
    std::erase_if(all, [&](const auto &each) { return isIn(each.first, root); });
    return all;
}

Snapshot with(Snapshot all, const std::string &root, const Snapshot &part)
{
    for (const auto &[path, state] : part)
        all[root + path] = state;
    return all;
}

bool isLeftover(const std::string &path)
{
    return path.find("/.Brimvale-") != std::string::npos;
}

/// What is in the trash with its record, as "trash"; a record without an item may be what a kill
/// left.
Snapshot withTrash(Snapshot all, Ending ending)
{
    const std::string info = "home/data/Trash/info/";
    const std::string suffix = ".trashinfo";
    for (const auto &[path, state] : partOf(all, "home/data/Trash/info")) {
        if (!path.ends_with(suffix))
            continue;
        const std::string name = path.substr(0, path.size() - suffix.size());
        const std::string place = "home/data/Trash/files" + name;
        const Snapshot item = partOf(all, place);
        const bool isWhole =
            state.what.starts_with("file [Trash Info]\nPath=/") && state.what.ends_with('\n');
        if (isWhole ? !item.empty() || ending == Ending::Killed
                    : item.empty() && ending == Ending::Killed)
            all.erase("home/data/Trash/info" + path);
        if (isWhole)
            all = with(without(all, place), "trash", item);
    }
    return all;
}

bool haveSameContent(const Snapshot &some, const Snapshot &others)
{
    return std::equal(some.begin(), some.end(), others.begin(), others.end(),
                      [](const auto &one, const auto &other) {
                          return one.first == other.first && one.second.what == other.second.what;
                      });
}

/// A copy whose source is not all gone yet is as good as none, and so is the empty folder that
/// waits for a tree.
Snapshot withoutHalves(Snapshot all, const Step &step, const Snapshot &tree, Ending ending)
{
    const Snapshot arrived = partOf(all, step.to);
    const Snapshot left = partOf(all, step.from);
    const bool isOfTree = std::all_of(left.begin(), left.end(), [&](const auto &each) {
        const auto was = tree.find(each.first);
        return was != tree.end() && was->second.what == each.second.what;
    });
    const bool isHalf =
        step.act == Act::Move && haveSameContent(arrived, tree) && isOfTree && !left.empty();
    const bool isReserved = ending == Ending::Killed && arrived.size() == 1 &&
                            arrived.begin()->second.what == "folder" && left == tree;
    return isHalf || isReserved ? with(without(all, step.to), step.from, tree) : all;
}

/// What the disks hold after one more step.
Snapshot after(Snapshot all, const Step &step, const Snapshot &found)
{
    const Snapshot tree = partOf(all, step.from);
    const auto saved = found.find(step.from);
    if (step.act != Act::Save)
        return with(step.act == Act::Copy ? all : without(all, step.from), step.to, tree);
    if (saved == found.end() || !step.isNew(saved->second.what.substr(5)) ||
        (!tree.empty() && tree.begin()->second.keeps != saved->second.keeps))
        return with(all, step.from, {{"", {"the new file"}}});
    return with(all, step.from, {{"", saved->second}});
}

std::string difference(const Snapshot &expected, const Snapshot &found)
{
    for (const auto &[path, state] : expected) {
        const auto there = found.find(path);
        if (there == found.end())
            return path + " is not there";
        if (there->second != state)
            return path + " is not what it should be";
    }
    for (const auto &[path, state] : found) {
        if (!expected.contains(path))
            return path + " should not be there";
    }
    return {};
}

} // namespace

Snapshot snapshotOf(const Disks &disks)
{
    Snapshot all;
    for (const std::string root : {"home", "other"}) {
        const fs::path folder = disks.at(root);
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder))
            all[root / entry.path().lexically_relative(folder)] = stateOf(entry.path());
    }
    return all;
}

std::string account(const Operation &operation, const Snapshot &before, Snapshot found,
                    Ending ending)
{
    found = withTrash(found, ending);
    // Folders that are made on the way to a file of the program's own may be there or not.
    std::erase_if(found, [&](const auto &each) {
        const bool isWay = each.first.starts_with("home/data") || each.first == "home/config" ||
                           each.first == "home/config/Brimvale";
        return (isWay && each.second.what == "folder" && !before.contains(each.first)) ||
               (isLeftover(each.first) && ending == Ending::Killed);
    });
    std::string problem = "it says the wrong thing";
    Snapshot expected = before;
    for (size_t done = 0;; ++done) {
        const bool isAll = done == operation.steps.size();
        const Step *next = isAll ? nullptr : &operation.steps[done];
        if (ending == Ending::Killed || isAll == (ending == Ending::Done)) {
            problem = difference(
                expected, next && ending != Ending::Done
                              ? withoutHalves(found, *next, partOf(expected, next->from), ending)
                              : found);
            if (problem.empty())
                return {};
        }
        if (isAll)
            return problem;
        expected = after(expected, *next, found);
    }
}

std::string accountForRace(const Snapshot &before, const Snapshot &after, bool hasHappened)
{
    const auto isThere = [&](const std::string &content) {
        return std::any_of(after.begin(), after.end(), [&](const auto &each) {
            return !isLeftover(each.first) && each.second.what.find(content) != std::string::npos;
        });
    };
    if (hasHappened && !isThere("from another process"))
        return "what the other process wrote is lost";
    const auto lost = std::count_if(before.begin(), before.end(),
                                    [&](const auto &each) { return !isThere(each.second.what); });
    return lost > 2 ? "more is lost than the other process wrote over" : ""; // by two names
}

} // namespace Faults
