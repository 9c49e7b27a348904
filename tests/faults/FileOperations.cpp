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
    const bool isReserved = arrived.size() == 1 && ending == Ending::Killed &&
                            arrived.begin()->second.kind == State::Kind::Folder;
    if (!hasArrived && !arrived.empty() && !isReserved)
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

/// Either where it was and without a record, or in the trash with one. What is to take its place
/// is nowhere else than there or where it was.
QString accountForTrash(const Snapshot &before, const Snapshot &after, Ending ending,
                        const std::string &from, const std::string &trash)
{
    const Snapshot item = partOf(before, from);
    std::string name = "Glow";
    for (int count = 2; count < 4 && partOf(after, trash + "/files/" + name).empty(); ++count)
        name = "Glow." + std::to_string(count);
    const Snapshot inTrash = partOf(after, trash + "/files/" + name);
    const auto record = after.find(trash + "/info/" + name + ".trashinfo");
    const bool hasRecord = record != after.end() &&
                           record->second.content.starts_with("[Trash Info]\nPath=") &&
                           record->second.content.ends_with('\n');
    const bool isInPlace = partOf(after, from) == item;
    if (isInPlace == (inTrash == item))
        return isInPlace ? u"the item is doubled"_s : u"the item is lost"_s;
    if (!isInPlace && !hasRecord)
        return u"the item has no record"_s;
    if (ending == Ending::Killed)
        return {};
    const auto records = std::count_if(after.begin(), after.end(), [&](const auto &each) {
        return each.first.starts_with(trash + "/info/");
    });
    if (records != (isInPlace ? 0 : 1))
        return u"a record has no item"_s;
    return isInPlace == (ending == Ending::Done) ? u"it says the wrong thing"_s : QString();
}

/// Whether it was written: what is to be written to may be gone.
bool put(const fs::path &path, std::ios::openmode mode = std::ios::out)
{
    return bool(std::ofstream(path, std::ios::binary | mode)
                << "from another process" << std::flush);
}

bool take(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    fs::rename(from, to, error);
    return !error;
}

/// What other programs do to "Tree" while it is copied and removed.
std::vector<Race> races()
{
    const auto at = [](const Disks &disks, const char *path) {
        return fs::path(disks.home) / path;
    };
    const std::ios::openmode inPlace = std::ios::in | std::ios::out;
    return {
        {"appends", [=](const Disks &d) { return put(at(d, "Tree/file"), std::ios::app); }},
        {"rewrites", [=](const Disks &d) { return put(at(d, "Tree/file"), inPlace); }},
        {"rewrites a twin", [=](const Disks &d) { return put(at(d, "Tree/twin"), inPlace); }},
        {"replaces",
         [=](const Disks &d) {
             return put(at(d, "new")) && take(at(d, "new"), at(d, "Tree/file"));
         }},
        {"adds", [=](const Disks &d) { return put(at(d, "Tree/empty/new")); }},
        {"swaps a folder",
         [=](const Disks &d) {
             std::error_code ignored;
             return take(at(d, "Tree/read only"), at(d, "was")) &&
                    fs::create_directory(at(d, "Tree/read only"), ignored) &&
                    put(at(d, "Tree/read only/script"));
         }},
        {"swaps the tree",
         [=](const Disks &d) {
             return take(at(d, "Tree"), at(d, "was")) && fs::create_directory(at(d, "Tree")) &&
                    put(at(d, "Tree/file"));
         }},
        {"takes the name",
         [=](const Disks &d) { return put(at(d, "To/Arrived")) || put(d.other + "/Arrived"); }},
    };
}

/// Copies or moves "home/Tree".
Operation treeOperation(const std::string &name, bool moves, const std::string &to,
                        const std::function<void(const fs::path &)> &make = makeTree)
{
    const bool crosses = to.starts_with("other");
    const auto path = [to, crosses](const Disks &disks) {
        return (crosses ? disks.other : disks.home) + to.substr(to.find('/'));
    };
    return {name,
            [make](const Disks &disks) {
                make(fs::path(disks.home) / "Tree");
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
            moves ? races() : std::vector<Race>()};
}

Operation onSystem(Operation operation, const Shim::System &system)
{
    operation.system = system;
    operation.races.clear();
    return operation;
}

/// So many that a second thread takes its share.
void makeManyLinks(const fs::path &tree)
{
    fs::create_directories(tree);
    for (int link = 0; link < 66; ++link) {
        fs::create_symlink("nowhere", tree / std::to_string(link));
        makeOld(tree / std::to_string(link));
    }
}

void makeFile(const fs::path &path)
{
    write(path, "file");
}

Operation trashOperation()
{
    return {"trash",
            [](const Disks &disks) { write(fs::path(disks.home) / "Glow" / "file", "glow"); },
            [](const Disks &disks) { return bool(FileTree::trash(item(disks.home + "/Glow"))); },
            [](const Snapshot &before, const Snapshot &after, Ending ending) {
                return accountForTrash(before, after, ending, "home/Glow", "home/data/Trash");
            }};
}

/// As an install does it: what stands in the place goes to the trash first.
Operation replaceOperation()
{
    return {"replace",
            [](const Disks &disks) {
                write(fs::path(disks.home) / "Library" / "Glow" / "file", "old");
                write(fs::path(disks.home) / "Desktop" / "Glow" / "file", "new");
            },
            [](const Disks &disks) {
                const FileTree::Item place = item(disks.home + "/Library/Glow");
                return FileTree::trash(place) &&
                       FileTree::move(item(disks.home + "/Desktop/Glow"), place);
            },
            [](const Snapshot &before, Snapshot after, Ending ending) -> QString {
                const std::string place = "home/Library/Glow";
                const Snapshot fresh = partOf(before, "home/Desktop/Glow");
                const bool isInstalled = partOf(after, place) == fresh;
                if (isInstalled == (partOf(after, "home/Desktop/Glow") == fresh))
                    return u"the new one is doubled or lost"_s;
                if (ending != Ending::Killed && isInstalled != (ending == Ending::Done))
                    return u"it says the wrong thing"_s;
                const Ending trashing =
                    partOf(after, place) == partOf(before, place) ? ending : Ending::Done;
                if (isInstalled)
                    std::erase_if(after, [&](auto &each) { return each.first.starts_with(place); });
                return accountForTrash(before, after, ending == Ending::Killed ? ending : trashing,
                                       place, "home/data/Trash");
            }};
}

} // namespace

std::vector<Operation> fileOperations()
{
    const std::string place = "home/To/Arrived";
    const Shim::System replacing = {EINVAL};
    return {
        treeOperation("copy", false, place),
        onSystem(treeOperation("copy-by-two", false, place, makeManyLinks), {0, false, 60}),
        treeOperation("move", true, place),
        treeOperation("move-across", true, "other/Arrived"),
        treeOperation("move-file-across", true, "other/Arrived", makeFile),
        onSystem(treeOperation("move-reserving", true, place), replacing),
        onSystem(treeOperation("move-file-reserving", true, place, makeFile), replacing),
        onSystem(treeOperation("rename-letters", true, "home/TREE"), {0, true}),
        trashOperation(),
        replaceOperation(),
    };
}

} // namespace Faults
