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

/// What is refused, what arrives, and what goes of a copy that did not come to its end. The table
/// of faults tells what is left by failures.
class FileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusal_leavesEverythingAsItWas_data();
    void refusal_leavesEverythingAsItWas();
    void tree_arrivesWhole_data();
    void tree_arrivesWhole();
    void holes_stayHoles_data();
    void holes_stayHoles();
    void oldPartials_goWithTheNextOperation_data();
    void oldPartials_goWithTheNextOperation();
};

namespace {

/// A home and a folder on another file system, where there is one.
class TreeHome : public TestHome
{
public:
    TreeHome() = default;
    ~TreeHome();
    Q_DISABLE_COPY_MOVE(TreeHome)

    /// Where something goes: into a folder of the home or elsewhere, empty when that is nowhere.
    [[nodiscard]] QString destination(bool isElsewhere) const;

    /// As "Tree": links, odd names, modes and times, a file of more than a megabyte, and so many
    /// files that two threads copy them.
    void makeOddTree() const;

private:
    QTemporaryDir m_elsewhere{u"/dev/shm/brimvale-test-XXXXXX"_s};
};

QString TreeHome::destination(bool isElsewhere) const
{
    if (!isElsewhere)
        return makeFolder(u"To"_s);
    const bool isThere = QStorageInfo(m_elsewhere.path()) != QStorageInfo(path());
    return isThere && m_elsewhere.isValid() ? m_elsewhere.path() : QString();
}

void TreeHome::makeOddTree() const
{
    const fs::path tree = makeFolder(u"Tree"_s).toStdString();
    makeFile(u"Tree/large"_s, QByteArray(1 << 20, 'x') + "end");
    makeFile(u"Tree/two\nlines"_s, {});
    makeFile(u"Tree/"_s + QString(255, u'n'));
    makeFile(u"Tree/read only/script"_s);
    for (int file = 0; file < 100; ++file)
        makeFile(u"Tree/many/%1"_s.arg(file), QByteArray::number(file));
    fs::create_symlink("/nowhere at all", tree / "dangling");
    fs::create_hard_link(tree / "large", tree / "many" / "large too");
    fs::create_directory_symlink("..", tree / "many" / "to above");
    for (const char *name : {"read only/script", "read only", "many"})
        fs::last_write_time(tree / name, fs::last_write_time(tree) - std::chrono::hours(1));
    fs::permissions(tree / "read only" / "script", fs::perms(04555));
    fs::permissions(tree / "read only", fs::perms(0555));
    fs::permissions(tree / "many", fs::perms(02770));
}

/// So that the folders can be removed.
TreeHome::~TreeHome()
{
    for (const QString &folder : {path(), m_elsewhere.path()}) {
        std::error_code missing;
        for (const auto &entry : fs::recursive_directory_iterator(folder.toStdString(), missing)) {
            if (entry.is_directory())
                fs::permissions(entry, fs::perms::owner_all);
        }
    }
}

/// Kind, mode, time, names, link target and content.
QByteArray describe(const fs::path &path)
{
    const fs::file_status status = fs::symlink_status(path);
    if (fs::is_symlink(status))
        return QByteArray::fromStdString("link to " + fs::read_symlink(path).string());
    QFile file(path);
    return QByteArray::number(int(status.type())) + ' ' +
           QByteArray::number(uint(status.permissions()), 8) + ' ' +
           QByteArray::number(qint64(fs::last_write_time(path).time_since_epoch().count())) + ' ' +
           (fs::is_directory(status) ? "" : QByteArray::number(uint(fs::hard_link_count(path)))) +
           ' ' + (file.open(QFile::ReadOnly) ? file.readAll() : QByteArray());
}

/// The folder and everything in it, by relative paths.
QMap<QByteArray, QByteArray> describeTree(const QString &path)
{
    const fs::path root = path.toStdString();
    QMap<QByteArray, QByteArray> tree = {{".", describe(root)}};
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root))
        tree[QByteArray::fromStdString(entry.path().lexically_relative(root).string())] =
            describe(entry.path());
    return tree;
}

} // namespace

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
    const TreeHome home;
    home.makeFile(u"file"_s);
    home.makeFile(u"Folder/Below/inside"_s);
    home.makeFile(u"Other/file"_s, "other");
    home.makeFolder(u"Other/empty"_s);
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"Other/dangling"_s)));
    QVERIFY(QFile::link(home.path(u"Folder/Below"_s), home.path(u"below"_s)));
    QVERIFY(QDir::setCurrent(home.path()));
    const auto before = describeTree(home.path());

    QVERIFY(!FileTree::move(source, destination));
    QVERIFY(!FileTree::copy(source, destination));

    QCOMPARE(describeTree(home.path()), before);
}

void FileTreeTest::tree_arrivesWhole_data()
{
    QTest::addColumn<bool>("moves");
    QTest::addColumn<bool>("isElsewhere");
    QTest::newRow("copy") << false << false;
    QTest::newRow("move") << true << false;
    QTest::newRow("move to another file system") << true << true;
}

void FileTreeTest::tree_arrivesWhole()
{
    QFETCH(bool, moves);
    QFETCH(bool, isElsewhere);
    const TreeHome home;
    home.makeOddTree();
    const QString to = home.destination(isElsewhere);
    if (to.isEmpty())
        QSKIP("no second file system");
    const auto tree = describeTree(home.path(u"Tree"_s));

    const auto operation = moves ? &FileTree::move : &FileTree::copy;
    const Outcome outcome = operation({u"~"_s, u"Tree"_s}, {to, u"Arrived"_s}, {});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(to + u"/Arrived"_s), tree);
    QCOMPARE(describeTree(to).size(), tree.size() + 1);
    QCOMPARE(home.exists(u"Tree"_s), !moves);
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
    const TreeHome home;
    const QString to = home.destination(isElsewhere);
    if (to.isEmpty())
        QSKIP("no second file system");
    constexpr qint64 size = qint64(4) << 30;
    QFile thin(home.makeFile(u"thin"_s, "start"));
    QVERIFY(thin.open(QFile::ReadWrite) && thin.resize(size) && thin.seek(size / 2) &&
            thin.write("middle") == 6 && thin.flush());
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
    QVERIFY2(status.st_blocks < 128, QByteArray::number(qint64(status.st_blocks)).constData());
    QFile copy(to + u"/thin"_s);
    QVERIFY(copy.open(QFile::ReadOnly));
    QCOMPARE(copy.read(6), QByteArray("start\0", 6));
    QVERIFY(copy.seek(size / 2));
    QCOMPARE(copy.read(7), QByteArray("middle\0", 7));
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
    const TreeHome home;
    home.makeFile(u"file"_s);
    const fs::path to = home.makeFolder(u"To"_s).toStdString();
    home.makeFile(u"outside/file"_s);
    home.makeFile(u"To/.Brimvale-1.partial/read only/file"_s);
    fs::create_directory_symlink(home.path(u"outside"_s).toStdString(),
                                 to / ".Brimvale-1.partial" / "out");
    fs::permissions(to / ".Brimvale-1.partial" / "read only", fs::perms(0500));
    home.makeFile(u"To/.Brimvale-2.partial"_s);
    QStringList staying = {u".Brimvale-3.moved.partial"_s, u".Brimvale-4"_s, u"6.partial"_s,
                           u".Brimvale-young.partial"_s, u".Brimvale-of-others.partial"_s};
    for (const QString &name : staying)
        home.makeFile(u"To/"_s + name);
    fs::create_directory_symlink(home.path(u"outside"_s).toStdString(),
                                 to / ".Brimvale-link.partial");
    const auto now = fs::file_time_type::clock::now();
    for (const fs::directory_entry &entry : fs::directory_iterator(to)) {
        const bool isYoung = entry.path().filename() == ".Brimvale-young.partial";
        if (!entry.is_symlink())
            fs::last_write_time(entry, now - std::chrono::hours(isYoung ? 23 : 25));
    }
    // Only root can make what others own.
    if (::chown((to / ".Brimvale-of-others.partial").c_str(), 1, 1) != 0)
        staying.removeLast();
    staying << u".Brimvale-link.partial"_s << u"new"_s;
    if (anotherCopies)
        staying << u".Brimvale-1.partial"_s << u".Brimvale-2.partial"_s;
    const int other = ::open(to.c_str(), O_RDONLY);
    QVERIFY(!anotherCopies || ::flock(other, LOCK_SH) == 0);

    const auto operation = copies ? &FileTree::copy : &FileTree::move;
    QVERIFY(operation({u"~"_s, u"file"_s}, {u"~/To"_s, u"new"_s}, {}));

    ::close(other);
    for (const QString &name : staying)
        QVERIFY2(home.names(u"To"_s).contains(name), qPrintable(name));
    QCOMPARE(home.exists(u"To/.Brimvale-1.partial"_s), anotherCopies);
    QCOMPARE(home.exists(u"To/.Brimvale-2.partial"_s), anotherCopies);
    QCOMPARE(home.names(u"outside"_s), {u"file"_s});
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, FileTreeTest>(argc, argv);
}

#include "FileTreeTest.moc"
