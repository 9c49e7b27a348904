#include "Operation.h"
#include "history/InstallationRecord.h"
#include "motion/ProjectChanges.h"
#include "settings/SettingsStore.h"

#include <QSettings>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace Faults {

namespace {

constexpr char document[] = "home/x.motn";
constexpr char settings[] = "home/config/Brimvale/Brimvale.conf";

/// One file is the old one or the new one, whole and with its attributes; all else stays.
QString accountForFile(Snapshot before, Snapshot after, Ending ending, const char *path,
                       const std::function<bool(const std::string &)> &isNew)
{
    const bool wasThere = before.contains(path);
    const bool isThere = after.contains(path);
    const State old = before[path];
    const State now = after[path];
    if (wasThere && !isThere)
        return u"the file is lost"_s;
    const bool isOld = wasThere ? now == old : !isThere;
    if (!isOld && !isNew(now.content))
        return u"the file is neither the old one nor the new one"_s;
    const auto mode = [](const State &state) {
        return state.attributes.substr(0, state.attributes.find(' '));
    };
    if (wasThere && mode(now) != mode(old))
        return u"the attributes are lost"_s;
    if (ending != Ending::Killed && isOld == (ending == Ending::Done))
        return u"it says the wrong thing"_s;
    before.erase(path);
    after.erase(path);
    if (ending == Ending::Killed)
        std::erase_if(after, [](const auto &each) { return isLeftover(each.first); });
    // The folders on the way to a file that was made.
    std::erase_if(after, [&](const auto &each) {
        return !before.contains(each.first) && std::string(path).starts_with(each.first + '/');
    });
    return before == after ? QString() : u"something else changed"_s;
}

void put(const fs::path &path, const std::string &content)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    fs::permissions(path, fs::perms(0640));
    const timespec times[] = {{1600000000, 0}, {1600000000, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

fs::path at(const Disks &disks, const std::string &path)
{
    return disks.home + path.substr(std::string("home").size());
}

/// What other programs do to the document.
std::vector<Race> races()
{
    const auto write = [](const std::string &path) {
        return bool(std::ofstream(path) << "<a>from another process</a>" << std::flush);
    };
    return {{"rewrites", [=](const Disks &disks) { return write(at(disks, document)); }},
            {"replaces", [=](const Disks &disks) {
                 const std::string file = at(disks, document);
                 const bool done = write(file + "~");
                 fs::rename(file + "~", file);
                 return done;
             }}};
}

bool save(const Disks &disks)
{
    const QString path = QString::fromStdString(at(disks, document));
    Result<ProjectDocument> opened = openProjectDocument(path);
    if (!opened)
        return false;
    setTheme(*opened, u"new"_s);
    return bool(saveProjectDocument(*opened, path));
}

/// The file has a form of its own for an array of none, of one and of many.
Operation appendOperation(const std::string &name, int records)
{
    const auto setUp = [records](const Disks &disks) {
        const QTemporaryDir folder;
        const QString text = folder.filePath(u"text"_s);
        {
            QSettings written(text, QSettings::IniFormat);
            written.setValue("theFolder8899"_L1, u"kept"_s);
            const QVariant record = QVariantMap{{u"installations"_s, u"old"_s}};
            written.setValue("installations"_L1, QVariantList(records, record));
        }
        std::ostringstream content;
        content << std::ifstream(text.toStdString()).rdbuf();
        put(at(disks, settings), content.str());
    };
    const auto append = [](const Disks &) { return bool(appendInstallation({u"new"_s})); };
    const auto isNew = [records](const std::string &content) {
        const QTemporaryDir folder; // a path that QSettings has nothing in memory of
        const QString copy = folder.filePath(u"copy"_s);
        put(copy.toStdString(), content);
        const QSettings text(copy, QSettings::IniFormat);
        const auto all = installationRecords(text.value("installations"_L1));
        return all.size() == records + 1 && all.last().line == "new"_L1 &&
               text.value("theFolder8899"_L1) == "kept"_L1;
    };
    return {name, setUp, append, [isNew](const auto &before, const auto &after, Ending ending) {
                return accountForFile(before, after, ending, settings, isNew);
            }};
}

/// Into no file at all.
Operation firstSettingOperation()
{
    const auto set = [](const Disks &) {
        return bool(SettingsStore().setObject(u"new"_s, SettingsStore::theFolder8899));
    };
    const auto isNew = [](const std::string &content) {
        return content == "[General]\ntheFolder8899=new\n";
    };
    return {"first-setting", [](const Disks &) {}, set,
            [isNew](const auto &before, const auto &after, Ending ending) {
                return accountForFile(before, after, ending, settings, isNew);
            }};
}

} // namespace

std::vector<Operation> documentOperations()
{
    const auto isNew = [](const std::string &content) {
        return content == "<a>\n\t<theme>new</theme>\n</a>\n";
    };
    return {{"save", [](const Disks &disks) { put(at(disks, document), "<a><theme/></a>"); }, save,
             [isNew](const Snapshot &before, const Snapshot &after, Ending ending) {
                 return accountForFile(before, after, ending, document, isNew);
             },
             false, races()},
            appendOperation("append-second", 1),
            appendOperation("append-many", 40),
            firstSettingOperation()};
}

} // namespace Faults
