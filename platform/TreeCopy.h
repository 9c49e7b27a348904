#pragma once

#include "FolderCursor.h"

#include <QElapsedTimer>

#include <atomic>

namespace FileTree {

/// Copies one tree to a place where nothing stands yet, and claims it for as long as it lives.
/// Until the end the new tree is open to its owner alone; what there is of it after a failure is
/// left to the caller.
class TreeCopy
{
public:
    TreeCopy(Place from, Place to, const ProgressHandler &progress);

    Outcome run();

    /// What was copied. A file that another program changes meanwhile has the stamp from before, so
    /// that it is seen to be another one.
    [[nodiscard]] const TreeListing &listing() const { return m_tree; }

    /// Reports the progress if the last report was long enough ago.
    void tick();

private:
    Outcome claimRoot();
    Outcome makeFolders();
    Outcome copyEntries();
    enum class Share { FromTheFront, FromTheBack };
    Outcome copyShare(Share share, const Native::Advance &advance);
    int copyEntry(TreeListing::Entry &entry, FolderCursor &from, FolderCursor &to,
                  const Native::Advance &advance);
    Outcome copyOtherNames();
    Outcome finishFolders();
    [[nodiscard]] Failure failure(size_t folder, const QByteArray &name, int error) const;

    const Place m_from;
    const Place m_to;
    const ProgressHandler &m_progress;
    QElapsedTimer m_sinceReport;
    TreeListing m_tree;
    FileDescriptor m_claim;

    // Shared by the two threads that copy the entries.
    std::atomic<size_t> m_taken = 0;
    std::atomic<qint64> m_bytesDone = 0;
    std::atomic<bool> m_ended = false;
};

} // namespace FileTree
