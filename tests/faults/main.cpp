#include "Operation.h"

#include <QCoreApplication>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <new>

namespace Faults {

namespace {

constexpr std::array moreErrors = {EACCES, EAGAIN, EBUSY,  EDQUOT, EEXIST, EINTR,  EINVAL,
                                   EMFILE, ENOMEM, ENOSYS, EPERM,  EROFS,  ENOTSUP};
// A hung run is a fault too.
constexpr unsigned secondsToHang = 20;

/// Makes every call of one operation fail, in as many processes, and keeps the account.
class Trial
{
public:
    Trial(const Operation &operation, Disks disks)
        : m_operation(operation)
        , m_disks(std::move(disks))
        , m_report(new (::mmap(nullptr, sizeof(Shim::Report), PROT_READ | PROT_WRITE,
                               MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Shim::Report)
    {
    }

    void inShort();
    void inFull();

    int runs = 0;
    int problems = 0;

private:
    Ending run(const std::vector<Shim::Fault> &faults);
    bool attempt(const std::vector<Shim::Fault> &faults, const std::string &race = {});
    void everywhere(Shim::Fault fault, const std::string &race = {});
    [[nodiscard]] Snapshot comparable(Snapshot all, bool hasFault) const;

    const Operation &m_operation;
    const Disks m_disks;
    Shim::Report *m_report = nullptr; // what a process of the trial has, all of them have
    bool m_hasCrashed = false;
    bool m_comparesAttributes = true;
    Snapshot m_before;
};

Ending Trial::run(const std::vector<Shim::Fault> &faults)
{
    for (const char *root : {"home", "other", "scratch"}) {
        fs::remove_all(m_disks.at(root));
        fs::create_directory(m_disks.at(root));
    }
    m_operation.setUp(m_disks);
    if (m_before.empty())
        m_before = snapshotOf(m_disks); // the same for each run
    ++runs;
    m_report = new (m_report) Shim::Report;
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(secondsToHang);
        Shim::arm(faults, m_report, m_operation.system);
        const bool done = Faults::run(m_operation, m_disks);
        Shim::disarm();
        std::_Exit(done ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    m_hasCrashed = !WIFEXITED(status) && WTERMSIG(status) != SIGKILL;
    if (!WIFEXITED(status))
        return Ending::Killed;
    return WEXITSTATUS(status) == 0 ? Ending::Done : Ending::Failed;
}

/// Some errors say no more than that this disk, or this user, keeps no attributes.
Snapshot Trial::comparable(Snapshot all, bool hasFault) const
{
    for (auto &[path, state] : all) {
        if (!m_comparesAttributes)
            state = {state.what};
        else if (hasFault)
            state.mayKeep.clear();
    }
    return all;
}

/// False when the operation ends before the first fault is due.
bool Trial::attempt(const std::vector<Shim::Fault> &faults, const std::string &race)
{
    const Ending ending = run(faults);
    // After a second failure, what a kill leaves may be left too.
    const bool isExcused = ending == Ending::Failed && faults.size() > 1;
    const Snapshot before = comparable(m_before, !faults.empty());
    const Snapshot found = comparable(snapshotOf(m_disks), !faults.empty());
    std::string problem =
        race.empty() ? account(m_operation, before, found, isExcused ? Ending::Killed : ending)
                     : accountForRace(before, found, m_report->hasHappened);
    const std::string_view call = m_report->name.load();
    if (ending == Ending::Done && faults.size() == 1 && faults[0].error == EIO &&
        (call == "fsync" || call == "syncfs"))
        problem = "what could not be flushed is done";
    if (m_hasCrashed || (!race.empty() && ending == Ending::Killed))
        problem = "it crashed or hung";
    if (!problem.empty() && ++problems < 40) {
        std::printf("%s:", m_operation.name.c_str());
        for (const Shim::Fault &fault : faults)
            std::printf(" call %d %s", fault.call,
                        std::array{"fails", "fails though done", "is short", "kills",
                                   race.c_str()}[size_t(fault.kind)]);
        std::printf(" (%s, %s), ends as %s: %s\n", m_report->name.load(),
                    faults.empty() ? "" : std::strerror(faults[0].error),
                    std::array{"done", "failed", "killed"}[size_t(ending)], problem.c_str());
    }
    return faults.empty() || m_report->calls >= faults[0].call;
}

void Trial::everywhere(Shim::Fault fault, const std::string &race)
{
    for (fault.call = 1; attempt({fault}, race); ++fault.call) {
    }
}

void Trial::inShort()
{
    attempt({});
    everywhere({Shim::Kind::Error, EIO});
    everywhere({Shim::Kind::Error, ENOSPC});
    everywhere({Shim::Kind::DoneButError, EIO});
    everywhere({Shim::Kind::Short});
    everywhere({Shim::Kind::Kill});
}

/// False when there was nothing to write to.
bool act(const Race &race, const Disks &disks)
{
    std::error_code error;
    const fs::path path = disks.at(race.path);
    if (!race.aside.empty()) {
        fs::rename(disks.at(race.aside), disks.at("home/was"), error);
        fs::create_directories(error ? fs::path() : path.parent_path(), error);
    }
    return !error && std::ofstream(path, std::ios::binary | race.mode) << anothers << std::flush;
}

void Trial::inFull()
{
    inShort();
    for (Shim::Fault first = {Shim::Kind::Error, EIO, 1}; attempt({first}); ++first.call) {
        Shim::Fault second = first;
        for (const int calls = m_report->calls; second.call < calls;) {
            ++second.call;
            attempt({first, second});
        }
    }
    m_comparesAttributes = false;
    for (const int error : moreErrors)
        everywhere({Shim::Kind::Error, error});
    for (const Race &race : m_operation.races)
        everywhere({Shim::Kind::Race, 0, 0, [&] { return act(race, m_disks); }}, race.name);
}

/// 0 when nothing is wrong.
int tryOn(const Operation &operation, bool inFull)
{
    std::string home = "/dev/shm/brimvale-faults-XXXXXX";
    std::string other = fs::temp_directory_path() / "brimvale-faults-XXXXXX";
    struct stat homeStatus = {};
    struct stat otherStatus = {};
    if (!::mkdtemp(home.data()) || !::mkdtemp(other.data()) ||
        ::stat(home.c_str(), &homeStatus) != 0 || ::stat(other.c_str(), &otherStatus) != 0) {
        std::printf("no folder to be had in /dev/shm and for temporary files\n");
        return 1;
    }
    // What a killed program leaves among the temporary files is the system's to remove.
    ::setenv("TMPDIR", (home + "/scratch").c_str(), 1);

    Trial trial(operation, {home, other});
    if (operation.steps[0].to.starts_with("other") && homeStatus.st_dev == otherStatus.st_dev)
        std::printf("%s: SKIPPED, /dev/shm and the temporary files share a file system\n",
                    operation.name.c_str());
    else
        inFull ? trial.inFull() : trial.inShort();
    std::printf("%s: %d runs, %d problems\n", operation.name.c_str(), trial.runs, trial.problems);
    fs::remove_all(home);
    fs::remove_all(other);
    return trial.problems == 0 ? 0 : 1;
}

/// One step of a power failure, which is made around this program: "setup", "run" up to a call
/// (0: to the end), or "account" for what came of it, by its ending and by a folder in which
/// nothing happened. 0 when nothing is wrong.
int stage(const Operation &operation, const std::vector<std::string> &arguments)
{
    const Disks disks = {arguments.at(2), arguments.at(2)};
    if (arguments[0] == "setup") {
        operation.setUp(disks);
        return 0;
    }
    if (arguments[0] == "run") {
        Shim::Report report;
        Shim::arm({{Shim::Kind::Kill, 0, std::stoi(arguments.at(3))}}, &report,
                  {.waitsForDisk = true});
        return run(operation, disks) ? 0 : 1;
    }
    const Ending ending = arguments.at(3) == "done"     ? Ending::Done
                          : arguments.at(3) == "failed" ? Ending::Failed
                                                        : Ending::Killed;
    const std::string problem = account(operation, snapshotOf({arguments.at(4), arguments.at(4)}),
                                        snapshotOf(disks), ending);
    std::fputs(problem.c_str(), stdout);
    return problem.empty() ? 0 : 1;
}

} // namespace

} // namespace Faults

/// Arguments: the operations to try, all when none is named; "full" for all that can fail; or
/// "stage" and its own.
int main(int argc, char *argv[])
{
    using namespace Faults;
    const QCoreApplication application(argc, argv);
    std::vector<std::string> wanted(argv + 1, argv + argc);
    const std::vector<Operation> all = operations();
    if (!wanted.empty() && wanted[0] == "stage") {
        wanted.erase(wanted.begin());
        const auto operation = std::find_if(all.begin(), all.end(), [&](const Operation &each) {
            return each.name == wanted.at(1);
        });
        return operation == all.end() ? 1 : stage(*operation, wanted);
    }
    const bool inFull = std::erase(wanted, "full") > 0;

    // One process for each operation: they wait more than they work.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    for (const Operation &operation : all) {
        const bool isWanted = wanted.empty() || std::find(wanted.begin(), wanted.end(),
                                                          operation.name) != wanted.end();
        if (isWanted && ::fork() == 0)
            std::_Exit(tryOn(operation, inFull));
    }
    int result = 0;
    for (int status = 0; ::wait(&status) > 0;)
        result |= status;
    return result == 0 ? 0 : 1;
}
