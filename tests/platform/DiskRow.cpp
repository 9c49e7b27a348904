#include "DiskRow.h"

#include "platform/Path.h"
#include "platform/WholeFile.h"
#include "tests/support/DiskSteps.h"

#include <QDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using Snapshot = QMap<QString, QByteArray>;

bool isWithin(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(QString(folder + u'/'));
}

Snapshot without(Snapshot all, const QString &path)
{
    all.removeIf([&](auto item) { return isWithin(item.key(), path); });
    return all;
}

/// The path of an item in the home.
QString relative(const QString &folder, const QString &name)
{
    return name.isEmpty() ? QString() : QString(folder + u'/' + name).mid(2);
}

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
    if (action[0] == u"flush")
        return bool(FileTree::flush(from));
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
    prepareDisk(home, row[0]);
    if (QTest::currentTestFailed())
        return;
    const Snapshot before = home.snapshot();
    const qsizetype open = openFiles();
    const QStringList action = words(row[1]);
    FileTree::CopyProgress last;
    const bool isDone = runDiskAction(action, &last);

    const QByteArrayList foretold = row[2].split(',');
    const Snapshot after = home.snapshot();
    Snapshot expected = before;
    const QString from = relative(action[1], action[2]);
    const QString to = relative(action.value(3), action.value(4));
    if (foretold[0] == "done") {
        if (action[0] == u"move" || action[0] == u"trash")
            expected = without(before, from);
        for (auto item = before.begin(); item != before.end() && !to.isEmpty(); ++item) {
            if (isWithin(item.key(), from))
                expected[to + item.key().mid(from.size())] = *item;
        }
    }
    for (const QByteArray &each : foretold.sliced(1)) {
        const QStringList step = words(each.trimmed());
        if (step[0] == u"gone")
            expected = without(expected, step[1]);
        else if (step[0] == u"made")
            expected[step[1]] = after.value(step[1]);
        else if (step[0] == u"new")
            QCOMPARE(home.read(step[1]), "new");
        else
            QCOMPARE(last.bytesDone, step[1].toLongLong());
    }
    QCOMPARE(isDone ? "done" : "refused", foretold[0]);
    QCOMPARE(after.keys(), expected.keys());
    QCOMPARE(after, expected);
    QCOMPARE(last.bytesDone, last.bytesTotal);
    QCOMPARE(openFiles(), open);
}
