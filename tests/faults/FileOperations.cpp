#include "Operation.h"
#include "platform/FileTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace Faults {

namespace {

/// Older than any change that comes during a run.
void makeOld(const fs::path &path)
{
    const timespec times[] = {{1600000000, 0}, {1600000000, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

void write(const fs::path &path, const std::string &content)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    makeOld(path);
}

/// A tree of everything that a copy keeps.
void makeTree(const fs::path &tree)
{
    write(tree / "file", std::string(3000, 'f'));
    write(tree / "read only" / "script", "script");
    write(tree / "twin", "twin");
    fs::create_hard_link(tree / "twin", tree / "read only" / "other twin");
    fs::create_directory(tree / "empty");
    fs::create_symlink("nowhere", tree / "link");
    ::setxattr((tree / "file").c_str(), "user.tag", "red", 3, 0);
    write(tree / "thin", "start");
    fs::resize_file(tree / "thin", 16384);
    fs::permissions(tree / "read only" / "script", fs::perms(0555));
    fs::permissions(tree / "read only", fs::perms(0555));
    for (const char *path : {"read only", "empty", "link", "thin"})
        makeOld(tree / path);
}

FileTree::Item item(const std::string &path)
{
    const fs::path split(path);
    return {QString::fromStdString(split.parent_path()), QString::fromStdString(split.filename())};
}

/// What stands at a path of a snapshot and below it, by relative paths.
Snapshot partOf(const Snapshot &all, const std::string &root)
{
    Snapshot part;
    for (const auto &[path, state] : all) {
        if (path == root || path.starts_with(root + '/'))
            part[path.substr(root.size())] = state;
    }
    return part;
}

/// Of a snapshot, what lies neither here nor there.
Snapshot without(Snapshot all, const std::string &here, const std::string &there)
{
    std::erase_if(all, [&](const auto &each) {
        return each.first == here || each.first.starts_with(here + '/') || each.first == there ||
               each.first.starts_with(there + '/');
    });
    return all;
}

bool hasLeftovers(const Snapshot &all)
{
    return std::any_of(all.begin(), all.end(),
                       [](const auto &each) { return isLeftover(each.first); });
}

/// One tree comes whole to its place or not at all, and is never nowhere; all else stays.
QString accountForTree(const Snapshot &before, const Snapshot &after, Ending ending, bool moves,
                       const std::string &from, const std::string &to)
{
    const Snapshot tree = partOf(before, from);
    const Snapshot source = partOf(after, from);
    const Snapshot arrived = partOf(after, to);
    const bool hasArrived = arrived == tree;
    if (!hasArrived && !arrived.empty())
        return u"the destination is half a tree"_s;
    if (!hasArrived && source != tree)
        return u"the tree is lost"_s;
    if (!moves && source != tree)
        return u"the source changed"_s;
    if (ending == Ending::Done && (!hasArrived || (moves && !source.empty())))
        return u"it is not done"_s;
    if (ending == Ending::Failed && hasArrived && moves && source.empty())
        return u"it is done, but said to have failed"_s;
    if (ending != Ending::Killed && hasLeftovers(after))
        return u"something is left over"_s;
    Snapshot rest = without(after, from, to);
    std::erase_if(rest, [](const auto &each) { return isLeftover(each.first); });
    return rest == without(before, from, to) ? QString() : u"something else changed"_s;
}

/// Either where it was and without a record, or in the trash with one.
QString accountForTrash(const Snapshot &before, const Snapshot &after, Ending ending,
                        const std::string &from, const std::string &trash)
{
    const Snapshot item = partOf(before, from);
    const Snapshot inTrash = partOf(after, trash + "/files/Glow");
    const Snapshot source = partOf(after, from);
    const auto record = after.find(trash + "/info/Glow.trashinfo");
    const bool hasRecord = record != after.end() &&
                           record->second.content.starts_with("[Trash Info]\nPath=") &&
                           record->second.content.ends_with('\n');
    if (source != item && inTrash != item)
        return u"the item is lost"_s;
    if (!source.empty() && !inTrash.empty())
        return u"the item is doubled"_s;
    if (!inTrash.empty() && !hasRecord)
        return u"the item has no record"_s;
    if (ending == Ending::Killed)
        return {};
    if (inTrash.empty() && record != after.end())
        return u"the record has no item"_s;
    return inTrash.empty() == (ending == Ending::Done) ? u"it says the wrong thing"_s : QString();
}

/// What other programs do to "Tree" while it is copied and removed.
std::vector<Race> racesFor(const std::string &name)
{
    const auto at = [name](const Disks &disks, const char *path) {
        return fs::path(disks.home) / name / path;
    };
    const auto put = [](const fs::path &path, std::ios::openmode mode) {
        std::ofstream(path, std::ios::binary | mode) << "from another process";
    };
    const std::string text = "from another process";
    return {
        {"appends", [=](const Disks &d) { put(at(d, "file"), std::ios::app); }, text},
        {"rewrites", [=](const Disks &d) { put(at(d, "file"), std::ios::in | std::ios::out); },
         text},
        {"replaces",
         [=](const Disks &d) {
             put(fs::path(d.home) / "new", std::ios::out);
             std::error_code ignored;
             fs::rename(fs::path(d.home) / "new", at(d, "file"), ignored);
         },
         text},
        {"adds",
         [=](const Disks &d) {
             std::error_code ignored;
             fs::create_directories(at(d, "empty"), ignored);
             put(at(d, "empty/new"), std::ios::out);
         },
         text},
        {"swaps",
         [=](const Disks &d) {
             std::error_code ignored;
             fs::rename(fs::path(d.home) / name, fs::path(d.home) / "was", ignored);
             fs::create_directories(fs::path(d.home) / name, ignored);
             put(at(d, "file"), std::ios::out);
         },
         text},
        {"takes the name",
         [=](const Disks &d) { put(fs::path(d.other) / "Arrived", std::ios::out); }, text},
    };
}

Operation treeOperation(const std::string &name, bool moves, bool crosses)
{
    const std::string to = crosses ? "other/Arrived" : "home/To/Arrived";
    const auto path = [to](const Disks &disks) {
        return (to.starts_with("other") ? disks.other : disks.home) + to.substr(to.find('/'));
    };
    return {name,
            [](const Disks &disks) {
                makeTree(fs::path(disks.home) / "Tree");
                write(fs::path(disks.home) / "To" / "neighbour", "neighbour");
            },
            [moves, path](const Disks &disks) {
                const auto operation = moves ? &FileTree::move : &FileTree::copy;
                return bool(operation(item(disks.home + "/Tree"), item(path(disks)), {}));
            },
            [moves, to](const Snapshot &before, const Snapshot &after, Ending ending) {
                return accountForTree(before, after, ending, moves, "home/Tree", to);
            },
            crosses,
            moves ? racesFor("Tree") : std::vector<Race>()};
}

Operation trashOperation(const std::string &name, bool crosses)
{
    const std::string from = crosses ? "other/Glow" : "home/Glow";
    const std::string trash =
        crosses ? "other/.Trash-" + std::to_string(::getuid()) : "home/data/Trash";
    return {name,
            [crosses](const Disks &disks) {
                write(fs::path(crosses ? disks.other : disks.home) / "Glow" / "file", "glow");
            },
            [crosses](const Disks &disks) {
                return bool(FileTree::trash(item((crosses ? disks.other : disks.home) + "/Glow")));
            },
            [from, trash](const Snapshot &before, const Snapshot &after, Ending ending) {
                return accountForTrash(before, after, ending, from, trash);
            },
            crosses};
}

} // namespace

std::vector<Operation> fileOperations()
{
    return {
        treeOperation("copy", false, false),
        treeOperation("move", true, false),
        treeOperation("move-across", true, true),
        trashOperation("trash", false),
    };
}

} // namespace Faults
