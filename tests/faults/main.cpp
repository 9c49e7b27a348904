#include "Account.h"
#include "Shim.h"

#include <QCoreApplication>
#include <QDir>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>

using namespace Qt::StringLiterals;

namespace Faults {

namespace {

using Shim::Fault;
using Shim::Kind;

constexpr std::array moreErrors = {EACCES, EAGAIN, EBUSY,  EDQUOT, EEXIST, EINTR,  EINVAL,
                                   EMFILE, ENOMEM, ENOSYS, EPERM,  EROFS,  ENOTSUP};
// A hung run is a fault too.
constexpr unsigned secondsToHang = 20;

/// Runs one operation again and again in the current folder, each time in a process of its own, and
/// keeps the account.
class Trial
{
public:
    explicit Trial(const Operation &operation) : m_operation(operation) {}

    int runs = 0;
    int problems = 0;

    /// From now on this much counts. The snapshots of a run without a fault, before it and after
    /// each step, are what is expected; it ends as it should.
    const std::vector<Snapshot> &expect(Detail detail)
    {
        m_detail = detail;
        m_expected.clear();
        for (qsizetype steps = 0; steps <= m_operation.steps.size(); ++steps) {
            if (run({}, steps) != Ending::Done)
                tell(u"fails without a fault"_s);
            m_expected.push_back(snapshotOf(detail));
        }
        renew(m_operation.end);
        tell(difference(snapshotOf(detail), m_expected.back()));
        return m_expected;
    }

    void everywhere(Fault fault, bool inPairs = false)
    {
        for (fault.call = 1; attempt({fault}); ++fault.call) {
            const int calls = inPairs ? m_report->calls.load() : 0;
            for (Fault second = fault; second.call++ < calls;)
                attempt({fault, second});
        }
    }

private:
    Ending run(const std::vector<Fault> &faults, qsizetype steps)
    {
        ++runs;
        renew(m_operation.made);
        m_report = new (m_report) Shim::Report;
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(secondsToHang);
            Shim::arm(faults, m_report, m_operation.system);
            const bool done = perform(m_operation.steps.first(steps));
            Shim::disarm();
            std::_Exit(done ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        if (WIFEXITED(status))
            return WEXITSTATUS(status) == 0 ? Ending::Done : Ending::Failed;
        return WTERMSIG(status) == SIGKILL ? Ending::Killed : Ending::Crashed;
    }

    /// False when the operation ends before the first fault is due.
    bool attempt(const std::vector<Fault> &faults)
    {
        const Fault &first = faults.front();
        const Ending ending = run(faults, m_operation.steps.size());
        const bool isFlush =
            QStringList{u"fsync"_s, u"syncfs"_s}.contains(QLatin1StringView(m_report->name));
        const bool mayLeave = ending == Ending::Killed || faults.size() > 1;
        QString problem =
            first.kind == Kind::Race
                ? accountForRace(m_expected[0], snapshotOf(m_detail), m_report->hasHappened)
                : account(m_expected, snapshotOf(m_detail), ending, mayLeave);
        if (ending == Ending::Done && first.error == EIO && isFlush && faults.size() == 1)
            problem = u"is done, but not flushed"_s;
        if (ending == Ending::Crashed)
            problem = u"crashed or hung"_s;
        tell(problem, faults.front(), faults.back().call, ending);
        return m_report->calls >= first.call;
    }

    void tell(const QString &problem, const Fault &first = {}, int second = 0, Ending ending = {})
    {
        if (!problem.isEmpty() && ++problems < 40)
            std::printf("%s: %s (kind %d, error %d, call %d %s, %d; %s) ending %d\n",
                        qPrintable(m_operation.name), qPrintable(problem), int(first.kind),
                        first.error, first.call, m_report->name.load(), second,
                        qPrintable(first.race), int(ending));
    }

    const Operation &m_operation;
    // What a process of the trial has, all of them have.
    Shim::Report *m_report = new (::mmap(nullptr, sizeof(Shim::Report), PROT_READ | PROT_WRITE,
                                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Shim::Report;
    Detail m_detail = All;
    std::vector<Snapshot> m_expected;
};

/// Tries the operation: how many problems there are.
int tryAll(const Operation &operation, bool inFull)
{
    Trial trial(operation);
    trial.expect(All);
    trial.expect(Kept);
    trial.everywhere({Kind::Error, EIO}, inFull);
    trial.everywhere({Kind::Error, ENOSPC});
    trial.everywhere({Kind::DoneButError, EIO});
    trial.everywhere({Kind::Short});
    trial.everywhere({Kind::Kill});
    if (inFull) {
        trial.expect(Content);
        for (const int error : moreErrors)
            trial.everywhere({Kind::Error, error});
        for (const QString &race : operation.races)
            trial.everywhere({Kind::Race, 0, 0, race});
    }
    std::printf("%s: %d runs, %d problems\n", qPrintable(operation.name), trial.runs,
                trial.problems);
    return trial.problems;
}

/// Runs it on a disk that the power may leave, up to a call; 0 for the end.
int runUpTo(int call, const Operation &operation)
{
    Shim::Report report;
    Shim::arm({{Kind::Kill, 0, call}}, &report, u"waits"_s);
    const bool done = perform(operation.steps);
    Shim::disarm();
    return done ? 0 : 1;
}

/// Says what is wrong in the current folder, after such an ending. The run without a fault is made
/// in another one.
int accountFor(const QString &ending, const Operation &operation, const QString &other)
{
    const Snapshot found = snapshotOf(Kept);
    if (!QDir::setCurrent(other))
        return 1;
    Trial trial(operation);
    const auto index = QStringList{u"done"_s, u"failed"_s, u"killed"_s}.indexOf(ending);
    const QString problem = account(trial.expect(Kept), found, Ending(index), index == 2);
    std::fputs(qPrintable(problem), stdout);
    return problem.isEmpty() ? trial.problems : 1;
}

} // namespace

} // namespace Faults

/// In the current folder, with an operation: "short" or "full" tries it, "setup", "run CALL" and
/// "account ENDING FOLDER" are the steps of a power failure. Without arguments the operations'
/// names. Ends with 0 when nothing is wrong.
int main(int argc, char *argv[])
{
    using namespace Faults;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString action = arguments.value(2);
    for (const Operation &operation : operations()) {
        if (arguments.size() == 1)
            std::puts(qPrintable(operation.name));
        else if (operation.name != arguments[1])
            continue;
        else if (action == u"setup")
            renew(operation.made);
        else if (action == u"run")
            return runUpTo(arguments[3].toInt(), operation);
        else if (action == u"account")
            return accountFor(arguments[3], operation, arguments[4]);
        else
            return tryAll(operation, action == u"full") == 0 ? 0 : 1;
    }
    return 0;
}
