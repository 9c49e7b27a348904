#include "DiskRow.h"
#include "platform/FileTree.h"
#include "tests/faults/Shim.h"
#include "tests/support/TableRows.h"
#include "tests/support/TestHome.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QUrl>

#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

static const QString trashFolder = u".local/share/Trash/"_s;

/// The same on file systems with lesser renames, and the trash that the file manager restores from.
class LinuxFileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data();
    void rows();
    void trash_isRestorable();
    void trash_onOtherFileSystem_isRestorable();
};

void LinuxFileTreeTest::rows_data()
{
    addTableRows({u"platform/FileTree.table"_s, u"platform/FileTree_linux.table"_s});
}

void LinuxFileTreeTest::rows()
{
    QFETCH(const QByteArrayList, row);
    const auto restore = qScopeGuard([] { Shim::disarm(); });
    for (const int error : {0, EINVAL, ENOTSUP, ENOSYS}) {
        Shim::Report report;
        Shim::arm({}, &report, {error});
        tryDiskRow(row);
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

void LinuxFileTreeTest::trash_onOtherFileSystem_isRestorable()
{
    const TestHome home;
    const QTemporaryDir elsewhere(u"/dev/shm/brimvale-test-XXXXXX"_s);
    const QStorageInfo disk(elsewhere.path());
    if (!elsewhere.isValid() || disk == QStorageInfo(home.path()))
        QSKIP("no second file system");
    const QString name = u"Glow of "_s + QFileInfo(elsewhere.path()).fileName();
    QVERIFY(QDir(elsewhere.path()).mkpath(name + u"/inside"_s));

    QVERIFY(FileTree::trash({elsewhere.path(), name}));

    QVERIFY(!QFileInfo::exists(elsewhere.filePath(name)));
    const QString trash = disk.rootPath() + u"/.Trash-%1/"_s.arg(::getuid());
    QVERIFY(QDir(trash + u"files/"_s + name).exists(u"inside"_s));
    QFile record(trash + u"info/"_s + name + u".trashinfo"_s);
    QVERIFY(record.open(QFile::ReadOnly));
    // By the path from the top of its disk.
    const QString path = QDir(disk.rootPath()).relativeFilePath(elsewhere.filePath(name));
    const QByteArray start = "[Trash Info]\nPath=" + QUrl::toPercentEncoding(path, "/") + '\n';
    QVERIFY(record.readAll().startsWith(start));
    QVERIFY(record.remove());
    QVERIFY(QDir(trash + u"files/"_s + name).removeRecursively());
    for (const char *folder : {"files", "info", ""})
        QDir().rmdir(trash + QLatin1String(folder)); // when nothing else is in it
}

QTEST_GUILESS_MAIN(LinuxFileTreeTest)

#include "FileTreeTest_linux.moc"
