#include "OwnInput.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <optional>

/// brimvale_bench --make-input FOLDER: writes the input there and measures nothing.
int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--make-input") == 0) {
        makeInput(QString::fromLocal8Bit(argv[2]));
        return 0;
    }
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
