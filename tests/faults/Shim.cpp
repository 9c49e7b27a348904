#include "Shim.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>
#include <type_traits>

namespace Shim {

namespace {

std::vector<Fault> faults;
Report *report = nullptr;
std::atomic<bool> isArmed = false;
System theSystem;
std::thread::id armedBy;

bool isLeftOut()
{
    return theSystem.callsOfOthers != 0 && std::this_thread::get_id() == armedBy;
}

/// The answer of a call that failed.
template <class Answer>
Answer failed(int error)
{
    errno = error;
    if constexpr (std::is_pointer_v<Answer>)
        return nullptr;
    else
        return -1;
}

/// Makes a call of the program, unless a fault is due.
template <class Answer, class Call>
Answer pass(const char *name, size_t *size, const Call &call)
{
    if (!isArmed || isLeftOut())
        return call();
    const int number = ++report->calls;
    for (const Fault &fault : faults) {
        if (fault.call != number || (fault.kind == Kind::Short && (!size || *size < 2)))
            continue;
        std::strncpy(report->name, name, sizeof report->name - 1);
        report->hasHappened = true;
        switch (fault.kind) {
        case Kind::DoneButError:
            call();
            [[fallthrough]];
        case Kind::Error:
            return failed<Answer>(fault.error);
        case Kind::Short:
            *size /= 2;
            break;
        case Kind::Kill:
            std::raise(SIGKILL);
            break;
        case Kind::Race:
            isArmed = false;
            report->hasHappened = fault.race();
            isArmed = true;
            break;
        }
    }
    return call();
}

std::string folded(const char *name)
{
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
    return isArmed && theSystem.foldsCase ? lower : name;
}

/// Calls the C library's.
template <class Function, class... Arguments>
auto original(const char *name, Function *, Arguments... arguments)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name))(arguments...);
}

int statAt(int at, const char *path, struct stat *to, int flags)
{
    const int answer = original("fstatat", &::fstatat, at, path, to, flags);
    return answer == 0 ? 0 : original("fstatat", &::fstatat, at, folded(path).c_str(), to, flags);
}

int renameOnSystem(int fromAt, const char *from, int toAt, const char *to, unsigned flags)
{
    struct stat status = {};
    if (isArmed && theSystem.renameError != 0)
        return failed<int>(theSystem.renameError);
    if (folded(to) != to && statAt(toAt, to, &status, AT_SYMLINK_NOFOLLOW) == 0)
        return failed<int>(EEXIST);
    return original("renameat2", &::renameat2, fromAt, from, toAt, to, flags);
}

int linkInTurn(const char *target, int at, const char *path)
{
    while (isArmed && isLeftOut() && report->calls < theSystem.callsOfOthers &&
           !report->hasHappened)
        std::this_thread::yield();
    return original("symlinkat", &::symlinkat, target, at, path);
}

} // namespace

void arm(std::vector<Fault> those, Report *to, const System &system)
{
    faults = std::move(those);
    report = to;
    theSystem = system;
    armedBy = std::this_thread::get_id();
    isArmed = true;
}

void disarm()
{
    isArmed = false;
}

} // namespace Shim

// Defined in the executable, under the C library's names, these are also what the shared libraries
// of the program call.
// NOLINTBEGIN(bugprone-macro-parentheses, cppcoreguidelines-macro-usage)
#define STAND_IN_FOR(answer, name, size, parameters, call)                                         \
    extern "C" answer standInFor_##name parameters __asm__(#name);                                 \
    answer standInFor_##name parameters                                                            \
    {                                                                                              \
        return Shim::pass<answer>(#name, size, [&] { return call; });                              \
    }
#define STAND_IN_SIZED(answer, name, size, parameters, arguments)                                  \
    STAND_IN_FOR(answer, name, size, parameters,                                                   \
                 reinterpret_cast<answer(*) parameters>(::dlsym(RTLD_NEXT, #name)) arguments)
#define STAND_IN(answer, name, parameters, arguments)                                              \
    STAND_IN_SIZED(answer, name, nullptr, parameters, arguments)

// Where power is not at stake, the wait for the disk is spared.
#define FLUSH(name)                                                                                \
    STAND_IN_FOR(int, name, nullptr, (int file),                                                   \
                 Shim::theSystem.waitsForDisk ? Shim::original(#name, &::name, file) : 0)

STAND_IN(int, open, (const char *path, int flags, mode_t mode), (path, flags, mode))
STAND_IN(int, open64, (const char *path, int flags, mode_t mode), (path, flags, mode))
STAND_IN(int, openat, (int at, const char *path, int flags, mode_t mode), (at, path, flags, mode))
STAND_IN(int, openat64, (int at, const char *path, int flags, mode_t mode), (at, path, flags, mode))
STAND_IN(int, close, (int file), (file))
STAND_IN_SIZED(ssize_t, read, &size, (int file, void *data, size_t size), (file, data, size))
STAND_IN_SIZED(ssize_t, write, &size, (int file, const void *data, size_t size), (file, data, size))
STAND_IN_SIZED(ssize_t, copy_file_range, &size,
               (int from, off_t *fromAt, int to, off_t *toAt, size_t size, unsigned flags),
               (from, fromAt, to, toAt, size, flags))
STAND_IN(int, ioctl, (int file, unsigned long request, void *argument), (file, request, argument))
STAND_IN(int, fcntl, (int file, int command, void *argument), (file, command, argument))
STAND_IN(int, fcntl64, (int file, int command, void *argument), (file, command, argument))
STAND_IN(off_t, lseek, (int file, off_t at, int whence), (file, at, whence))
STAND_IN(off_t, lseek64, (int file, off_t at, int whence), (file, at, whence))
STAND_IN(int, ftruncate, (int file, off_t size), (file, size))
STAND_IN(int, ftruncate64, (int file, off_t size), (file, size))
STAND_IN(int, flock, (int file, int what), (file, what))
STAND_IN(int, stat, (const char *path, struct stat *to), (path, to))
STAND_IN(int, stat64, (const char *path, struct stat *to), (path, to))
STAND_IN(int, lstat, (const char *path, struct stat *to), (path, to))
STAND_IN(int, lstat64, (const char *path, struct stat *to), (path, to))
STAND_IN(int, fstat, (int file, struct stat *to), (file, to))
STAND_IN(int, fstat64, (int file, struct stat *to), (file, to))
STAND_IN_FOR(int, fstatat, nullptr, (int at, const char *path, struct stat *to, int flags),
             Shim::statAt(at, path, to, flags))
STAND_IN(int, statx, (int at, const char *path, int flags, unsigned mask, void *to),
         (at, path, flags, mask, to))
STAND_IN(DIR *, fdopendir, (int file), (file))
STAND_IN(dirent *, readdir, (DIR * folder), (folder))
STAND_IN(char *, realpath, (const char *path, char *to), (path, to))
STAND_IN(int, mkdir, (const char *path, mode_t mode), (path, mode))
STAND_IN(int, mkdirat, (int at, const char *path, mode_t mode), (at, path, mode))
STAND_IN(int, unlink, (const char *path), (path))
STAND_IN(int, unlinkat, (int at, const char *path, int flags), (at, path, flags))
STAND_IN(int, link, (const char *from, const char *to), (from, to))
STAND_IN(int, linkat, (int fromAt, const char *from, int toAt, const char *to, int flags),
         (fromAt, from, toAt, to, flags))
STAND_IN_FOR(int, symlinkat, nullptr, (const char *target, int at, const char *path),
             Shim::linkInTurn(target, at, path))
STAND_IN(ssize_t, readlinkat, (int at, const char *path, char *to, size_t size),
         (at, path, to, size))
STAND_IN(int, rename, (const char *from, const char *to), (from, to))
STAND_IN(int, renameat, (int fromAt, const char *from, int toAt, const char *to),
         (fromAt, from, toAt, to))
STAND_IN_FOR(int, renameat2, nullptr,
             (int fromAt, const char *from, int toAt, const char *to, unsigned flags),
             Shim::renameOnSystem(fromAt, from, toAt, to, flags))
STAND_IN(int, fchmod, (int file, mode_t mode), (file, mode))
STAND_IN(int, fchmodat, (int at, const char *path, mode_t mode, int flags), (at, path, mode, flags))
STAND_IN(int, fchown, (int file, uid_t user, gid_t group), (file, user, group))
STAND_IN(int, fchownat, (int at, const char *path, uid_t user, gid_t group, int flags),
         (at, path, user, group, flags))
STAND_IN(int, futimens, (int file, const timespec *times), (file, times))
STAND_IN(int, utimensat, (int at, const char *path, const timespec *times, int flags),
         (at, path, times, flags))
STAND_IN(ssize_t, flistxattr, (int file, char *names, size_t size), (file, names, size))
STAND_IN(ssize_t, fgetxattr, (int file, const char *name, void *value, size_t size),
         (file, name, value, size))
STAND_IN(int, fsetxattr, (int file, const char *name, const void *value, size_t size, int flags),
         (file, name, value, size, flags))
STAND_IN(int, fremovexattr, (int file, const char *name), (file, name))
FLUSH(fsync)
FLUSH(fdatasync)
FLUSH(syncfs)
// NOLINTEND(bugprone-macro-parentheses, cppcoreguidelines-macro-usage)
