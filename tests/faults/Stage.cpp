#include "Operation.h"
#include "Shim.h"

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace Faults {

namespace {

Disks disksIn(const QString &folder)
{
    const std::string root = folder.toStdString();
    return {root + "/home", root + "/other"};
}

int run(const Operation &operation, const Disks &disks, int killingCall)
{
    Shim::System system;
    system.waitsForDisk = true;
    Shim::Report report;
    Shim::arm({{Shim::Kind::Kill, 0, killingCall}}, &report, system);
    return operation.run(disks) ? 0 : 1;
}

/// What was to happen to the disks stands as it was in the other folder.
int account(const Operation &operation, const Disks &disks, const QString &ending,
            const Disks &before)
{
    const Ending how = ending == "done"_L1     ? Ending::Done
                       : ending == "failed"_L1 ? Ending::Failed
                                               : Ending::Killed;
    const QString problem = operation.account(snapshotOf(before), snapshotOf(disks), how);
    std::fputs(qPrintable(problem), stdout);
    return problem.isEmpty() ? 0 : 1;
}

} // namespace

void liveIn(const Disks &disks)
{
    ::setenv("HOME", disks.home.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (disks.home + "/data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (disks.home + "/config").c_str(), 1);
}

int stage(const QStringList &arguments)
{
    const Disks disks = disksIn(arguments.value(2));
    liveIn(disks);
    std::vector<Operation> operations = fileOperations();
    for (const Operation &operation : documentOperations())
        operations.push_back(operation);
    for (const Operation &operation : operations) {
        if (operation.name != arguments.value(1).toStdString())
            continue;
        if (arguments[0] == "run"_L1)
            return run(operation, disks, arguments.value(3).toInt());
        if (arguments[0] == "account"_L1)
            return account(operation, disks, arguments.value(3), disksIn(arguments.value(4)));
        operation.setUp(disks);
        return 0;
    }
    return 1;
}

} // namespace Faults
