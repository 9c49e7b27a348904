#include "platform/FileTree.h"

#include "tests/support/TestHome.h"

#include <QFile>
#include <QStorageInfo>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

using namespace Qt::StringLiterals;
using FileTree::Item;

namespace fs = std::filesystem;

/// What is refused, what arrives, and what is left of a copy that does not come to its end.
class FileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusal_leavesEverythingAsItWas_data();
    void refusal_leavesEverythingAsItWas();
    void tree_arrivesWhole_data();
    void tree_arrivesWhole();
    void failure_leavesEverythingAsItWas_data();
    void failure_leavesEverythingAsItWas();
    void killedCopy_doesNotDisturbTheNext();
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

/// Kind, mode, time, link target and content.
QByteArray describe(const fs::path &path)
{
    const fs::file_status status = fs::symlink_status(path);
    if (fs::is_symlink(status))
        return QByteArray::fromStdString("link to " + fs::read_symlink(path).string());
    QFile file(path);
    return QByteArray::number(int(status.type())) + ' ' +
           QByteArray::number(uint(status.permissions()), 8) + ' ' +
           QByteArray::number(qint64(fs::last_write_time(path).time_since_epoch().count())) + ' ' +
           (file.open(QFile::ReadOnly) ? file.readAll() : QByteArray());
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

void FileTreeTest::failure_leavesEverythingAsItWas_data()
{
    QTest::addColumn<bool>("isElsewhere");
    QTest::addColumn<QString>("name");
    QTest::newRow("a copy, on a full disk") << false << u"new"_s;
    QTest::newRow("a move, on a full disk") << true << u"new"_s;
    QTest::newRow("a move to a name that is taken") << true << u"taken"_s;
}

void FileTreeTest::failure_leavesEverythingAsItWas()
{
    QFETCH(bool, isElsewhere);
    QFETCH(QString, name);
    const TreeHome home;
    home.makeOddTree();
    const QString to = home.destination(isElsewhere);
    if (to.isEmpty())
        QSKIP("no second file system");
    QVERIFY(QFile::copy(home.makeFile(u"file"_s), to + u"/taken"_s));
    const auto before = describeTree(home.path(u"Tree"_s));
    const QByteArrayList beforeThere = describeTree(to).keys();

    // The large file comes to its end before it is whole.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit full = {1 << 20, usual.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &full), 0);
    const auto operation = isElsewhere ? &FileTree::move : &FileTree::copy;
    const Outcome outcome = operation({u"~"_s, u"Tree"_s}, {to, name}, {});
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &usual), 0);

    QVERIFY(!outcome);
    QCOMPARE(describeTree(home.path(u"Tree"_s)), before);
    QCOMPARE(describeTree(to).keys(), beforeThere);
}

void FileTreeTest::killedCopy_doesNotDisturbTheNext()
{
    const TreeHome home;
    home.makeFile(u"Tree/inner/file"_s);
    const Item source = {u"~"_s, u"Tree"_s};
    const Item destination = {home.destination(false), u"Copy"_s};
    const auto tree = describeTree(home.path(u"Tree"_s));

    const pid_t child = ::fork();
    if (child == 0) {
        std::ignore = FileTree::copy(source, destination,
                                     [](const FileTree::CopyProgress &) { std::raise(SIGKILL); });
        std::_Exit(0);
    }
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    QVERIFY(!home.exists(u"To/Copy"_s));

    QVERIFY(FileTree::copy(source, destination));
    QCOMPARE(describeTree(home.path(u"To/Copy"_s)), tree);
    QCOMPARE(describeTree(home.path(u"Tree"_s)), tree);
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, FileTreeTest>(argc, argv);
}

#include "FileTreeTest.moc"
