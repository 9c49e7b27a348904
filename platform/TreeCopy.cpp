#include "TreeCopy.h"

#include "Leftovers.h"
#include "SecondThread.h"

#include <QFile>

#include <fcntl.h>

#include <climits>

using namespace Qt::StringLiterals;

namespace FileTree {

namespace {

// Below this a second thread costs more than it gives.
constexpr size_t manyEntries = 64;
constexpr qint64 manyBytes = 16 << 20;

int copyLink(const Place &from, const Place &to)
{
    struct stat status = {};
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    const ssize_t length =
        ::readlinkat(from.folder, from.name.constData(), target.data(), size_t(target.size()));
    if (length < 0 ||
        ::fstatat(from.folder, from.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    target.truncate(length);
    if (::symlinkat(target.constData(), to.folder, to.name.constData()) != 0)
        return errno;
    return Native::copyLinkAttributes(status, to);
}

} // namespace

TreeCopy::TreeCopy(Place from, Place to, const ProgressHandler &progress)
    : m_from(std::move(from)), m_to(std::move(to)), m_progress(progress)
{
    m_sinceReport.start();
}

Outcome TreeCopy::run()
{
    Result<TreeListing> found = listTree(m_from, Access::AsItIs, [this] { tick(); });
    if (!found)
        return Failure{found.reason()};
    m_tree = std::move(*found);
    if (m_tree.folders.size() == 1 && m_tree.entries.front().kind == TreeListing::Kind::Other)
        return Failure{QFile::decodeName(m_from.name) + u" is neither file, folder nor link"_s};

    Outcome outcome = makeFolders();
    if (outcome)
        outcome = copyEntries();
    if (outcome && !m_claim)
        outcome = claimRoot(); // a file, by now
    if (outcome)
        outcome = copyOtherNames();
    if (outcome)
        outcome = finishFolders();
    if (outcome && m_progress)
        m_progress({m_bytesDone, m_tree.bytes});
    return outcome;
}

void TreeCopy::tick()
{
    if (!m_progress || !m_sinceReport.hasExpired(reportInterval.count()))
        return;
    m_sinceReport.restart();
    m_progress({m_bytesDone, m_tree.bytes});
}

Failure TreeCopy::failure(size_t folder, const QByteArray &name, int error) const
{
    return FileTree::failure(u"cannot copy "_s + m_tree.path(folder, name), error);
}

/// Of a link there is nothing that could be claimed, and nothing that looks like a leftover.
Outcome TreeCopy::claimRoot()
{
    m_claim = FileDescriptor(::openat(m_to.folder, m_to.name.constData(),
                                      O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (const int error = m_claim ? claim(m_claim.get()) : 0)
        return FileTree::failure(u"cannot claim the copy"_s, error);
    return {};
}

Outcome TreeCopy::makeFolders()
{
    FolderCursor to(m_tree, m_to, Access::ToCopy);
    for (size_t index = 1; index < m_tree.folders.size(); ++index) {
        tick();
        const size_t parent = m_tree.folders[index].parent;
        const QByteArray &name = m_tree.folders[index].name;
        const int descriptor = to.open(parent);
        if (descriptor < 0 ||
            ::mkdirat(descriptor, to.nameHere(parent, name).constData(), S_IRWXU) != 0)
            return failure(parent, name, errno);
        if (parent != 0)
            continue;
        if (const Outcome claimed = claimRoot(); !claimed)
            return claimed;
        const int made = to.open(index);
        if (const int error = made < 0 ? errno : Native::dropInheritance(made))
            return failure(parent, name, error);
    }
    return {};
}

Outcome TreeCopy::copyEntries()
{
    const Native::Advance count = [this](qint64 bytes) {
        m_bytesDone += bytes;
        return !m_ended;
    };
    const Native::Advance countAndTick = [this, &count](qint64 bytes) {
        tick();
        return count(bytes);
    };

    const bool isWorthTwo = m_tree.entries.size() > manyEntries ||
                            (m_tree.entries.size() > 1 && m_tree.bytes > manyBytes);
    if (!isWorthTwo)
        return copyShare(Share::FromTheFront, countAndTick);
    SecondThread second([this, &count] { return copyShare(Share::FromTheBack, count); });
    const Outcome mine = copyShare(Share::FromTheFront, countAndTick);
    const Outcome other = second.wait([this] { tick(); });
    return mine ? other : mine;
}

Outcome TreeCopy::copyShare(Share share, const Native::Advance &advance)
{
    FolderCursor from(m_tree, m_from);
    FolderCursor to(m_tree, m_to, Access::ToCopy);
    const size_t count = m_tree.entries.size();
    // As many as are taken from both ends together, so they never pass each other. Meeting only
    // there, the threads seldom wait for each other to make a file in the same folder.
    for (size_t mine = 0; !m_ended && m_taken++ < count; ++mine) {
        const size_t index = share == Share::FromTheFront ? mine : count - 1 - mine;
        TreeListing::Entry &entry = m_tree.entries[index];
        if (entry.sameAs != TreeListing::none)
            continue;
        const int error = copyEntry(entry, from, to, advance);
        // The first failure is the one to tell; it ends the other thread's work too.
        if (error != 0 && !m_ended.exchange(true))
            return failure(entry.folder, entry.name, error);
        advance(0);
    }
    return {};
}

int TreeCopy::copyEntry(TreeListing::Entry &entry, FolderCursor &from, FolderCursor &to,
                        const Native::Advance &advance)
{
    if (entry.kind == TreeListing::Kind::Other)
        return 0;
    const int source = from.open(entry.folder);
    const int target = source < 0 ? -1 : to.open(entry.folder);
    if (target < 0)
        return errno;
    const Place original = {source, from.nameHere(entry.folder, entry.name)};
    const Place copy = {target, to.nameHere(entry.folder, entry.name)};
    if (entry.kind == TreeListing::Kind::Link)
        return copyLink(original, copy);

    // Not to hang on a fifo that took the file's place.
    const FileDescriptor file(::openat(original.folder, original.name.constData(),
                                       O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0)
        return errno;
    entry.stamp = Native::stampOf(status);
    entry.hasMoreNames = entry.hasMoreNames || status.st_nlink > 1;
    return S_ISREG(status.st_mode) ? Native::copyFile(file.get(), status, copy, advance) : ESTALE;
}

/// What had several names in the tree has them in the copy.
Outcome TreeCopy::copyOtherNames()
{
    FolderCursor from(m_tree, m_from);
    FolderCursor to(m_tree, m_to, Access::ToCopy);
    FolderCursor toFirst(m_tree, m_to, Access::ToCopy);
    for (TreeListing::Entry &entry : m_tree.entries) {
        if (entry.sameAs == TreeListing::none || entry.kind == TreeListing::Kind::Other)
            continue;
        tick();
        const TreeListing::Entry &first = m_tree.entries[entry.sameAs];
        const int target = to.open(entry.folder);
        const int original = target < 0 ? -1 : toFirst.open(first.folder);
        if (original < 0)
            return failure(entry.folder, entry.name, errno);
        entry.stamp = first.stamp;
        if (::linkat(original, first.name.constData(), target, entry.name.constData(), 0) == 0)
            continue;
        // A disk that knows no such names gets a file for each; a failing one fails again.
        const Native::Advance uncounted = [](qint64) { return true; };
        if (const int error = copyEntry(entry, from, to, uncounted))
            return failure(entry.folder, entry.name, error);
    }
    return {};
}

Outcome TreeCopy::finishFolders()
{
    // From the inside out and each from its parent: once it has its mode, a folder may be closed
    // to its owner too.
    FolderCursor from(m_tree, m_from);
    FolderCursor to(m_tree, m_to, Access::ToCopy);
    for (size_t index = m_tree.folders.size() - 1; index > 0; --index) {
        tick();
        const size_t parent = m_tree.folders[index].parent;
        const QByteArray &name = m_tree.folders[index].name;
        const int source = from.open(parent);
        const int target = source < 0 ? -1 : to.open(parent);
        if (target < 0)
            return failure(parent, name, errno);
        const FileDescriptor original = openFolder(source, from.nameHere(parent, name));
        const FileDescriptor copy = openFolder(target, to.nameHere(parent, name));
        struct stat status = {};
        if (!original || !copy || ::fstat(original.get(), &status) != 0)
            return failure(parent, name, errno);
        if (const int error = Native::copyFolderAttributes(original.get(), status, copy.get()))
            return failure(parent, name, error);
    }
    return {};
}

} // namespace FileTree
