#include "Shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>

namespace Shim {

namespace {

// What is passed to these calls are numbers and addresses, each in a register of its own.
using Words = std::array<long, 6>;

std::vector<Fault> faults;
Report *report = nullptr;
std::atomic<bool> isArmed = false;
QString theSystem;
std::thread::id armedBy;

bool isOn(const char16_t *system)
{
    return isArmed && theSystem == system;
}

bool isLeftOut()
{
    return isOn(u"two threads") && std::this_thread::get_id() == armedBy;
}

long failed(std::string_view name, int error)
{
    errno = error;
    return name == "fdopendir" || name == "readdir" || name == "realpath" ? 0 : -1;
}

/// Calls the C library's.
long original(const char *name, const Words &words)
{
    auto *call =
        reinterpret_cast<long (*)(long, long, long, long, long, long)>(::dlsym(RTLD_NEXT, name));
    return call(words[0], words[1], words[2], words[3], words[4], words[5]);
}

/// Makes a call as this system makes it.
long onSystem(const char *name, Words words)
{
    const std::string_view is = name;
    const bool isRename = is == "renameat2";
    if ((is == "fsync" || is == "fdatasync" || is == "syncfs") && !isOn(u"waits"))
        return 0;
    if (isRename && isArmed && theSystem.startsWith(u"replaces")) {
        const int error = theSystem.section(u' ', 1).toInt();
        return failed(name, error != 0 ? error : EINVAL);
    }
    if (isOn(u"no links") && (isRename || is == "linkat"))
        return failed(name, isRename ? EINVAL : EPERM);
    if (isOn(u"no locks") && is == "flock")
        return failed(name, ENOLCK);
    while (is == "symlinkat" && isLeftOut() && report->calls < 60 && !report->hasHappened)
        std::this_thread::yield();
    if ((isRename || is == "fstatat") && isOn(u"folds case")) {
        long &path = words[isRename ? 3 : 1];
        const bool isOther = std::strcmp(reinterpret_cast<const char *>(path), "TREE") == 0 &&
                             ::faccessat(int(words[isRename ? 2 : 0]), "Tree", F_OK, 0) == 0;
        if (isOther && isRename)
            return failed(name, EEXIST);
        if (isOther)
            path = reinterpret_cast<long>("Tree");
    }
    return original(name, words);
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
            report->hasHappened = std::system(qPrintable(u"exec 2>/dev/null\n" + fault.race)) == 0;
            isArmed = true;
        }
    }
    return onSystem(name, words);
}

} // namespace

void arm(std::vector<Fault> those, Report *to, const QString &system)
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

#include "calls.inc"
