#pragma once

#include "Benchmarks.h"

#include <QTemporaryDir>

/// Input of the benchmarks' shapes in temporary folders, for a run by hand: Motion files and
/// trees of many small and of few large files. The settings go there too. All of it is removed
/// in the end.
class OwnInput
{
public:
    OwnInput();

    [[nodiscard]] Workplace workplace() const;

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_otherFileSystem;
};
