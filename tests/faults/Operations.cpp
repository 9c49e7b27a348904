#include "Operation.h"
#include "history/InstallationRecord.h"
#include "motion/ProjectChanges.h"
#include "platform/FileTree.h"
#include "settings/SettingsStore.h"

#include <QSettings>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <fstream>
#include <sstream>

using namespace Qt::StringLiterals;

namespace Faults {

namespace {

constexpr char document[] = "home/x.motn";
constexpr char settings[] = "home/config/Brimvale/Brimvale.conf";

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
    fs::permissions(path, fs::perms(0640));
    ::setxattr(path.c_str(), "user.tag", "red", 3, 0);
    makeOld(path);
}

/// Of everything that a copy keeps.
void makeTree(const Disks &disks)
{
    const fs::path tree = disks.at("home/Tree");
    write(disks.at("home/To/neighbour"), "neighbour");
    write(tree / "file", std::string(3000, 'f'));
    write(tree / "read only" / "script", "script");
    write(tree / "twin", "twin");
    fs::create_hard_link(tree / "twin", tree / "read only" / "other twin");
    fs::create_directory(tree / "empty");
    fs::create_symlink("nowhere", tree / "link");
    fs::create_directory_symlink("..", tree / "empty" / "to\nabove");
    write(tree / "thin", "start");
    fs::resize_file(tree / "thin", 16384);
    fs::permissions(tree / "read only" / "script", fs::perms(04555));
    fs::permissions(tree / "empty", fs::perms(02770));
    fs::permissions(tree / "read only", fs::perms(0555));
    for (const char *path :
         {"read only/script", "read only", "empty/to\nabove", "empty", "link", "thin"})
        makeOld(tree / path);
}

/// So many that a second thread takes its share.
void makeManyLinks(const Disks &disks)
{
    fs::create_directories(disks.at("home/To"));
    fs::create_directory(disks.at("home/Tree"));
    for (int link = 0; link < 66; ++link) {
        const fs::path path = disks.at("home/Tree") / std::to_string(link);
        fs::create_symlink("nowhere", path);
        makeOld(path);
    }
}

void makeFile(const Disks &disks)
{
    fs::create_directory(disks.at("home/To"));
    write(disks.at("home/Tree"), "file");
}

void makeTemplates(const Disks &disks)
{
    write(disks.at("home/Library/Glow/file"), "old");
    write(disks.at("home/Desktop/Glow/file"), "new");
}

bool save(const Disks &disks)
{
    const QString path = QString::fromStdString(disks.at(document));
    Result<ProjectDocument> opened = openProjectDocument(path);
    if (!opened)
        return false;
    std::ignore = setTheme(*opened, u"new"_s);
    return bool(saveProjectDocument(*opened, path));
}

/// What QSettings writes; `edit` it in a file that it has nothing in memory of.
template <class Edit>
std::string edited(const std::string &text, const Edit &edit)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath(u"text"_s).toStdString();
    std::ofstream(path) << text;
    {
        QSettings written(QString::fromStdString(path), QSettings::IniFormat);
        edit(written);
    }
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

/// The file has a form of its own for an array of none, of one and of many.
Operation appending(const std::string &name, int records)
{
    const std::string text = edited({}, [&](QSettings &file) {
        file.setValue("theFolder8899"_L1, u"kept"_s);
        const QVariant record = QVariantMap{{u"installations"_s, u"old"_s}};
        file.setValue("installations"_L1, QVariantList(records, record));
    });
    const auto isNew = [records](const std::string &content) {
        bool is = false;
        edited(content, [&](const QSettings &file) {
            const auto all = installationRecords(file.value("installations"_L1));
            is = all.size() == records + 1 && all.last().line == "new"_L1 &&
                 file.value("theFolder8899"_L1) == "kept"_L1;
        });
        return is;
    };
    return {.name = name,
            .setUp = [text](const Disks &disks) { write(disks.at(settings), text); },
            .steps = {{Act::Save, settings, {}, isNew}},
            .save = [](const Disks &) { return bool(appendInstallation({u"new"_s})); }};
}

bool setFirst(const Disks &)
{
    return bool(SettingsStore().setObject(u"new"_s, SettingsStore::theFolder8899));
}

auto is(const std::string &text)
{
    return [text](const std::string &content) { return content == text; };
}

FileTree::Item item(const fs::path &path)
{
    return {QString::fromStdString(path.parent_path()), QString::fromStdString(path.filename())};
}

} // namespace

bool run(const Operation &operation, const Disks &disks)
{
    ::setenv("HOME", disks.at("home").c_str(), 1);
    ::setenv("XDG_DATA_HOME", disks.at("home/data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", disks.at("home/config").c_str(), 1);
    return std::all_of(operation.steps.begin(), operation.steps.end(),
                       [&](const Step &step) -> bool {
                           const FileTree::Item from = item(disks.at(step.from));
                           const FileTree::Item to = item(disks.at(step.to));
                           switch (step.act) {
                           case Act::Copy:
                               return bool(FileTree::copy(from, to));
                           case Act::Move:
                               return bool(FileTree::move(from, to));
                           case Act::Trash:
                               return bool(FileTree::trash(from));
                           default:
                               return operation.save(disks);
                           }
                       });
}

std::vector<Operation> operations()
{
    const std::vector<Step> copy = {{Act::Copy, "home/Tree", "home/To/Arrived"}};
    const std::vector<Step> move = {{Act::Move, "home/Tree", "home/To/Arrived"}};
    const std::vector<Step> across = {{Act::Move, "home/Tree", "other/Arrived"}};
    const Step trash = {Act::Trash, "home/Library/Glow", "trash"};
    const Step install = {Act::Move, "home/Desktop/Glow", "home/Library/Glow"};
    const Shim::System replacing = {.renameError = EINVAL};
    constexpr auto inPlace = std::ios::in | std::ios::out;
    const std::vector<Race> races = {
        {"appends", "", "home/Tree/file", std::ios::app},
        {"rewrites", "", "home/Tree/file", inPlace},
        {"rewrites a twin", "", "home/Tree/twin", inPlace},
        {"replaces", "home/Tree/file", "home/Tree/file", std::ios::out},
        {"adds", "", "home/Tree/empty/new", std::ios::out},
        {"swaps a folder", "home/Tree/read only", "home/Tree/read only/script", std::ios::out},
        {"swaps the tree", "home/Tree", "home/Tree/file", std::ios::out},
        {"takes the name", "", "home/To/Arrived", std::ios::out},
        {"takes the name there", "", "other/Arrived", std::ios::out}};
    return {
        {"copy", makeTree, copy},
        {"copy-by-two", makeManyLinks, copy, {}, {.callsOfOthers = 60}},
        {"move", makeTree, move, races},
        {"move-across", makeTree, across, races},
        {"move-file-across", makeFile, across, races},
        {"move-reserving", makeTree, move, {}, replacing},
        {"move-file-reserving", makeFile, move, {}, replacing},
        {"rename-letters",
         makeTree,
         {{Act::Move, "home/Tree", "home/TREE"}},
         {},
         {.foldsCase = true}},
        {"trash", makeTemplates, {trash}},
        {"replace", makeTemplates, {trash, install}}, // as an install does it
        {"save",
         [](const Disks &disks) { write(disks.at(document), "<a><theme/></a>"); },
         {{Act::Save, document, {}, is("<a>\n\t<theme>new</theme>\n</a>\n")}},
         {{"rewrites", "", document, inPlace}, {"replaces", document, document, std::ios::out}},
         {},
         save},
        appending("append-second", 1),
        appending("append-many", 40),
        {"first-setting",
         [](const Disks &) {},
         {{Act::Save, settings, {}, is("[General]\ntheFolder8899=new\n")}},
         {},
         {},
         setFirst},
    };
}

} // namespace Faults
