#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

using namespace Qt::StringLiterals;

/// A template of the same name is there already.
class ReplaceInstalledTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEveryOldOne();
    void changesNothingWithoutATrash();
};

void ReplaceInstalledTest::keepsEveryOldOne()
{
    const LibraryHome home;
    const RunningProgram program;
    for (const QString &subCategory : {QString(), u"Old"_s}) {
        const QString place = home.titles() + u'/' + subCategory + u"/Same"_s;
        home.makeFile(place + u"/old"_s);
        home.makeFile(u"Desktop/Same/new"_s);
        program.chooseTitle(home.path(u"Desktop/Same"_s));
        program.install(subCategory);
        QCOMPARE(home.names(place), QStringList(u"new"_s));
    }
    const QString trash = u".local/share/Trash/files"_s;
    QCOMPARE(home.names(trash).size(), 2);
    for (const QString &name : home.names(trash))
        QCOMPARE(home.names(trash + u'/' + name), QStringList(u"old"_s));
}

void ReplaceInstalledTest::changesNothingWithoutATrash()
{
    const LibraryHome home;
    home.makeFile(u"Desktop/Old/Old.moti"_s, "new");
    home.makeFile(u".local/share/Trash"_s, "no folder");
    const RunningProgram program;
    const auto before = home.snapshot();
    program.chooseTitle(home.path(u"Desktop/Old"_s));
    program.install();
    QCOMPARE(home.snapshot(), before);
}

QTEST_MAIN(ReplaceInstalledTest)

#include "ReplaceInstalledTest_linux.moc"
