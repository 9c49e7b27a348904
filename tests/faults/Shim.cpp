#include "Shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <thread>

namespace Shim {

namespace {

// What is passed to these calls are numbers and addresses, each in a register of its own.
using Words = std::array<long, 6>;

std::vector<Fault> faults;
Report *report = nullptr;
std::atomic<bool> isArmed = false;
System theSystem;
std::thread::id armedBy;

bool isLeftOut()
{
    return theSystem.callsOfOthers != 0 && std::this_thread::get_id() == armedBy;
}

long failed(std::string_view name, int error)
{
    errno = error;
    return name == "fdopendir" || name == "readdir" || name == "realpath" ? 0 : -1;
}

/// Calls the C library's.
int original(const char *name, const Words &words, long *answer)
{
    auto *call =
        reinterpret_cast<long (*)(long, long, long, long, long, long)>(::dlsym(RTLD_NEXT, name));
    *answer = call(words[0], words[1], words[2], words[3], words[4], words[5]);
    return static_cast<int>(*answer);
}

std::string folded(long name)
{
    std::string lower = reinterpret_cast<const char *>(name);
    if (isArmed && theSystem.foldsCase)
        std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
    return lower;
}

/// Whether a name is there in these letters, and no other.
bool isOtherLetterCase(long at, long name)
{
    struct stat status = {};
    long answer = 0;
    const std::string lower = folded(name);
    return lower != reinterpret_cast<const char *>(name) &&
           original("fstatat",
                    {at, reinterpret_cast<long>(lower.c_str()), reinterpret_cast<long>(&status),
                     AT_SYMLINK_NOFOLLOW},
                    &answer) == 0;
}

/// Makes a call as this system makes it.
long onSystem(const char *name, Words words)
{
    const std::string_view is = name;
    long answer = 0;
    // Where power is not at stake, the wait for the disk is spared.
    if ((is == "fsync" || is == "fdatasync" || is == "syncfs") && !theSystem.waitsForDisk)
        return 0;
    if (is == "renameat2" && isArmed && theSystem.renameError != 0)
        return failed(name, theSystem.renameError);
    if (is == "renameat2" && isOtherLetterCase(words[2], words[3]))
        return failed(name, EEXIST);
    while (is == "symlinkat" && isArmed && isLeftOut() && report->calls < theSystem.callsOfOthers &&
           !report->hasHappened)
        std::this_thread::yield();
    if (original(name, words, &answer) != 0 && is == "fstatat") {
        const std::string lower = folded(words[1]);
        words[1] = reinterpret_cast<long>(lower.c_str());
        original(name, words, &answer);
    }
    return answer;
}

/// Makes a call of the program, unless a fault is due.
long pass(const char *name, Words words)
{
    if (!isArmed || isLeftOut())
        return onSystem(name, words);
    const std::string_view is = name;
    long *size = is == "copy_file_range"         ? &words[4]
                 : is == "read" || is == "write" ? &words[2]
                                                 : nullptr;
    const int number = ++report->calls;
    for (const Fault &fault : faults) {
        if (fault.call != number || (fault.kind == Kind::Short && (!size || *size < 2)))
            continue;
        report->name = name;
        report->hasHappened = true;
        if (fault.kind == Kind::Kill)
            std::raise(SIGKILL);
        if (fault.kind == Kind::DoneButError)
            onSystem(name, words);
        if (fault.kind == Kind::DoneButError || fault.kind == Kind::Error)
            return failed(name, fault.error);
        if (fault.kind == Kind::Short)
            *size /= 2;
        if (fault.kind == Kind::Race) {
            isArmed = false;
            report->hasHappened = fault.race();
            isArmed = true;
        }
    }
    return onSystem(name, words);
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
// of the program call. Only a macro makes a name.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define STAND_IN(name)                                                                             \
    extern "C" long standInFor_##name(long a, long b, long c, long d, long e,                      \
                                      long f) __asm__(#name);                                      \
    long standInFor_##name(long a, long b, long c, long d, long e, long f)                         \
    {                                                                                              \
        return Shim::pass(#name, {a, b, c, d, e, f});                                              \
    }

// clang-format off
STAND_IN(open) STAND_IN(open64) STAND_IN(openat) STAND_IN(openat64) STAND_IN(close)
STAND_IN(read) STAND_IN(write) STAND_IN(copy_file_range) STAND_IN(ioctl) STAND_IN(flock)
STAND_IN(fcntl) STAND_IN(fcntl64) STAND_IN(lseek) STAND_IN(lseek64)
STAND_IN(ftruncate) STAND_IN(ftruncate64) STAND_IN(fsync) STAND_IN(fdatasync) STAND_IN(syncfs)
STAND_IN(stat) STAND_IN(stat64) STAND_IN(lstat) STAND_IN(lstat64) STAND_IN(fstat)
STAND_IN(fstat64) STAND_IN(fstatat) STAND_IN(statx)
STAND_IN(fdopendir) STAND_IN(readdir) STAND_IN(realpath)
STAND_IN(mkdir) STAND_IN(mkdirat) STAND_IN(unlink) STAND_IN(unlinkat)
STAND_IN(link) STAND_IN(linkat) STAND_IN(symlinkat) STAND_IN(readlinkat)
STAND_IN(rename) STAND_IN(renameat) STAND_IN(renameat2)
STAND_IN(fchmod) STAND_IN(fchmodat) STAND_IN(fchown) STAND_IN(fchownat)
STAND_IN(futimens) STAND_IN(utimensat)
STAND_IN(flistxattr) STAND_IN(fgetxattr) STAND_IN(fsetxattr) STAND_IN(fremovexattr)
    // clang-format on
