#include "DiskRow.h"

#include "platform/Path.h"
#include "platform/WholeFile.h"
#include "tests/support/DiskSteps.h"
#include "tests/support/HomeChanges.h"

#include <QDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

qsizetype openFiles()
{
    return QDir(u"/dev/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
}

} // namespace

bool runDiskAction(const QStringList &action, FileTree::CopyProgress *last)
{
    const FileTree::Item from{action.value(1), action.value(2)};
    const FileTree::Item to{action.value(3), action.value(4)};
    const auto progress = [last](const FileTree::CopyProgress &now) { *last = now; };
    const QString path = Path::joined(Path::expandingTilde(from.folder), from.name);
    if (action[0] == u"move")
        return bool(FileTree::move(from, to, progress));
    if (action[0] == u"copy")
        return bool(FileTree::copy(from, to, progress));
    if (action[0] == u"trash")
        return bool(FileTree::trash(from));
    if (action[0] == u"create")
        return bool(FileTree::createFolder(Path::joined(from.folder, from.name)));
    if (action[0] == u"flush")
        return bool(from.name.isEmpty() ? FileTree::flush(from.folder) : FileTree::flush(from));
    const auto file = readWholeFile(path);
    return file && writeWholeFile(path, file->version,
                                  [](QIODevice &device) { return device.write("new") == 3; });
}

void tryDiskRow(const QByteArrayList &row)
{
    if (row[0].contains("owner ") && ::geteuid() != 0)
        QSKIP("only root can make what others own");
    const TestHome home;
    QVERIFY(QDir::setCurrent(home.path()));
    const auto leave = qScopeGuard([] { QDir::setCurrent(QDir::rootPath()); });
    prepareDisk(home, row[0]);
    if (QTest::currentTestFailed())
        return;
    const auto before = home.snapshot();
    const qsizetype open = openFiles();
    const QStringList action = words(row[1]);
    FileTree::CopyProgress last;
    const bool isDone = runDiskAction(action, &last);

    QStringList result = isDone ? QStringList() : QStringList(u"refused"_s);
    result += homeChanges(before, home.snapshot());
    if (row[2].contains("bytes "))
        result << u"bytes %1 of %2"_s.arg(last.bytesDone).arg(last.bytesTotal);
    QCOMPARE(result.join(u", "), QString::fromUtf8(row[2]));
    QCOMPARE(openFiles(), open);
}
