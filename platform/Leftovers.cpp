#include "Leftovers.h"

#include "TreeRemoval.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <tuple>

using namespace Qt::StringLiterals;

namespace FileTree {

namespace {

constexpr char prefix[] = ".Brimvale-";
constexpr char partialSuffix[] = ".partial";
constexpr char asideSuffix[] = ".moved.partial";
constexpr qint64 secondsADay = 86'400;

QByteArray hiddenName(const char *suffix)
{
    const quint64 random = QRandomGenerator::system()->generate64();
    return prefix + QByteArray::number(random, 16) + suffix;
}

/// Ours by its name, its owner and its kind, and as old. Never what was put aside: that was the
/// user's.
bool isOldPartial(const Place &place)
{
    if (!place.name.startsWith(prefix) || !place.name.endsWith(partialSuffix) ||
        place.name.endsWith(asideSuffix))
        return false;
    struct stat status = {};
    return ::fstatat(place.folder, place.name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           (S_ISDIR(status.st_mode) || S_ISREG(status.st_mode)) && status.st_uid == ::geteuid() &&
           Native::stampOf(status).modified / 1'000'000'000 <
               QDateTime::currentSecsSinceEpoch() - secondsADay;
}

} // namespace

QByteArray partialName()
{
    return hiddenName(partialSuffix);
}

QByteArray asideName()
{
    return hiddenName(asideSuffix);
}

Outcome removeOldPartials(int folder)
{
    // A copy bears the times of its source before it has its name, so it can look old while it
    // still grows: whoever copies into a folder holds a shared lock on it.
    Outcome outcome;
    if (::flock(folder, LOCK_EX | LOCK_NB) == 0) {
        QByteArrayList old;
        const int error = readFolder(folder, [&](const QByteArray &name) {
            if (isOldPartial({folder, name}))
                old << name;
            return 0;
        });
        if (error != 0)
            outcome = failure(u"cannot look for old copies"_s, error);
        for (const QByteArray &name : old) {
            const auto listed = listTree({folder, name}, Access::Forced);
            const Outcome removed =
                listed ? removeTree(*listed, {folder, name}) : Outcome(Failure{listed.reason()});
            if (outcome)
                outcome = removed;
        }
    }
    // Where there are no such locks nothing old is removed, and so nothing needs one.
    std::ignore = ::flock(folder, LOCK_SH | LOCK_NB);
    return outcome;
}

} // namespace FileTree
