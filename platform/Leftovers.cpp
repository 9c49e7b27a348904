#include "Leftovers.h"

#include "TreeRemoval.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <fcntl.h>
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

/// Never what was put aside: that was the user's.
bool isPartial(const QByteArray &name)
{
    return name.startsWith(prefix) && name.endsWith(partialSuffix) && !name.endsWith(asideSuffix);
}

/// The user's own file or folder, and old. A copy can look so while it still grows: it bears the
/// times of its source before it has its name.
bool isOld(const Place &partial)
{
    struct stat status = {};
    return ::fstatat(partial.folder, partial.name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
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

int claim(int file)
{
    return ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK ? EWOULDBLOCK : 0;
}

Outcome removeOldPartials(int folder)
{
    QByteArrayList partials;
    Outcome outcome;
    if (const int error = readFolder(folder, [&](const QByteArray &name) {
            if (isPartial(name))
                partials << name;
            return 0;
        }))
        outcome = failure(u"cannot look for old copies"_s, error);
    for (const QByteArray &name : partials) {
        const Place place = {folder, name};
        if (!isOld(place))
            continue; // nor locked: its owner is about to claim it
        const FileDescriptor unclaimed(
            ::openat(folder, name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (::flock(unclaimed.get(), LOCK_EX | LOCK_NB) != 0 || !isOld(place))
            continue;
        const auto listed = listTree(place, Access::Forced);
        const Outcome removed =
            listed ? removeTree(*listed, place) : Outcome(Failure{listed.reason()});
        if (outcome)
            outcome = removed;
    }
    return outcome;
}

} // namespace FileTree
