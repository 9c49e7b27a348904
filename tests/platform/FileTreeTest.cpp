#include "platform/FileTree.h"

#include "TreeFixture.h"
#include "platform/Path.h"

#include <QFile>

using namespace Qt::StringLiterals;

/// What is refused, and what moves and new folders come to.
class FileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusal_leavesEverythingAsItWas_data();
    void refusal_leavesEverythingAsItWas();
    void createFolder_makesOneFolder();
    void exists_followsLinks();
    void move_isARename();
    void move_acrossFileSystems_keepsTheTree();
    void move_acrossFileSystems_failing_leavesTheSource_data();
    void move_acrossFileSystems_failing_leavesTheSource();
    void move_ofAFolderThatNobodyMayWrite_acrossFileSystems();
};

using FileTree::Item;

namespace {

enum class Operation { Move, Copy, Trash, CreateFolder };

Outcome run(Operation operation, const Item &source, const Item &destination)
{
    switch (operation) {
    case Operation::Move:
        return FileTree::move(source, destination);
    case Operation::Copy:
        return FileTree::copy(source, destination);
    case Operation::Trash:
        return FileTree::trash(source);
    case Operation::CreateFolder:
        return FileTree::createFolder(source.folder + u'/' + source.name);
    }
    return {};
}

} // namespace

void FileTreeTest::refusal_leavesEverythingAsItWas_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<Item>("source");
    QTest::addColumn<Item>("destination");

    const Item folder = {u"~"_s, u"Folder"_s};
    const Item file = {u"~"_s, u"file"_s};
    const Item fresh = {u"~/Other"_s, u"new"_s};
    const std::pair<const char *, Item> noItems[] = {
        {"empty", {u"~/Other"_s, u""_s}},
        {"dot", {u"~/Other"_s, u"."_s}},
        {"dots", {u"~/Other"_s, u".."_s}},
        {"with a slash", {u"~"_s, u"Other/inside"_s}},
        {"with a slash at its end", {u"~"_s, u"Folder/"_s}},
        {"cut by a null", {u"~"_s, u"file"_s + QChar(QChar::Null)}},
        {"no text", {u"~/Other"_s, QString(QChar(0xD800))}},
        {"in no folder", {u""_s, u"Folder"_s}},
        {"in a relative folder", {u"Other"_s, u"inside"_s}},
        {"in somebody's home", {u"~nobody"_s, u"Folder"_s}},
        {"in a missing folder", {u"~/missing"_s, u"new"_s}},
        {"in a file", {u"~/file"_s, u"new"_s}},
    };
    for (const auto &[name, item] : noItems) {
        QTest::addRow("move from a name %s", name) << Operation::Move << item << fresh;
        QTest::addRow("move to a name %s", name) << Operation::Move << folder << item;
        QTest::addRow("copy from a name %s", name) << Operation::Copy << item << fresh;
        QTest::addRow("copy to a name %s", name) << Operation::Copy << folder << item;
        QTest::addRow("trash a name %s", name) << Operation::Trash << item << Item();
    }
    QTest::newRow("trash what is missing") << Operation::Trash << fresh << Item();

    const std::pair<const char *, Item> taken[] = {
        {"a file", {u"~/Other"_s, u"inside"_s}},
        {"an empty folder", {u"~/Other"_s, u"empty"_s}},
        {"a dangling link", {u"~/Other"_s, u"dangling"_s}},
        {"the folder itself", folder},
        {"the file itself", file},
        {"inside the folder", {u"~/Folder/Below"_s, u"new"_s}},
        {"inside the folder by a link", {u"~/to below"_s, u"new"_s}},
    };
    for (const auto &[name, item] : taken) {
        QTest::addRow("move to %s", name) << Operation::Move << folder << item;
        QTest::addRow("copy to %s", name) << Operation::Copy << folder << item;
    }
    QTest::newRow("move a file to a file") << Operation::Move << file << taken[0].second;
    QTest::newRow("copy a file to a file") << Operation::Copy << file << taken[0].second;
    QTest::newRow("move what is missing") << Operation::Move << fresh << Item{u"~"_s, u"new"_s};
    QTest::newRow("copy what is missing") << Operation::Copy << fresh << Item{u"~"_s, u"new"_s};
    QTest::newRow("copy a fifo") << Operation::Copy << Item{u"~"_s, u"fifo"_s} << fresh;

    const auto rowOfNew = [](const char *name, const QString &parent, const QString &last) {
        QTest::newRow(name) << Operation::CreateFolder << Item{parent, last} << Item();
    };
    rowOfNew("create the root", u""_s, u""_s);
    rowOfNew("create a relative folder", u"Other"_s, u"new"_s);
    rowOfNew("create dot", u"~/Other"_s, u"."_s);
    rowOfNew("create dots", u"~/Other"_s, u".."_s);
    rowOfNew("create without its parent", u"~/missing"_s, u"new"_s);
    rowOfNew("create what is there", u"~"_s, u"Folder"_s);
    rowOfNew("create over a dangling link", u"~/Other"_s, u"dangling"_s);
}

void FileTreeTest::refusal_leavesEverythingAsItWas()
{
    QFETCH(Operation, operation);
    QFETCH(Item, source);
    QFETCH(Item, destination);
    const TreeHome home;
    home.makeFile(u"file"_s);
    home.makeFile(u"Folder/Below/inside"_s);
    home.makeFile(u"Other/inside"_s);
    home.makeFolder(u"Other/empty"_s);
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"Other/dangling"_s)));
    QVERIFY(QFile::link(home.path(u"Folder/Below"_s), home.path(u"to below"_s)));
    QCOMPARE(::mkfifo(QFile::encodeName(home.path(u"fifo"_s)).constData(), 0600), 0);
    const auto before = describeTree(home.path(), true);

    const Outcome outcome = run(operation, source, destination);

    QVERIFY(!outcome);
    QVERIFY(!outcome.reason().isEmpty());
    QCOMPARE(describeTree(home.path(), true), before);
}

void FileTreeTest::createFolder_makesOneFolder()
{
    const TreeHome home;
    for (const QString &path : {u"~/new"_s, u"~/slashes//"_s}) {
        const Outcome outcome = FileTree::createFolder(path);
        QVERIFY2(outcome, qPrintable(outcome.reason()));
        QVERIFY(FileTree::exists(path));
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(home.path(u"new"_s)).constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, 0777 & ~mask);
}

void FileTreeTest::exists_followsLinks()
{
    const TreeHome home;
    home.makeFile(u"file"_s);
    QVERIFY(QFile::link(home.path(u"file"_s), home.path(u"link"_s)));
    QVERIFY(QFile::link(u"nowhere"_s, home.path(u"dangling"_s)));
    QVERIFY(FileTree::exists(u"~"_s));
    QVERIFY(FileTree::exists(u"~/file"_s));
    QVERIFY(FileTree::exists(home.path(u"link"_s)));
    QVERIFY(!FileTree::exists(u"~/dangling"_s));
    QVERIFY(!FileTree::exists(u"~/missing"_s));
    QVERIFY(!FileTree::exists(u""_s));
    QVERIFY(!FileTree::exists(u"."_s));
}

void FileTreeTest::move_isARename()
{
    const TreeHome home;
    home.makeFolder(u"To"_s);
    makeOddTree(home.path());
    const auto tree = describeTree(home.path(u"Tree"_s), true);

    const Outcome outcome = FileTree::move({u"~"_s, u"Tree"_s}, {u"~/To/"_s, u"Renamed"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(home.path(u"To/Renamed"_s), true), tree);
    QCOMPARE(home.names({}), {u"To"_s});
}

void FileTreeTest::move_acrossFileSystems_keepsTheTree()
{
    const TreeHome home;
    const OtherFileSystem other(home);
    if (!other.isThere())
        QSKIP("no second file system");
    makeOddTree(home.path());
    const auto tree = describeTree(home.path(u"Tree"_s));

    const Outcome outcome = FileTree::move({u"~"_s, u"Tree"_s}, {other.path(), u"Moved"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QCOMPARE(describeTree(other.path(u"Moved"_s)), tree);
    QCOMPARE(QDir(other.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             {u"Moved"_s});
    QCOMPARE(home.names({}), QStringList());
}

void FileTreeTest::move_acrossFileSystems_failing_leavesTheSource_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a name that is taken") << u"taken"_s;
    QTest::newRow("an unreadable file") << u"Tree"_s;
    QTest::newRow("a fifo") << u"fifo"_s;
}

void FileTreeTest::move_acrossFileSystems_failing_leavesTheSource()
{
    QFETCH(QString, name);
    const TreeHome home;
    const OtherFileSystem other(home);
    if (!other.isThere())
        QSKIP("no second file system");
    home.makeFile(u"taken"_s, "mine");
    home.makeFile(u"Tree/readable"_s);
    QVERIFY(QFile::setPermissions(home.makeFile(u"Tree/unreadable"_s), {}));
    QCOMPARE(::mkfifo(QFile::encodeName(home.path(u"fifo"_s)).constData(), 0600), 0);
    QVERIFY(QFile(home.path(u"taken"_s)).copy(other.path(u"taken"_s)));
    QCOMPARE(::chmod(QFile::encodeName(other.path()).constData(), 0777), 0);
    const auto before = describeTree(home.path(), true);

    {
        const AsPlainUser user(home);
        QVERIFY(!FileTree::move({u"~"_s, name}, {other.path(), name}));
    }

    QCOMPARE(describeTree(home.path(), true), before);
    QCOMPARE(QDir(other.path())
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
             {u"taken"_s});
}

void FileTreeTest::move_ofAFolderThatNobodyMayWrite_acrossFileSystems()
{
    const TreeHome home;
    const OtherFileSystem other(home);
    if (!other.isThere())
        QSKIP("no second file system");
    home.makeFile(u"Tree/inner/file"_s);
    QVERIFY(QFile::setPermissions(home.path(u"Tree/inner"_s), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(QFile::setPermissions(home.path(u"Tree"_s), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(::chmod(QFile::encodeName(other.path()).constData(), 0777), 0);
    const AsPlainUser user(home);

    const Outcome outcome = FileTree::move({u"~"_s, u"Tree"_s}, {other.path(), u"Tree"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QVERIFY(QFile::exists(other.path(u"Tree/inner/file"_s)));
    QVERIFY(!FileTree::exists(u"~/Tree"_s));
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, FileTreeTest>(argc, argv);
}

#include "FileTreeTest.moc"
