#include "Operation.h"
#include "Shim.h"

#include <QCoreApplication>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

namespace fs = std::filesystem;

namespace Faults {

namespace {

constexpr std::array usualErrors = {EIO, ENOSPC};
constexpr std::array moreErrors = {EACCES, EAGAIN, EBUSY,  EDQUOT, EEXIST, EINTR,  EINVAL,
                                   EMFILE, ENOMEM, ENOSYS, EPERM,  EROFS,  ENOTSUP};
// A hung run is a fault too.
constexpr unsigned secondsToHang = 20;

State stateOf(const fs::path &path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return {};
    std::array<char, 64> tag = {};
    const ssize_t tagged = ::lgetxattr(path.c_str(), "user.tag", tag.data(), tag.size());
    State state;
    state.attributes = std::to_string(status.st_mode);
    if (S_ISDIR(status.st_mode)) {
        state.kind = State::Kind::Folder;
        return state;
    }
    state.attributes += ' ' + std::to_string(status.st_mtim.tv_sec) +
                        std::string(tag.data(), size_t(std::max<ssize_t>(tagged, 0)));
    if (S_ISLNK(status.st_mode)) {
        state.kind = State::Kind::Link;
        state.content = fs::read_symlink(path);
    } else if (S_ISREG(status.st_mode)) {
        state.content.resize(size_t(status.st_size));
        std::ifstream(path, std::ios::binary).read(state.content.data(), status.st_size);
    } else {
        state.kind = State::Kind::Special;
    }
    return state;
}

} // namespace

Snapshot snapshotOf(const Disks &disks)
{
    Snapshot all;
    for (const auto &[name, root] : {std::pair("home/", disks.home), {"other/", disks.other}}) {
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root))
            all[name + entry.path().string().substr(root.size() + 1)] = stateOf(entry.path());
    }
    return all;
}

namespace {

/// Makes every call of one operation fail, in as many processes, and keeps the account.
class Trial
{
public:
    Trial(const Operation &operation, Disks disks) : m_operation(operation), m_disks(disks)
    {
        void *memory = ::mmap(nullptr, sizeof(Shim::Report), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        m_report = new (memory) Shim::Report;
    }
    ~Trial() { ::munmap(m_report, sizeof(Shim::Report)); }
    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

    void inShort();
    void inFull();

    int runs = 0;
    int problems = 0;

private:
    Ending run(const std::vector<Shim::Fault> &faults);
    bool attempt(const std::vector<Shim::Fault> &faults, const Race *race = nullptr);
    void everywhere(Shim::Fault fault, const Race *race = nullptr);
    void inPairs();
    [[nodiscard]] Snapshot withoutAttributes(Snapshot all) const;
    [[nodiscard]] QString accountForRace(Ending ending) const;

    const Operation &m_operation;
    const Disks m_disks;
    Shim::Report *m_report = nullptr;
    Snapshot m_before;
    bool m_comparesAttributes = true;
};

Ending Trial::run(const std::vector<Shim::Fault> &faults)
{
    for (const std::string &root : {m_disks.home, m_disks.other}) {
        for (const fs::directory_entry &entry : fs::directory_iterator(root))
            fs::remove_all(entry);
    }
    m_operation.setUp(m_disks);
    if (m_before.empty())
        m_before = snapshotOf(m_disks); // the same for each run
    m_report = new (m_report) Shim::Report;
    ++runs;
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(secondsToHang);
        Shim::arm(faults, m_report, m_operation.system);
        const bool done = m_operation.run(m_disks);
        Shim::disarm();
        std::_Exit(done ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status))
        return WEXITSTATUS(status) == 0 ? Ending::Done : Ending::Failed;
    if (WTERMSIG(status) != SIGKILL)
        std::strncat(m_report->name, " (crash)", 9);
    return Ending::Killed;
}

/// What another process wrote is there, and so is everything but what it wrote over.
QString Trial::accountForRace(Ending ending) const
{
    const Snapshot after = snapshotOf(m_disks);
    const auto isThere = [&after](const std::string &content) {
        return std::any_of(after.begin(), after.end(), [&](const auto &each) {
            return !isLeftover(each.first) &&
                   each.second.content.find(content) != std::string::npos;
        });
    };
    if (m_report->hasHappened && !isThere("from another process"))
        return QStringLiteral("what the other process wrote is lost");
    const auto lost = std::count_if(m_before.begin(), m_before.end(), [&](const auto &each) {
        return !isThere(each.second.content);
    });
    if (lost > 2) // by two names
        return QStringLiteral("more is lost than the other process wrote over");
    return ending == Ending::Killed ? QStringLiteral("it died") : QString();
}

/// Unless they count.
Snapshot Trial::withoutAttributes(Snapshot all) const
{
    if (!m_comparesAttributes) {
        for (auto &[path, state] : all)
            state.attributes.clear();
    }
    return all;
}

/// False when the operation ends before the first fault is due.
bool Trial::attempt(const std::vector<Shim::Fault> &faults, const Race *race)
{
    const Ending ending = run(faults);
    const bool crashed = std::strstr(m_report->name, "crash");
    // After a second failure, what a kill leaves may be left too.
    const bool isExcused = ending == Ending::Failed && faults.size() > 1;
    QString problem = race ? accountForRace(ending)
                           : m_operation.account(withoutAttributes(m_before),
                                                 withoutAttributes(snapshotOf(m_disks)),
                                                 isExcused ? Ending::Killed : ending);
    if (crashed)
        problem = QStringLiteral("it crashed or hung");
    if (!problem.isEmpty() && ++problems < 40) {
        std::printf("%s:", m_operation.name.c_str());
        for (const Shim::Fault &fault : faults)
            std::printf(" call %d %s", fault.call,
                        std::array{"fails", "fails though done", "is short", "kills",
                                   race ? race->name.c_str() : ""}[size_t(fault.kind)]);
        const char *outcome = std::array{"done", "failed", "killed"}[size_t(ending)];
        std::printf(" (%s, %s), ends as %s: %s\n", m_report->name,
                    faults.empty() ? "" : std::strerror(faults[0].error), outcome,
                    qPrintable(problem));
    }
    return faults.empty() || m_report->calls >= faults[0].call;
}

void Trial::everywhere(Shim::Fault fault, const Race *race)
{
    if (race)
        fault.race = [this, race] { return race->act(m_disks); };
    for (fault.call = 1; attempt({fault}, race); ++fault.call) {
    }
}

void Trial::inShort()
{
    attempt({});
    for (const int error : usualErrors)
        everywhere({Shim::Kind::Error, error});
    everywhere({Shim::Kind::DoneButError, EIO});
    everywhere({Shim::Kind::Short});
    everywhere({Shim::Kind::Kill});
}

void Trial::inPairs()
{
    bool isReached = true;
    for (int first = 1; isReached; ++first) {
        isReached = attempt({{Shim::Kind::Error, EIO, first}});
        for (int second = first + 1; second <= m_report->calls; ++second)
            attempt({{Shim::Kind::Error, EIO, first}, {Shim::Kind::Error, EIO, second}});
    }
}

void Trial::inFull()
{
    inShort();
    inPairs();
    // Some say no more than that this disk, or this user, keeps no such thing.
    m_comparesAttributes = false;
    for (const int error : moreErrors)
        everywhere({Shim::Kind::Error, error});
    for (const Race &race : m_operation.races)
        everywhere({Shim::Kind::Race}, &race);
}

/// 0 when nothing is wrong.
int tryOn(const Operation &operation, bool inFull)
{
    Disks disks = {"/dev/shm/brimvale-faults-XXXXXX",
                   (fs::temp_directory_path() / "brimvale-faults-XXXXXX").string()};
    struct stat home = {};
    struct stat other = {};
    if (!::mkdtemp(disks.home.data()) || !::mkdtemp(disks.other.data()) ||
        ::stat(disks.home.c_str(), &home) != 0 || ::stat(disks.other.c_str(), &other) != 0) {
        std::printf("no folder to be had in /dev/shm and for temporary files\n");
        return 1;
    }
    liveIn(disks);
    // What a killed program leaves among the temporary files is the system's to remove.
    const fs::path scratch = disks.home + "-scratch";
    fs::create_directory(scratch);
    ::setenv("TMPDIR", scratch.c_str(), 1);

    Trial trial(operation, disks);
    if (operation.needsTwoDisks && home.st_dev == other.st_dev)
        std::printf("%s: SKIPPED, /dev/shm and the temporary files share a file system\n",
                    operation.name.c_str());
    else
        inFull ? trial.inFull() : trial.inShort();
    std::printf("%s: %d runs, %d problems\n", operation.name.c_str(), trial.runs, trial.problems);
    fs::remove_all(scratch);
    fs::remove_all(disks.home);
    fs::remove_all(disks.other);
    return trial.problems == 0 ? 0 : 1;
}

} // namespace

bool isLeftover(const std::string &path)
{
    return path.find("/.Brimvale-") != std::string::npos;
}

} // namespace Faults

/// Arguments: the operations to try, all when none is named; "full" for all; or "stage".
int main(int argc, char *argv[])
{
    using namespace Faults;
    const QCoreApplication application(argc, argv);
    QStringList wanted = QCoreApplication::arguments().mid(1);
    if (wanted.value(0) == QStringLiteral("stage"))
        return stage(wanted.mid(1));
    const bool inFull = wanted.removeAll(QStringLiteral("full")) > 0;

    // One process for each operation: they wait more than they work.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    int result = 0;
    std::vector<pid_t> workers;
    std::vector<Operation> operations = fileOperations();
    for (const Operation &operation : documentOperations())
        operations.push_back(operation);
    for (const Operation &operation : operations) {
        if (!wanted.isEmpty() && !wanted.contains(QString::fromStdString(operation.name)))
            continue;
        workers.push_back(::fork());
        if (workers.back() == 0)
            std::_Exit(tryOn(operation, inFull));
    }
    for (const pid_t worker : workers) {
        int status = 0;
        ::waitpid(worker, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            result = 1;
    }
    return result;
}
