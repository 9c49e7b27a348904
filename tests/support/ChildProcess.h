#pragma once

#include "TestHome.h"

/// What a second process of this test does, in the same home; its result is the exit code.
using ChildRole = int (*)(const QStringList &arguments);

struct ChildResult
{
    int exitCode = -1; ///< -1 when it was killed or did not come to an end
    QString output;
};

/// Plays a role of `runTestOrChild` in a process of its own: for what only another process can
/// show, such as settings that are read back from the disk.
ChildResult runChild(const QString &role, const QStringList &arguments = {});

/// `runTest`, or the role that `runChild` asks for.
template <class Application, class Test>
int runTestOrChild(int argc, char *argv[], const QMap<QString, ChildRole> &roles)
{
    if (argc < 3 || qstrcmp(argv[1], "--child") != 0)
        return runTest<Application, Test>(argc, argv);
    keepSettingsIn(qEnvironmentVariable("XDG_CONFIG_HOME"));
    const Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    return roles.value(arguments.at(2))(arguments.mid(3));
}
