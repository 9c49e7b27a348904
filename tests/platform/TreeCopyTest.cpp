#include "TreeFixture.h"
#include "platform/FileTree.h"

#include <QFile>
#include <QThread>

#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>

using namespace Qt::StringLiterals;

/// What a copy keeps, and what is left of one that does not come to its end.
class TreeCopyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copy_keepsEverything();
    void copy_ofALink_isALink();
    void copy_ofADeepTree();
    void copy_ofManyFiles_sharedByTwoThreads();
    void copy_reportsItsProgress();
    void failingCopy_leavesNothing_data();
    void failingCopy_leavesNothing();
    void killedCopy_doesNotDisturbTheNext();
};

namespace {

/// No file may grow beyond this many bytes, as on a disk that is full.
class SmallFilesOnly
{
public:
    explicit SmallFilesOnly(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFilesOnly() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before = {};
};

/// In another process, which gets as far as its first report.
bool isKilledWhileCopying(const FileTree::Item &source, const FileTree::Item &destination)
{
    const pid_t child = ::fork();
    if (child == 0) {
        std::ignore = FileTree::copy(source, destination,
                                     [](const FileTree::CopyProgress &) { std::raise(SIGKILL); });
        std::_Exit(0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFSIGNALED(status);
}

} // namespace

void TreeCopyTest::copy_keepsEverything()
{
    const TreeHome home;
    makeOddTree(home.path());
    home.makeFolder(u"To"_s);
    const auto tree = describeTree(home.path(u"Tree"_s));

    const Outcome outcome = FileTree::copy({u"~"_s, u"Tree"_s}, {u"~/To"_s, u"Copy"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(home.path(u"To/Copy"_s)), tree);
    QCOMPARE(describeTree(home.path(u"Tree"_s)), tree);
    QCOMPARE(home.names(u"To"_s), {u"Copy"_s});
}

void TreeCopyTest::copy_ofALink_isALink()
{
    const TreeHome home;
    home.makeFile(u"Folder/inside"_s);
    QVERIFY(QFile::link(home.path(u"Folder"_s), home.path(u"link"_s)));

    QVERIFY(FileTree::copy({u"~"_s, u"link"_s}, {u"~/Folder"_s, u"copy"_s}));

    QCOMPARE(QFile::symLinkTarget(home.path(u"Folder/copy"_s)), home.path(u"Folder"_s));
}

void TreeCopyTest::copy_ofADeepTree()
{
    constexpr int levels = 1500;
    const TreeHome home;
    home.makeFolder(u"Tree"_s);
    makeDeepTree(home.path(u"Tree"_s), levels);

    const Outcome outcome = FileTree::copy({u"~"_s, u"Tree"_s}, {u"~"_s, u"Copy"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(levelsOf(home.path(u"Copy"_s)), levels);
}

void TreeCopyTest::copy_ofManyFiles_sharedByTwoThreads()
{
    const TreeHome home;
    for (int file = 0; file < 600; ++file)
        home.makeFile(u"Tree/%1/%2"_s.arg(file % 7).arg(file), QByteArray::number(file));

    const Outcome outcome = FileTree::copy({u"~"_s, u"Tree"_s}, {u"~"_s, u"Copy"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(home.path(u"Copy"_s)), describeTree(home.path(u"Tree"_s)));
}

void TreeCopyTest::copy_reportsItsProgress()
{
    const TreeHome home;
    for (int file = 0; file < 100; ++file)
        home.makeFile(u"Tree/%1"_s.arg(file), QByteArray(1 << 20, 'x'));
    QList<FileTree::CopyProgress> reports;

    const Outcome outcome = FileTree::copy({u"~"_s, u"Tree"_s}, {u"~"_s, u"Copy"_s},
                                           [&](const FileTree::CopyProgress &progress) {
                                               QCOMPARE(QThread::currentThread(), thread());
                                               reports.append(progress);
                                           });

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QVERIFY(!reports.isEmpty());
    QCOMPARE(reports.last().bytesDone, 100 << 20);
    QCOMPARE(reports.last().bytesTotal, 100 << 20);
    QVERIFY(
        std::is_sorted(reports.begin(), reports.end(), [](const auto &first, const auto &second) {
            return first.bytesDone < second.bytesDone;
        }));
}

void TreeCopyTest::failingCopy_leavesNothing_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("destination");
    QTest::newRow("an unreadable file") << u"with unreadable file"_s << u"To"_s;
    QTest::newRow("an unreadable folder") << u"with unreadable folder"_s << u"To"_s;
    QTest::newRow("a folder that may not be written") << u"readable"_s << u"read only"_s;
    QTest::newRow("a full disk, in a tree of read-only folders") << u"large"_s << u"To"_s;
    QTest::newRow("a full disk, two threads") << u"many"_s << u"To"_s;
}

void TreeCopyTest::failingCopy_leavesNothing()
{
    QFETCH(QString, source);
    QFETCH(QString, destination);
    const TreeHome home;
    home.makeFolder(u"To"_s);
    home.makeFolder(u"read only"_s);
    home.makeFile(u"readable/file"_s);
    home.makeFile(u"with unreadable file/readable"_s);
    home.makeFile(u"large/inner/before"_s);
    home.makeFile(u"large/inner/large"_s, QByteArray(2 << 20, 'x'));
    home.makeFile(u"many/large"_s, QByteArray(2 << 20, 'x'));
    for (int file = 0; file < 300; ++file)
        home.makeFile(u"many/%1"_s.arg(file));
    QVERIFY(QFile::setPermissions(home.makeFile(u"with unreadable file/file"_s), {}));
    QVERIFY(QFile::setPermissions(home.makeFolder(u"with unreadable folder/inner"_s), {}));
    for (const QString &folder : {u"read only"_s, u"large/inner"_s})
        QVERIFY(QFile::setPermissions(home.path(folder), QFile::ReadOwner | QFile::ExeOwner));
    const auto before = home.snapshot();

    {
        const AsPlainUser user(home);
        const SmallFilesOnly full(1 << 20);
        const Outcome outcome =
            FileTree::copy({u"~"_s, source}, {u"~/"_s + destination, u"Copy"_s});
        QVERIFY(!outcome);
        QVERIFY(!outcome.reason().isEmpty());
    }

    QCOMPARE(home.snapshot(), before);
    QCOMPARE(home.names(destination), QStringList());
}

void TreeCopyTest::killedCopy_doesNotDisturbTheNext()
{
    const TreeHome home;
    home.makeFile(u"Tree/inner/file"_s);
    home.makeFolder(u"To"_s);
    const auto tree = describeTree(home.path(u"Tree"_s));

    QVERIFY(isKilledWhileCopying({u"~"_s, u"Tree"_s}, {u"~/To"_s, u"Copy"_s}));
    QCOMPARE(home.names(u"To"_s).size(), 1);
    const QString leftover = home.names(u"To"_s).first();
    QVERIFY(leftover.startsWith(u".Brimvale-") && leftover.endsWith(u".partial"));
    QCOMPARE(describeTree(home.path(u"Tree"_s)), tree);

    const Outcome outcome = FileTree::copy({u"~"_s, u"Tree"_s}, {u"~/To"_s, u"Copy"_s});
    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(home.path(u"To/Copy"_s)), tree);
    QCOMPARE(home.names(u"To"_s).size(), 2);
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, TreeCopyTest>(argc, argv);
}

#include "TreeCopyTest.moc"
