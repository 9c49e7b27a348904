#include "DiskRow.h"

#include "platform/FileTree.h"
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

/// Of an item in the home.
QString relative(const FileTree::Item &item)
{
    return QString(item.folder + u'/' + item.name).mid(2);
}

qsizetype openFiles()
{
    return QDir(u"/dev/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
}

} // namespace

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
    const FileTree::Item from{action.value(1), action.value(2)};
    const FileTree::Item to{action.value(3), action.value(4)};
    FileTree::CopyProgress last;
    const auto progress = [&](const FileTree::CopyProgress &now) { last = now; };

    const auto write = [&] {
        const QString path = Path::joined(Path::expandingTilde(from.folder), from.name);
        return bool(writeWholeFile(path, readWholeFile(path)->version,
                                   [](QIODevice &file) { return file.write("new") == 3; }));
    };
    const bool isDone = action[0] == u"trash"   ? bool(FileTree::trash(from))
                        : action[0] == u"write" ? write()
                        : action[0] == u"copy"  ? bool(FileTree::copy(from, to, progress))
                                                : bool(FileTree::move(from, to, progress));

    const QByteArrayList foretold = row[2].split(',');
    const Snapshot after = home.snapshot();
    Snapshot expected = before;
    if (foretold[0] == "done") {
        if (action[0] == u"move" || action[0] == u"trash")
            expected = without(before, relative(from));
        for (auto item = before.begin(); item != before.end() && !to.name.isEmpty(); ++item) {
            if (isWithin(item.key(), relative(from)))
                expected[relative(to) + item.key().mid(relative(from).size())] = *item;
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
