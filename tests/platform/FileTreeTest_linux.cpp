#include "platform/FileTree.h"
#include "tests/support/TestHome.h"

#include <QDateTime>
#include <QFile>

#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

int errorOfRenames = 0;

const QString trashFolder = u".local/share/Trash/"_s;

} // namespace

/// Stands in for the C library's, to be a file system that does not refuse to replace.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                         unsigned int flags) noexcept
{
    if (errorOfRenames == 0)
        return int(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
    errno = errorOfRenames;
    return -1;
}

/// File systems with lesser renames, and the trash that the file manager restores from.
class LinuxFileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void move_whereRenamesReplace_overwritesNothing();
    void copy_keepsTheUsersAttributes();
    void trash_isRestorable();
    void trash_ofNameAlreadyInIt_keepsBoth();
    void unusableTrash_leavesTheItem();
};

void LinuxFileTreeTest::move_whereRenamesReplace_overwritesNothing()
{
    const TestHome home;
    home.makeFile(u"file"_s);
    home.makeFile(u"Folder/file"_s);
    home.makeFile(u"To/file"_s, "other");
    home.makeFolder(u"To/empty"_s);
    const auto before = home.snapshot();
    errorOfRenames = EINVAL;
    const auto restore = qScopeGuard([] { errorOfRenames = 0; });

    QVERIFY(!FileTree::move({u"~"_s, u"file"_s}, {u"~/To"_s, u"file"_s}));
    QVERIFY(!FileTree::move({u"~"_s, u"Folder"_s}, {u"~/To"_s, u"empty"_s}));
    QCOMPARE(home.snapshot(), before);
    QVERIFY(FileTree::move({u"~"_s, u"file"_s}, {u"~/To"_s, u"new"_s}));
    QVERIFY(FileTree::move({u"~"_s, u"Folder"_s}, {u"~/To"_s, u"Folder"_s}));
    QCOMPARE(home.names({}), {u"To"_s});
    QCOMPARE(home.names(u"To/Folder"_s), {u"file"_s});
}

void LinuxFileTreeTest::copy_keepsTheUsersAttributes()
{
    const TestHome home;
    const QByteArray file = home.makeFile(u"Glow/file"_s).toUtf8();
    if (::setxattr(file.constData(), "user.tag", "red", 3, 0) != 0)
        QSKIP("the file system of the test keeps no such attributes");
    QVERIFY(FileTree::copy({u"~"_s, u"Glow"_s}, {u"~"_s, u"Copy"_s}));
    QFile other(home.makeFile(u"other"_s));
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(FileTree::copyExtendedAttributes(QString::fromUtf8(file), other.handle()));
    for (const QString &path : {home.path(u"Copy/file"_s), other.fileName()}) {
        QByteArray tag(3, '-');
        ::getxattr(path.toUtf8().constData(), "user.tag", tag.data(), 3);
        QCOMPARE(tag, "red");
    }
}

void LinuxFileTreeTest::trash_isRestorable()
{
    const TestHome home; // and no trash in it yet
    // The longest that a file system takes: the record's name must be shorter.
    const QString name = u"100% – ü"_s + QString(244, u'n');
    const QByteArray path = "/100%25%20%E2%80%93%20%C3%BC" + QByteArray(244, 'n');
    home.makeFile(name + u"/inside"_s);

    QVERIFY(FileTree::trash({u"~"_s, name}));

    QVERIFY(!home.exists(name));
    const QString inTrash = home.names(trashFolder + u"files"_s).value(0);
    QCOMPARE(home.read(trashFolder + u"files/"_s + inTrash + u"/inside"_s), "content");
    const QByteArray record = home.read(trashFolder + u"info/"_s + inTrash + u".trashinfo"_s);
    const QByteArray start =
        "[Trash Info]\nPath=" + home.path().toUtf8() + path + "\nDeletionDate=";
    QVERIFY(record.startsWith(start));
    const QString date = QString::fromLatin1(record).trimmed().section(u'=', -1);
    QVERIFY(QDateTime::fromString(date, Qt::ISODate).isValid());
}

void LinuxFileTreeTest::trash_ofNameAlreadyInIt_keepsBoth()
{
    const TestHome home;
    home.makeFile(trashFolder + u"files/Glow"_s, "without a record");
    home.makeFile(trashFolder + u"info/Glow.2.trashinfo"_s, "without an item");
    home.makeFile(u"Glow/file"_s, "first");

    QVERIFY(FileTree::trash({u"~"_s, u"Glow"_s}));

    QCOMPARE(home.read(trashFolder + u"files/Glow"_s), "without a record");
    QCOMPARE(home.read(trashFolder + u"files/Glow.3/file"_s), "first");
    QCOMPARE(home.names(trashFolder + u"info"_s),
             (QStringList{u"Glow.2.trashinfo"_s, u"Glow.3.trashinfo"_s}));
}

void LinuxFileTreeTest::unusableTrash_leavesTheItem()
{
    const TestHome home;
    home.makeFile(u"Glow/inside"_s);
    home.makeFile(u".local"_s);
    const auto before = home.snapshot();
    QVERIFY(!FileTree::trash({u"~"_s, u"Glow"_s}));
    QCOMPARE(home.snapshot(), before);
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, LinuxFileTreeTest>(argc, argv);
}

#include "FileTreeTest_linux.moc"
