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
    const QCoreApplication application(argc, argv);

    registerEditorBenchmarks(workplace);
    registerFileTreeBenchmarks(workplace);
    registerHistoryBenchmarks(workplace);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
