#include "DiskRow.h"
#include "platform/FileTree.h"
#include "platform/WholeFile.h"
#include "tests/faults/Shim.h"
#include "tests/support/DiskSteps.h"
#include "tests/support/TableRows.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QUrl>

#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

/// The same on file systems with lesser renames, and the trash that the file manager restores from.
class LinuxFileTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data()
    {
        addTableRows({u"platform/FileTree.table"_s, u"platform/FileTree_linux.table"_s});
    }
    void rows();
    void anothersVersion_staysWheneverItComes();
    void failures_data() { addTableRows({u"platform/Failures_linux.table"_s}); }
    void failures();
    void trash_isRestorable();
};

void LinuxFileTreeTest::rows()
{
    QFETCH(const QByteArrayList, row);
    const auto restore = qScopeGuard([] { Shim::disarm(); });
    for (const QString &system : {u"replaces"_s, u"replaces %1"_s.arg(ENOTSUP),
                                  u"replaces %1"_s.arg(ENOSYS), u"no links"_s}) {
        Shim::Report report;
        Shim::arm({}, &report, system);
        tryDiskRow(row);
    }
}

void LinuxFileTreeTest::anothersVersion_staysWheneverItComes()
{
    bool isCalled = true;
    for (int turn = 0; isCalled; ++turn) {
        const TestHome home;
        prepareDisk(home, "file file old, old file 0");
        const QString path = home.path(u"file"_s);
        const auto version = readWholeFile(path)->version;
        const QString race = // written to, and put in place of the other one
            (turn % 2 == 0 ? u"printf ALL >'%1'"_s : u"mv '%1' '%1.aside' && printf ALL >'%1'"_s)
                .arg(path);
        Shim::Report report;
        Shim::arm({{Shim::Kind::Race, 0, 1 + turn / 2, race}}, &report);
        std::ignore = writeWholeFile(path, version, [](auto &file) { return file.write("new"); });
        Shim::disarm();
        isCalled = report.calls > turn / 2;
        QCOMPARE(home.read(u"file"_s), report.hasHappened ? "ALL" : "new");
    }
}

void LinuxFileTreeTest::failures()
{
    QFETCH(const QByteArrayList, row);
    const QStringList foretold = words(row[2]); // the call, its error, what comes of each
    const QString system = row.size() > 3 ? u"replaces"_s : QString();
    QStringList outcomes;
    bool isCalled = true;
    for (int call = 1; isCalled; ++call) {
        const TestHome home;
        prepareDisk(home, row[0]);
        const std::string file = home.path(u"file"_s).toStdString();
        if (::setxattr(file.c_str(), "user.tag", "red", 3, 0) != 0 &&
            foretold[0].endsWith(u"xattr"))
            QSKIP("no such attributes on this disk");
        const auto before = home.snapshot();
        FileTree::CopyProgress last;
        Shim::Report report;
        Shim::arm({{Shim::Kind::Error, foretold[1].toInt(), call}}, &report, system);
        const bool isDone = runDiskAction(words(row[1]), &last);
        Shim::disarm();
        isCalled = report.calls >= call;
        if (foretold[0] == QLatin1String(report.name.load()))
            outcomes << (isDone ? u"done"_s : u"refused"_s);
        QVERIFY(isDone || !system.isEmpty() || home.snapshot() == before);
    }
    QCOMPARE(outcomes.join(u' '), foretold.mid(2).join(u' '));
}

/// On the disk of the home, where there is no trash yet, and on another one, by the path from its
/// top.
void LinuxFileTreeTest::trash_isRestorable()
{
    const TestHome home;
    const QTemporaryDir elsewhere(u"/dev/shm/brimvale-test-XXXXXX"_s);
    const QString top = QStorageInfo(elsewhere.path()).rootPath();
    const QString user = top + u"/.Trash-" + QString::number(::getuid());
    for (const bool isElsewhere : {false, true}) {
        if (isElsewhere && (!elsewhere.isValid() || top == QStorageInfo(home.path()).rootPath()))
            QSKIP("no second file system");
        const QString folder = isElsewhere ? elsewhere.path() : home.path();
        const QDir trash(isElsewhere ? user : home.path(u".local/share/Trash"_s));
        // The longest that a file system takes: the record's name must be shorter.
        QString name = u"100% – ü"_s + QFileInfo(folder).fileName();
        name += u"%1%2"_s.arg(QString((255 - name.toUtf8().size()) / 2, u'ü'),
                              QString((255 - name.toUtf8().size()) % 2, u'n'));
        QVERIFY(QDir(folder).mkpath(name + u"/inside"_s));

        QVERIFY(FileTree::trash({folder, name}));

        QVERIFY(!QFileInfo::exists(folder + u'/' + name));
        const QString item = QDir(trash.filePath(u"files"_s)).entryList({name.first(30) + u'*'})[0];
        QVERIFY(!item.contains(QChar::ReplacementCharacter));
        QVERIFY(QDir(trash.filePath(u"files/"_s + item)).removeRecursively());
        QFile record(trash.filePath(u"info/%1.trashinfo"_s.arg(item)));
        QVERIFY(record.open(QFile::ReadOnly));
        const QString path = isElsewhere ? QDir(top).relativeFilePath(folder) : folder;
        const QStringList lines = QString::fromLatin1(record.readAll()).split(u'\n');
        QCOMPARE(lines[0], u"[Trash Info]"_s);
        QCOMPARE(lines[1].toLatin1(), "Path=" + QUrl::toPercentEncoding(path + u'/' + name, "/"));
        QVERIFY(QDateTime::fromString(lines[2], u"'DeletionDate='yyyy-MM-ddTHH:mm:ss"_s).isValid());
        QVERIFY(record.remove());
    }
    for (const char *folder : {"/files", "/info", ""})
        QDir().rmdir(user + QLatin1String(folder)); // when nothing else is in it
}

QTEST_GUILESS_MAIN(LinuxFileTreeTest)

#include "FileTreeTest_linux.moc"
