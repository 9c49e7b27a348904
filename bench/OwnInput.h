#pragma once

#include "Benchmarks.h"

#include <QTemporaryDir>

/// Fills a folder with input of the benchmarks' shapes: Motion files, and trees of many small and
/// of few large files.
void makeInput(const QString &folder);

/// Such input in temporary folders, for a run by hand. The settings go there too. All of it is
/// removed in the end.
class OwnInput
{
public:
    OwnInput();

    [[nodiscard]] Workplace workplace() const;

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_otherFileSystem;
};
