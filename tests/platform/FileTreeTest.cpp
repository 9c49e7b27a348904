#include "platform/FileTree.h"

#include "tests/support/TestHome.h"

#include <QFile>
#include <QStorageInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

using namespace Qt::StringLiterals;
using FileTree::Item;

namespace fs = std::filesystem;

/// What is refused, and what goes of a copy that did not come to its end. The table of faults tells
/// what arrives, and what is left by failures.
class FileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusal_leavesEverythingAsItWas_data();
    void refusal_leavesEverythingAsItWas();
    void holes_stayHoles_data();
    void holes_stayHoles();
    void oldPartials_goWithTheNextOperation_data();
    void oldPartials_goWithTheNextOperation();
};

void FileTreeTest::refusal_leavesEverythingAsItWas_data()
{
    QTest::addColumn<Item>("source");
    QTest::addColumn<Item>("destination");

    const Item folder = {u"~"_s, u"Folder"_s};
    const Item file = {u"~"_s, u"file"_s};
    const Item fresh = {u"~/Other"_s, u"new"_s};
    const Item taken = {u"~/Other"_s, u"file"_s};
    QTest::newRow("from no name") << Item{u"~/Other"_s, u""_s} << fresh;
    QTest::newRow("from a path") << Item{u"~"_s, u"Other/file"_s} << fresh;
    QTest::newRow("from a null") << Item{u"~"_s, u"file"_s + QChar(QChar::Null)} << fresh;
    QTest::newRow("from a relative folder") << Item{u"Other"_s, u"file"_s} << fresh;
    QTest::newRow("to no name") << folder << Item{u"~/Other"_s, u".."_s};
    QTest::newRow("a file to a file") << file << taken;
    QTest::newRow("a folder to a file") << folder << taken;
    QTest::newRow("a folder to an empty folder") << folder << Item{u"~/Other"_s, u"empty"_s};
    QTest::newRow("a folder to a dangling link") << folder << Item{u"~/Other"_s, u"dangling"_s};
    QTest::newRow("a folder into itself, by a link") << folder << Item{u"~/below"_s, u"new"_s};
}

void FileTreeTest::refusal_leavesEverythingAsItWas()
{
    QFETCH(Item, source);
    QFETCH(Item, destination);
    const TestHome home;
    home.makeFile(u"file"_s);
    home.makeFile(u"Folder/Below/inside"_s);
    home.makeFile(u"Other/file"_s, "other");
    home.makeFolder(u"Other/empty"_s);
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"Other/dangling"_s)));
    QVERIFY(QFile::link(home.path(u"Folder/Below"_s), home.path(u"below"_s)));
    QVERIFY(QDir::setCurrent(home.path()));
    const fs::path below = home.path(u"Folder/Below"_s).toStdString();
    fs::last_write_time(below, {});
    const auto before = home.snapshot();

    QVERIFY(!FileTree::move(source, destination));
    QVERIFY(!FileTree::copy(source, destination));

    QCOMPARE(home.snapshot(), before);
    QVERIFY(fs::last_write_time(below) == fs::file_time_type()); // nor tried
}

void FileTreeTest::holes_stayHoles_data()
{
    QTest::addColumn<bool>("isElsewhere");
    QTest::newRow("copy") << false;
    QTest::newRow("move to another file system") << true;
}

void FileTreeTest::holes_stayHoles()
{
    QFETCH(bool, isElsewhere);
    const TestHome home;
    const QTemporaryDir elsewhere(u"/dev/shm/brimvale-test-XXXXXX"_s);
    const QString to = isElsewhere ? elsewhere.path() : home.makeFolder(u"To"_s);
    if (isElsewhere && QStorageInfo(to) == QStorageInfo(home.path()))
        QSKIP("no second file system");
    constexpr qint64 size = qint64(4) << 30;
    const QByteArray middle = QByteArray(1 << 20, 'm') + "middle"; // in more than one piece
    QFile thin(home.makeFile(u"thin"_s, "start"));
    QVERIFY(thin.open(QFile::ReadWrite) && thin.resize(size) && thin.seek(size / 2) &&
            thin.write(middle) == middle.size() && thin.flush());
    FileTree::CopyProgress last;

    const auto operation = isElsewhere ? &FileTree::move : &FileTree::copy;
    const Outcome outcome = operation({u"~"_s, u"thin"_s}, {to, u"thin"_s},
                                      [&](const FileTree::CopyProgress &now) { last = now; });

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(last.bytesDone, size);
    QCOMPARE(last.bytesTotal, size);
    struct stat status = {};
    QCOMPARE(::stat(qPrintable(to + u"/thin"_s), &status), 0);
    QCOMPARE(status.st_size, size);
    QVERIFY2(status.st_blocks < 4096, QByteArray::number(qint64(status.st_blocks)).constData());
    QFile copy(to + u"/thin"_s);
    QVERIFY(copy.open(QFile::ReadOnly));
    QCOMPARE(copy.read(6), QByteArray("start\0", 6));
    QVERIFY(copy.seek(size / 2));
    QVERIFY(copy.read(middle.size() + 1) == middle + '\0');
}

void FileTreeTest::oldPartials_goWithTheNextOperation_data()
{
    QTest::addColumn<bool>("copies");
    QTest::addColumn<bool>("anotherCopies");
    QTest::newRow("a copy") << true << false;
    QTest::newRow("a move") << false << false;
    QTest::newRow("a copy, while another program copies") << true << true;
}

void FileTreeTest::oldPartials_goWithTheNextOperation()
{
    QFETCH(bool, copies);
    QFETCH(bool, anotherCopies);
    const TestHome home;
    home.makeFile(u"file"_s);
    home.makeFile(u"outside/file"_s);
    const fs::path to = home.makeFolder(u"To"_s).toStdString();
    const fs::path outside = home.path(u"outside"_s).toStdString();
    const QStringList old = {u".Brimvale-1.partial"_s, u".Brimvale-2.partial"_s};
    home.makeFile(u"To/.Brimvale-1.partial/read only/file"_s);
    fs::create_directory_symlink(outside, to / ".Brimvale-1.partial" / "out");
    fs::permissions(to / ".Brimvale-1.partial" / "read only", fs::perms(0500));
    home.makeFile(u"To/"_s + old[1]);
    QStringList staying = {u".Brimvale-3.moved.partial"_s, u".Brimvale-4"_s, u"6.partial"_s,
                           u".Brimvale-young.partial"_s, u".Brimvale-of-others.partial"_s};
    for (const QString &name : staying)
        home.makeFile(u"To/"_s + name);
    fs::create_directory_symlink(outside, to / ".Brimvale-link.partial");
    const timespec then[] = {{1600000000, 0}, {1600000000, 0}};
    for (const fs::directory_entry &entry : fs::directory_iterator(to))
        ::utimensat(AT_FDCWD, entry.path().c_str(), then, AT_SYMLINK_NOFOLLOW);
    fs::last_write_time(to / ".Brimvale-young.partial",
                        fs::file_time_type::clock::now() - std::chrono::hours(23));
    // Only root can make what others own.
    if (::chown((to / ".Brimvale-of-others.partial").c_str(), 1, 1) != 0)
        QVERIFY(staying.removeOne(u".Brimvale-of-others.partial"_s));
    staying << u".Brimvale-link.partial"_s << u"new"_s << (anotherCopies ? old : QStringList());
    const int other = ::open(to.c_str(), O_RDONLY);
    QVERIFY(!anotherCopies || ::flock(other, LOCK_SH) == 0);

    const auto operation = copies ? &FileTree::copy : &FileTree::move;
    QVERIFY(operation({u"~"_s, u"file"_s}, {u"~/To"_s, u"new"_s}, {}));

    ::close(other);
    for (const QString &name : staying + old)
        QCOMPARE(home.names(u"To"_s).contains(name), staying.contains(name));
    QCOMPARE(home.names(u"outside"_s), {u"file"_s});
}

QTEST_GUILESS_MAIN(FileTreeTest)

#include "FileTreeTest.moc"
