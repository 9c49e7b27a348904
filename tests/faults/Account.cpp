#include "Account.h"

#include <QRegularExpression>

#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace Faults {

namespace {

constexpr auto recordSuffix = ".trashinfo"_L1;

State stateOf(const std::filesystem::path &path)
{
    // Of a record of the trash, what differs between two runs.
    static const QRegularExpression others(
        u"(?<=\nPath=)/.*(?=/home/)|(?<=\nDeletionDate=)[-0-9]{10}T[:0-9]{8}(?=\n)"_s);
    struct stat status = {};
    ::lstat(path.c_str(), &status);
    char tag = 0;
    ::lgetxattr(path.c_str(), "user.tag", &tag, 1);
    const QString keeps = u"%1 %2"_s.arg(status.st_mode & 0777).arg(int(tag));
    const QString mode = QString::number(status.st_mode);
    if (S_ISDIR(status.st_mode))
        return {u"folder"_s, keeps, mode};
    const bool isOld = status.st_mtim.tv_sec == 1600000000 && status.st_mtim.tv_nsec == 5;
    QString what = S_ISLNK(status.st_mode) ? "link "_L1 + QString::fromStdString(read_symlink(path))
                                           : "file "_L1 + contentOf(path);
    if (path.extension() == recordSuffix.data())
        what.remove(others);
    return {what, keeps + (isOld ? u" old" : u""), mode + QString::number(status.st_nlink)};
}

/// What is in some and not, or not the same, in others.
Snapshot minus(const Snapshot &some, const Snapshot &others)
{
    Snapshot rest;
    std::set_difference(some.begin(), some.end(), others.begin(), others.end(),
                        std::inserter(rest, rest.end()));
    return rest;
}

bool isLeftover(const QString &path)
{
    return path.contains("/.Brimvale-"_L1);
}

/// A whole copy whose source is not all gone, or the empty folder or file that waits for an item.
bool isBetween(const Snapshot &before, const Snapshot &after, const Snapshot &found, bool mayWait)
{
    const Snapshot left = minus(found, after);
    const Snapshot arrived = minus(found, before);
    if (minus(after, found).empty())
        return !left.empty() && std::all_of(left.begin(), left.end(), [&](const auto &each) {
            return before.contains(each.first) && before.at(each.first)[0] == each.second[0];
        });
    return mayWait && minus(before, found).empty() && arrived.size() == 1 &&
           (arrived.begin()->second[0] == u"folder" || arrived.begin()->second[0] == u"file ") &&
           after.contains(arrived.begin()->first);
}

} // namespace

Snapshot snapshotOf(Detail detail)
{
    Snapshot all;
    for (const char *folder : {"home/", "other/"}) {
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
            const State state = stateOf(entry.path()).first(detail);
            const QString path = QString::fromStdString(entry.path());
            // What seems taken in the trash gets a second name.
            if (!all.try_emplace(QString(path).remove(".2"_L1), state).second)
                all[path] = state;
        }
    }
    // Folders that are made on the way to a file of the program's own may be there or not.
    for (const char *way : {"home/config", "home/config/Brimvale", "home/data", "home/data/Trash",
                            "home/data/Trash/files", "home/data/Trash/info"})
        all.erase(QLatin1StringView(way));
    return all;
}

QString difference(const Snapshot &expected, const Snapshot &found)
{
    Snapshot wrong = minus(expected, found);
    wrong.merge(minus(found, expected));
    return wrong.empty() ? QString() : wrong.begin()->first + " is not what it should be"_L1;
}

QString account(const std::vector<Snapshot> &steps, Snapshot found, Ending ending, bool mayLeave)
{
    const bool isAnywhere = mayLeave && ending != Ending::Done;
    // Half a copy, or the record of what was still to come into the trash.
    std::erase_if(found, [=, all = found](const auto &each) {
        const QString record = QString(each.first).replace("/info/"_L1, "/files/"_L1);
        const bool isEmpty =
            record.endsWith(recordSuffix) && !all.contains(record.chopped(recordSuffix.size()));
        return (mayLeave && isLeftover(each.first)) || (isAnywhere && isEmpty);
    });
    QString problem = u"it says the wrong thing"_s;
    for (size_t done = 0; done < steps.size(); ++done) {
        const bool isLast = done + 1 == steps.size();
        if (!isAnywhere && isLast != (ending == Ending::Done))
            continue;
        problem = difference(steps[done], found);
        if (problem.isEmpty() ||
            (!isLast && isBetween(steps[done], steps[done + 1], found, isAnywhere)))
            return {};
    }
    return problem;
}

QString accountForRace(const Snapshot &before, const Snapshot &after, bool hasHappened)
{
    const auto isThere = [&](const QString &content) {
        return std::any_of(after.begin(), after.end(), [&](const auto &each) {
            return !isLeftover(each.first) && each.second[0].contains(content);
        });
    };
    if (hasHappened && !isThere(u"from another process"_s))
        return u"what the other process wrote is lost"_s;
    const auto lost = std::count_if(before.begin(), before.end(),
                                    [&](const auto &each) { return !isThere(each.second[0]); });
    return lost > 2 ? u"more is lost than the other process wrote over"_s : QString();
}

} // namespace Faults
