#include "OwnInput.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <optional>

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    std::optional<OwnInput> ownInput;
    Workplace workplace = {qEnvironmentVariable("BRIMVALE_BENCH_DIR"),
                           qEnvironmentVariable("BRIMVALE_BENCH_DIR2")};
    if (workplace.folder.isEmpty())
        workplace = ownInput.emplace().workplace();
    if (workplace.otherFileSystem.isEmpty())
        workplace.otherFileSystem = workplace.folder;
    // The history is measured in a home of its own, never in that of whoever measures.
    if (!qEnvironmentVariable("HOME").startsWith(workplace.folder)) {
        qputenv("HOME", workplace.folder.toUtf8());
        qputenv("XDG_CONFIG_HOME", (workplace.folder + u"/.config").toUtf8());
    }
    const QCoreApplication application(argc, argv);

    registerEditorBenchmarks(workplace);
    registerFileTreeBenchmarks(workplace);
    registerHistoryBenchmarks(workplace);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
