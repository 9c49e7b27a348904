#include "library/InstallForecast.h"

#include "platform/Path.h"
#include "tests/support/LibraryHome.h"

#include <QFile>

using namespace Qt::StringLiterals;

class InstallForecastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsWhatIsInside_data();
    void countsWhatIsInside();
    void findsPictures();
    void foreseesThePlace_data();
    void foreseesThePlace();
    void warns_data();
    void warns();
};

void InstallForecastTest::countsWhatIsInside_data()
{
    QTest::addColumn<QStringList>("files"); // of seven bytes each
    QTest::addColumn<int>("items");
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << QStringList{u"a.moti"_s} << 9 << u"1 Title, 7 bytes"_s;
    QTest::newRow("many") << QStringList{u"a.motr"_s, u"b/c/d.motr"_s, u".e.motn"_s, u"f.MOTN"_s}
                          << 9 << u"2 Transitions, 1 Composition or Generator, 28 bytes"_s;
    QTest::newRow("none") << QStringList{u"a.txt"_s} << 9 << u"No Motion file, 7 bytes"_s;
    QTest::newRow("too many") << QStringList{u"a.moef"_s, u"b.moef"_s} << 1
                              << u"1 Effect, 7 bytes or more"_s;
}

void InstallForecastTest::countsWhatIsInside()
{
    QFETCH(const QStringList, files);
    QFETCH(const int, items);
    const LibraryHome home;
    for (const QString &each : files)
        home.makeFile(u"Shine/"_s + each);
    // A link leads out of the template: what is there does not move with it.
    QVERIFY(items < 9 || QFile::link(home.path(u"Movies"_s), home.path(u"Shine/link"_s)));
    ReadingLimits limits;
    limits.items = items;
    const TemplateFolder folder = readTemplateFolder(home.path(u"Shine"_s), {}, limits);
    QTEST(contentsText(folder), "text");
    QCOMPARE(folder.kind, TemplateFolder::Kind::Folder);
}

void InstallForecastTest::findsPictures()
{
    const TestHome home;
    const QString folder = home.makeFolder(u"Glow"_s);
    home.makeFile(u"Glow/small.png"_s);
    QCOMPARE(readTemplateFolder(folder).pictures, QStringList{folder + u"/small.png"});
    home.makeFile(u"Glow/large.png"_s);
    QCOMPARE(readTemplateFolder(folder).pictures.constFirst(), folder + u"/large.png");
    QFile large(folder + u"/large.png");
    QVERIFY(large.resize(20'000'001));
    QCOMPARE(readTemplateFolder(folder).pictures.size(), 1);
    QVERIFY(large.remove() && QFile::link(u"small.png"_s, large.fileName()));
    QCOMPARE(readTemplateFolder(folder).pictures.size(), 1);
}

void InstallForecastTest::foreseesThePlace_data()
{
    using Place = InstallForecast::Place;
    QTest::addColumn<QString>("path"); // inside the home
    QTest::addColumn<QString>("subCategory");
    QTest::addColumn<Place>("place");
    const QString titles = LibraryHome::titles();
    QTest::newRow("free") << u"Desktop/Glow"_s << QString() << Place::Free;
    QTest::newRow("in a sub-category") << u"Desktop/Glow"_s << u"Lower"_s << Place::Taken;
    QTest::newRow("nothing chosen") << QString() << QString() << Place::Free;
    QTest::newRow("taken") << u"Desktop/Old"_s << QString() << Place::Taken;
    QTest::newRow("by a dangling link") << u"Desktop/Dangling"_s << QString() << Place::Taken;
    QTest::newRow("itself") << titles + u"/Old" << QString() << Place::Itself;
    QTest::newRow("itself, by a link") << u"Desktop/Titles/Old"_s << QString() << Place::Itself;
    QTest::newRow("inside itself") << titles + u"/Old/Old" << QString() << Place::Itself;
    QTest::newRow("out of a sub-category") << titles + u"/Lower/Glow" << QString() << Place::Free;
}

void InstallForecastTest::foreseesThePlace()
{
    QFETCH(const QString, path);
    QFETCH(const QString, subCategory);
    const LibraryHome home;
    home.makeFolder(home.titles() + u"/Lower/Glow");
    QVERIFY(QFile::link(home.path(home.titles()), home.path(u"Desktop/Titles"_s)));
    QVERIFY(QFile::link(u"nowhere"_s, home.path(home.titles() + u"/Dangling")));
    const QString whole = path.isEmpty() ? path : home.path(path);
    QTEST(forecastInstall({Path::withoutLastComponent(whole), Path::lastComponent(whole)},
                          *TemplateLibrary::category(3), subCategory, {}, true)
              .place,
          "place");
}

void InstallForecastTest::warns_data()
{
    using Kind = TemplateFolder::Kind;
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QStringList>("extensions");
    QTest::addColumn<bool>("isChosen");
    QTest::addColumn<QStringList>("warnings");
    const QString noLibrary = u"Motion's library is not there yet."_s;
    QTest::newRow("fits") << Kind::Folder << QStringList{u"moti"_s, u"motn"_s} << true
                          << QStringList{noLibrary};
    QTest::newRow("another kind") << Kind::Folder << QStringList{u"moef"_s, u"motn"_s} << true
                                  << QStringList{
                                         noLibrary,
                                         u"It holds .moef, .motn files; Titles are .moti files."_s};
    QTest::newRow("typed, a file") << Kind::File << QStringList() << false
                                   << QStringList{u"This is a file; a template is a folder."_s,
                                                  u"A typed path must be dropped or chosen to be "
                                                  "installed."_s,
                                                  noLibrary};
    QTest::newRow("gone") << Kind::Missing << QStringList() << true
                          << QStringList{u"There is no folder at this path."_s, noLibrary};
}

void InstallForecastTest::warns()
{
    QFETCH(const TemplateFolder::Kind, kind);
    QFETCH(const QStringList, extensions);
    QFETCH(const bool, isChosen);
    const TestHome home;
    TemplateFolder contents;
    contents.kind = kind;
    for (const QString &each : extensions)
        contents.motionFiles[each] = 1;
    QTEST(forecastInstall({home.path(), u"Glow"_s}, *TemplateLibrary::category(3), {}, contents,
                          isChosen)
              .warnings,
          "warnings");
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, InstallForecastTest>(argc, argv);
}

#include "InstallForecastTest.moc"
