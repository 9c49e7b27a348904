#include "Benchmarks.h"
#include "platform/FileTree.h"

#include <QDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

using FileTree::Item;

/// Times an operation on a tree until it fails.
template <class Operation>
void repeat(benchmark::State &state, const Operation &operation)
{
    for (auto _ : state) {
        if (const Outcome outcome = operation(); !outcome) {
            state.SkipWithError(outcome.reason().toStdString().c_str());
            break;
        }
    }
}

/// With a progress handler, as the backup does it.
void copy(benchmark::State &state, const Item &tree, const Item &place)
{
    qint64 bytes = 0;
    const auto progress = [&](const FileTree::CopyProgress &done) { bytes = done.bytesDone; };
    repeat(state, [&] { return FileTree::copy(tree, place, progress); });
    state.SetBytesProcessed(bytes);
}

void move(benchmark::State &state, const Item &tree, const Item &place)
{
    repeat(state, [&] { return FileTree::move(tree, place); });
}

void moveThereAndBack(benchmark::State &state, const Item &tree, const Item &place)
{
    repeat(state, [&] {
        const Outcome moved = FileTree::move(tree, place);
        return moved ? FileTree::move(place, tree) : moved;
    });
}

} // namespace

void registerFileTreeBenchmarks(const Workplace &workplace)
{
    const QString trees = workplace.folder + u"/trees"_s;
    for (const QString &shape : QDir(trees).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const Item tree = {trees, shape};
        const Item place = {workplace.folder + u"/out"_s, shape};
        const Item otherPlace = {workplace.otherFileSystem + u"/out"_s, shape};
        const std::string name = '/' + shape.toStdString();
        // The same-file-system moves first: the tree is not there any more after the last line.
        benchmark::RegisterBenchmark(("move_tree_same_fs" + name).c_str(), moveThereAndBack, tree,
                                     place);
        benchmark::RegisterBenchmark(("copy_tree" + name).c_str(), copy, tree, place)
            ->Iterations(1)
            ->UseRealTime();
        benchmark::RegisterBenchmark(("move_tree_cross_fs" + name).c_str(), move, tree, otherPlace)
            ->Iterations(1)
            ->UseRealTime();
    }
}
