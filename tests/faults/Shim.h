#pragma once

#include <QString>

#include <atomic>
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
    int call = 0;      ///< counted from 1
    QString race = {}; ///< the other process, a command of the shell
};

/// What came of a run; in memory that outlives the program.
struct Report
{
    std::atomic<int> calls = 0;
    std::atomic<const char *> name = ""; ///< of the last call that a fault met
    std::atomic<bool> hasHappened = false;
};

/// From now on calls are counted and meet these faults. The system is this one, or else
///   "replaces": it knows no rename that refuses an existing destination, which it says by the
///       error number that may follow, by EINVAL otherwise,
///   "no links": nor a second name of a file,
///   "no locks": nor locks,
///   "folds case": "TREE" leads to what is called "Tree",
///   "two threads": no call of this thread counts, and it makes no link before the other one has
///       made most of its calls,
///   "waits": a flush is one, which is spared otherwise.
void arm(std::vector<Fault> faults, Report *report, const QString &system = {});
void disarm();

} // namespace Shim
