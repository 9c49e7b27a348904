#include "platform/FileTree.h"

#include "DiskRow.h"
#include "platform/Path.h"
#include "tests/support/DiskSteps.h"
#include "tests/support/TableRows.h"
#include "tests/support/TestHome.h"

#include <QFile>
#include <QStorageInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// What is done, what is refused, and what is left alone. The table of faults tells what is left by
/// failures.
class FileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data() { addTableRows({u"platform/FileTree.table"_s}); }
    void rows();
    void holes_stayHoles();
    void growingCopy_isNoLeftover();
    void paths_data() { addTableRows({u"platform/Path.table"_s}); }
    void paths();
};

void FileTreeTest::rows()
{
    QFETCH(const QByteArrayList, row);
    tryDiskRow(row);
}

void FileTreeTest::holes_stayHoles()
{
    const TestHome home;
    const QTemporaryDir elsewhere(u"/dev/shm/brimvale-test-XXXXXX"_s);
    constexpr qint64 size = qint64(4) << 30;
    const QByteArray middle = QByteArray(1 << 20, 'm') + "middle"; // in more than one piece
    QFile thin(home.makeFile(u"thin"_s, "start"));
    QVERIFY(thin.open(QFile::ReadWrite) && thin.resize(size) && thin.seek(size / 2) &&
            thin.write(middle) == middle.size() && thin.flush());
    FileTree::CopyProgress last;
    const auto progress = [&](const FileTree::CopyProgress &now) { last = now; };
    // To another file system, where there is one.
    const QString to = elsewhere.isValid() ? elsewhere.path() : home.makeFolder(u"To"_s);
    for (const auto operation : {&FileTree::copy, &FileTree::move}) {
        const Outcome outcome = operation({u"~"_s, u"thin"_s}, {to, u"thin"_s}, progress);
        QVERIFY2(outcome, qPrintable(outcome.reason()));
        QCOMPARE(last.bytesDone, size);
        QCOMPARE(last.bytesTotal, size);
        struct stat status = {};
        QFile copy(to + u"/thin"_s);
        QCOMPARE(::stat(qPrintable(copy.fileName()), &status), 0);
        QCOMPARE(status.st_size, size);
        QVERIFY2(status.st_blocks < 4096, QByteArray::number(qint64(status.st_blocks)).constData());
        QVERIFY(copy.open(QFile::ReadOnly));
        QCOMPARE(copy.read(6), QByteArray("start\0", 6));
        QVERIFY(copy.seek(size / 2));
        QVERIFY(copy.read(middle.size() + 1) == middle + '\0');
        QVERIFY(copy.remove());
        if (QStorageInfo(to) != QStorageInfo(home.path())) // or the move is no more than a rename
            last = {};
    }
}

void FileTreeTest::growingCopy_isNoLeftover()
{
    const TestHome home;
    prepareDisk(home, "file Tree/file, old Tree 25, file other, folder To");
    const auto progress = [&](const auto &) { // in the end it is as old as its source
        std::ignore = FileTree::copy({u"~"_s, u"other"_s}, {u"~/To"_s, u"other"_s});
    };
    QVERIFY(FileTree::copy({u"~"_s, u"Tree"_s}, {u"~/To"_s, u"grown"_s}, progress));
    QCOMPARE(home.names(u"To"_s), QStringList({u"grown"_s, u"other"_s}));
    QCOMPARE(home.names(u"To/grown"_s), {u"file"_s});
}

void FileTreeTest::paths()
{
    QFETCH(const QByteArrayList, row);
    const TestHome home;
    const QString path = QString::fromUtf8(row[1]);
    const QHash<QByteArray, QString> results = {
        {"last", Path::lastComponent(path)},
        {"folder", Path::withoutLastComponent(path)},
        {"extension", Path::extension(path)},
        {"bare", Path::withoutExtension(path)},
        {"joined", Path::joined(path.section(u' ', 0, 0), path.section(u' ', 1))},
        {"pasted", Path::ofPasted(path)},
        {"exists", FileTree::exists(path) ? u"yes"_s : u"no"_s}};
    QCOMPARE(results[row[0]].toUtf8(), row[2]);
}

QTEST_GUILESS_MAIN(FileTreeTest)

#include "FileTreeTest.moc"
