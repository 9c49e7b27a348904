#include "TreeFixture.h"
#include "platform/FileTree.h"

#include <QFile>

#include <sys/syscall.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

int errorOfRenames = 0;

} // namespace

/// Stands in for the C library's, to be a file system that does not refuse to replace.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                         unsigned int flags) noexcept
{
    if (errorOfRenames != 0) {
        errno = errorOfRenames;
        return -1;
    }
    return int(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

/// Renames where the file system cannot refuse to replace what is there.
class RenameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void move_data();
    void move();
};

void RenameTest::move_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("destination");
    QTest::addColumn<bool>("moves");
    QTest::newRow("a folder") << u"Tree"_s << u"To/new"_s << true;
    QTest::newRow("a file") << u"file"_s << u"To/new"_s << true;
    QTest::newRow("a dangling link") << u"dangling"_s << u"To/new"_s << true;
    QTest::newRow("a folder to a file") << u"Tree"_s << u"To/file"_s << false;
    QTest::newRow("a folder to an empty folder") << u"Tree"_s << u"To/empty"_s << false;
    QTest::newRow("a file to a file") << u"file"_s << u"To/file"_s << false;
    QTest::newRow("a file to a dangling link") << u"file"_s << u"To/dangling"_s << false;
    QTest::newRow("a folder into itself") << u"Tree"_s << u"Tree/new"_s << false;
    QTest::newRow("what is missing") << u"missing"_s << u"To/new"_s << false;
}

void RenameTest::move()
{
    QFETCH(QString, name);
    QFETCH(QString, destination);
    QFETCH(bool, moves);
    const TreeHome home;
    makeOddTree(home.path());
    home.makeFile(u"file"_s);
    home.makeFile(u"To/file"_s, "other");
    home.makeFolder(u"To/empty"_s);
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"dangling"_s)));
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"To/dangling"_s)));
    const auto before = describeTree(home.path(), true);
    const auto item = home.exists(name) ? describeTree(home.path(name), true) : before;

    errorOfRenames = EINVAL;
    const Outcome outcome = FileTree::move(
        {u"~"_s, name}, {home.path(destination.section(u'/', 0, 0)), destination.section(u'/', 1)});
    errorOfRenames = 0;

    QCOMPARE(bool(outcome), moves);
    if (moves)
        QCOMPARE(describeTree(home.path(destination), true), item);
    else
        QCOMPARE(describeTree(home.path(), true), before);
    QCOMPARE(home.exists(name), !moves && name != u"missing");
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, RenameTest>(argc, argv);
}

#include "RenameTest_linux.moc"
