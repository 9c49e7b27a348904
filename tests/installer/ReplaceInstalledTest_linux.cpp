#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString trash = u".local/share/Trash"_s;

} // namespace

/// A template of the same name is there already.
class ReplaceInstalledTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trashesTheOldOne_data();
    void trashesTheOldOne();
    void keepsEveryOldOne();
    void changesNothingWithoutATrash_data();
    void changesNothingWithoutATrash();
};

void ReplaceInstalledTest::trashesTheOldOne_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("subCategory");
    QTest::newRow("in the category") << u"Desktop/Old"_s << QString();
    QTest::newRow("in a sub-category") << u"Desktop/Old"_s << u"Lower Thirds 50%"_s;
    QTest::newRow("though the new one is not there") << u"Desktop/none/Old"_s << QString();
    QTest::newRow("though it is the same") << LibraryHome::titles() + u"/Old"_s << QString();
}

void ReplaceInstalledTest::trashesTheOldOne()
{
    QFETCH(const QString, source);
    QFETCH(const QString, subCategory);
    const LibraryHome home;
    QString place = home.titles() + u"/Old"_s;
    if (!subCategory.isEmpty()) {
        place = home.titles() + u'/' + subCategory + u"/Old"_s;
        home.makeFile(place + u"/older"_s);
    }
    home.makeFile(u"Desktop/Old/Old.moti"_s, "new");
    const RunningProgram program;
    const auto before = home.snapshot();
    program.installTitle(home.path(source), subCategory);

    auto after = home.snapshot();
    const auto expected =
        home.withMoved(home.withMoved(before, place, trash + u"/files/Old"_s), source, place);
    QStringList added;
    for (const QString &path : after.keys()) {
        if (!expected.contains(path)) {
            added << path;
            after.remove(path);
        }
    }
    QCOMPARE(after, expected);
    QCOMPARE(added, QStringList({u".local"_s, u".local/share"_s, trash, trash + u"/files"_s,
                                 trash + u"/info"_s, trash + u"/info/Old.trashinfo"_s}));
    const QByteArray path = home.path(place).toUtf8().toPercentEncoding("/");
    QVERIFY(
        home.read(trash + u"/info/Old.trashinfo"_s).contains(QByteArray("\nPath=" + path + '\n')));
}

void ReplaceInstalledTest::keepsEveryOldOne()
{
    const LibraryHome home;
    const RunningProgram program;
    for (const QByteArray content : {"first", "second", "third"}) {
        home.makeFile(u"Desktop/Old/Old.moti"_s, content);
        program.installTitle(home.path(u"Desktop/Old"_s));
    }
    QCOMPARE(home.read(home.titles() + u"/Old/Old.moti"_s), "third");
    QByteArrayList trashed;
    for (const QString &name : home.names(trash + u"/files"_s)) {
        QVERIFY(home.exists(trash + u"/info/"_s + name + u".trashinfo"_s));
        trashed << home.read(trash + u"/files/"_s + name + u"/Old.moti"_s);
    }
    std::sort(trashed.begin(), trashed.end());
    QCOMPARE(trashed, QByteArrayList({"Titles", "first", "second"}));
}

void ReplaceInstalledTest::changesNothingWithoutATrash_data()
{
    QTest::addColumn<QString>("inTheWay");
    QTest::addColumn<QString>("subCategory");
    const QStringList files{u".local"_s, trash, trash + u"/files"_s, trash + u"/info"_s};
    for (const QString &file : files) {
        QTest::addRow("%s is a file", qPrintable(file)) << file << QString();
        QTest::addRow("%s is a file, sub-category", qPrintable(file)) << file << u"Sub"_s;
    }
}

void ReplaceInstalledTest::changesNothingWithoutATrash()
{
    QFETCH(const QString, inTheWay);
    QFETCH(const QString, subCategory);
    const LibraryHome home;
    home.makeFile(u"Desktop/Old/Old.moti"_s, "new");
    home.makeFile(home.titles() + u"/Sub/Old/Old.moti"_s, "in the sub-category");
    home.makeFolder(trash + u"/files"_s);
    home.makeFolder(trash + u"/info"_s);
    QVERIFY(QDir(home.path(inTheWay)).removeRecursively());
    home.makeFile(inTheWay);
    const RunningProgram program;
    const auto before = home.snapshot();
    program.installTitle(home.path(u"Desktop/Old"_s), subCategory);
    QCOMPARE(home.changesSince(before), QStringList());
    QCOMPARE(program.text(u"input"_s), QString());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, ReplaceInstalledTest>(argc, argv);
}

#include "ReplaceInstalledTest_linux.moc"
