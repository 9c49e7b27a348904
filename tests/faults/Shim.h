#pragma once

#include <atomic>
#include <functional>
#include <vector>

/// Stands between a program and the C library: every call that reads or changes a file is counted,
/// and some of them fail.
namespace Shim {

enum class Kind {
    Error,        ///< the call is not made, and answers the error
    DoneButError, ///< the call is made, and answers the error all the same
    Short,        ///< a read, write or copy does only a part; no other call fails so
    Kill,         ///< the program dies before the call
    Race,         ///< another process acts before the call
};

struct Fault
{
    Kind kind = Kind::Error;
    int error = 0;
    int call = 0;                    ///< counted from 1
    std::function<bool()> race = {}; ///< whether the other process did anything
};

/// What came of a run; in memory that outlives the program.
struct Report
{
    std::atomic<int> calls = 0;
    std::atomic<const char *> name = ""; ///< of the last call that a fault met
    std::atomic<bool> hasHappened = false;
};

/// What else the program runs on than this machine.
struct System
{
    int renameError = 0;    ///< of a rename that is to refuse an existing destination
    bool foldsCase = false; ///< "Glow" and "GLOW" lead to what is called "glow"
    /// Counts no call of the thread that arms, and lets it make no link before others have made
    /// so many calls.
    int callsOfOthers = 0;
    bool waitsForDisk = false; ///< whether a flush is one
};

/// From now on calls are counted and meet these faults.
void arm(std::vector<Fault> faults, Report *report, const System &system = {});
void disarm();

} // namespace Shim
