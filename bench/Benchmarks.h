#pragma once

#include <QString>

/// Where the benchmarks find their input and leave their output: two folders, the second of
/// them on another file system where there is one.
struct Workplace
{
    QString folder;
    QString otherFileSystem;
};

// Each registers what it finds in the workplace with Google Benchmark.
void registerEditorBenchmarks(const Workplace &workplace);
void registerFileTreeBenchmarks(const Workplace &workplace);
void registerHistoryBenchmarks(const Workplace &workplace);
