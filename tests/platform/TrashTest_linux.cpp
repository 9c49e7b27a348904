#include "TreeFixture.h"
#include "platform/FileTree.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

/// The trash that the desktop's file manager shows and restores from.
class TrashTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trash_isRestorable_data();
    void trash_isRestorable();
    void trash_ofNameAlreadyInIt_keepsBoth();
    void unusableTrash_leavesTheItem_data();
    void unusableTrash_leavesTheItem();
    void trash_onAnotherFileSystem();
};

namespace {

const QString trashFolder = u".local/share/Trash/"_s;

/// The original path in a record, empty when the record is not well-formed or not of now.
QString pathInRecord(const QByteArray &record)
{
    static const QRegularExpression form(
        u"^\\[Trash Info\\]\nPath=([A-Za-z0-9%/._~-]+)\nDeletionDate=(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d)\n$"_s);
    const auto match = form.match(QString::fromLatin1(record));
    const auto date = QDateTime::fromString(match.captured(2), Qt::ISODate);
    const bool isNow = qAbs(date.secsTo(QDateTime::currentDateTime())) < 60;
    return isNow ? QUrl::fromPercentEncoding(match.captured(1).toLatin1()) : QString();
}

/// The name in the trash of what lay at a path, empty when there is no record of it.
QString nameOfRecord(const QString &records, const QString &path)
{
    for (const QFileInfo &info : QDir(records).entryInfoList({u"*.trashinfo"_s}, QDir::Files)) {
        QFile record(info.filePath());
        if (record.open(QIODevice::ReadOnly) && pathInRecord(record.readAll()) == path)
            return info.completeBaseName();
    }
    return {};
}

} // namespace

void TrashTest::trash_isRestorable_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a name that needs encoding") << u"Glow 100% – ü\n"_s;
    QTest::newRow("a hidden name") << u".Glow"_s;
    QTest::newRow("the longest name") << QString(255, u'n');
    QTest::newRow("a dangling link") << u"dangling"_s;
}

void TrashTest::trash_isRestorable()
{
    QFETCH(QString, name);
    const TreeHome home; // and no trash in it yet
    if (name == u"dangling")
        QVERIFY(QFile::link(home.path(u"nowhere"_s), home.path(name)));
    else
        home.makeFile(name + u"/inside"_s);
    QVERIFY(QFile::link(home.path(), home.path(u"link to home"_s)));
    const auto item = describeTree(home.path(name));

    const Outcome outcome = FileTree::trash({u"~/link to home"_s, name});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QVERIFY(!home.exists(name));
    const QString inTrash = home.names(trashFolder + u"files"_s).value(0);
    QCOMPARE(describeTree(home.path(trashFolder + u"files/"_s + inTrash)), item);
    const QByteArray record = home.read(trashFolder + u"info/"_s + inTrash + u".trashinfo"_s);
    QCOMPARE(pathInRecord(record), home.path(name));
    QCOMPARE(QFileInfo(home.path(trashFolder)).permissions() & 0x77, QFile::Permissions());
}

void TrashTest::trash_ofNameAlreadyInIt_keepsBoth()
{
    const TreeHome home;
    home.makeFile(trashFolder + u"files/Glow"_s, "without a record");
    for (const QByteArray content : {"first", "second"}) {
        home.makeFile(u"Glow/file"_s, content);
        QVERIFY(FileTree::trash({u"~"_s, u"Glow"_s}));
    }
    QCOMPARE(home.names(trashFolder + u"files"_s),
             (QStringList{u"Glow"_s, u"Glow.2"_s, u"Glow.3"_s}));
    QCOMPARE(home.names(trashFolder + u"info"_s),
             (QStringList{u"Glow.2.trashinfo"_s, u"Glow.3.trashinfo"_s}));
    QCOMPARE(home.read(trashFolder + u"files/Glow.2/file"_s), "first");
    QCOMPARE(home.read(trashFolder + u"files/Glow.3/file"_s), "second");
}

void TrashTest::unusableTrash_leavesTheItem_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<bool>("isFile");
    for (const QString &path : {u".local"_s, u".local/share/Trash"_s, u".local/share/Trash/files"_s,
                                u".local/share/Trash/info"_s}) {
        QTest::addRow("%s is a file", qPrintable(path)) << path << true;
        QTest::addRow("%s may not be written", qPrintable(path)) << path << false;
    }
}

void TrashTest::unusableTrash_leavesTheItem()
{
    QFETCH(QString, obstacle);
    QFETCH(bool, isFile);
    const TreeHome home;
    home.makeFile(u"Glow/inside"_s);
    if (obstacle.startsWith(trashFolder)) {
        home.makeFolder(trashFolder + u"files"_s);
        home.makeFolder(trashFolder + u"info"_s);
    }
    if (isFile && QDir(home.path(obstacle)).exists())
        QVERIFY(QDir().rmdir(home.path(obstacle)));
    if (isFile)
        home.makeFile(obstacle);
    else
        QVERIFY(
            QFile::setPermissions(home.makeFolder(obstacle), QFile::ReadOwner | QFile::ExeOwner));
    const auto before = home.snapshot();
    QVERIFY(QDir::setCurrent(home.makeFolder(u"current"_s)));
    {
        const AsPlainUser user(home);
        const Outcome outcome = FileTree::trash({u"~"_s, u"Glow"_s});
        QVERIFY(!outcome);
        QVERIFY(!outcome.reason().isEmpty());
    }
    QVERIFY(QDir::setCurrent(u"/"_s));
    QVERIFY(QDir().rmdir(home.path(u"current"_s)));
    QCOMPARE(home.snapshot(), before);
}

void TrashTest::trash_onAnotherFileSystem()
{
    const TreeHome home;
    const OtherFileSystem other(home);
    if (!other.isThere())
        QSKIP("no second file system");
    QDir(other.path()).mkdir(u"Glow"_s);
    const QString top = QStorageInfo(other.path()).rootPath();
    const QDir trash(top + u"/.Trash-%1"_s.arg(::getuid()));
    const bool wasThere = trash.exists();

    const Outcome outcome = FileTree::trash({other.path(), u"Glow"_s});

    QVERIFY2(outcome, qPrintable(outcome.reason()));
    QVERIFY(!QFile::exists(other.path(u"Glow"_s)));
    const QString folder = QDir(top).relativeFilePath(other.path()) + u"/Glow"_s;
    const QString found = nameOfRecord(trash.filePath(u"info"_s), folder);
    QVERIFY(!found.isEmpty());
    QVERIFY(QDir().rmdir(trash.filePath(u"files/"_s + found)));
    QVERIFY(QFile::remove(trash.filePath(u"info/"_s + found + u".trashinfo"_s)));
    QVERIFY(wasThere || QDir(trash).removeRecursively());
    QCOMPARE(home.names(trashFolder + u"info"_s), QStringList());
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, TrashTest>(argc, argv);
}

#include "TrashTest_linux.moc"
