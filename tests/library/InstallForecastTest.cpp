#include "library/InstallForecast.h"

#include "platform/Path.h"
#include "tests/support/LibraryHome.h"

#include <QFile>

using namespace Qt::StringLiterals;

class InstallForecastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsWhatIsInside();
    void findsPictures();
    void foreseesThePlace();
    void tellsOfEachInstall();
};

void InstallForecastTest::countsWhatIsInside()
{
    const auto told = [](const QStringList &files, int most = 9) {
        const LibraryHome home;
        for (const QString &each : files)
            home.makeFile(u"Shine/"_s + each); // seven bytes
        // A link leads out of the template: what is there does not move with it.
        if (most == 9)
            std::ignore = QFile::link(home.path(u"Movies"_s), home.path(u"Shine/link"_s));
        ReadingLimits limits;
        limits.items = most;
        return contentsText(readTemplateFolder(home.path(u"Shine"_s), {}, limits));
    };
    QCOMPARE(told({u"a.moti"_s}), u"1 Title, 7 bytes"_s);
    QCOMPARE(told({u"a.motr"_s, u"b/c/d.motr"_s, u".e.motn"_s, u"f.MOTN"_s}),
             u"2 Transitions, 1 Composition or Generator, 28 bytes"_s);
    QCOMPARE(told({u"a.txt"_s}), u"No Motion file, 7 bytes"_s);
    QCOMPARE(told({u"a.moef"_s, u"b.moef"_s}, 1), u"1 Effect, 7 bytes or more"_s);
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

void InstallForecastTest::foreseesThePlace()
{
    using Place = InstallForecast::Place;
    const LibraryHome home;
    const QString titles = LibraryHome::titles();
    home.makeFolder(titles + u"/Lower/Glow");
    QVERIFY(QFile::link(home.path(titles), home.path(u"Desktop/Titles"_s)));
    QVERIFY(QFile::link(u"nowhere"_s, home.path(titles + u"/Dangling")));
    const auto place = [&](const QString &path, const QString &subCategory = {}) {
        const QString whole = path.isEmpty() ? path : home.path(path);
        return forecastInstall({Path::withoutLastComponent(whole), Path::lastComponent(whole)},
                               *TemplateLibrary::category(3), subCategory, {}, true)
            .place;
    };
    QCOMPARE(place({}), Place::Free);
    QCOMPARE(place(u"Desktop/Glow"_s), Place::Free);
    QCOMPARE(place(u"Desktop/Glow"_s, u"Lower"_s), Place::Taken);
    QCOMPARE(place(u"Desktop/Old"_s), Place::Taken);
    QCOMPARE(place(u"Desktop/Dangling"_s), Place::Taken);
    QCOMPARE(place(titles + u"/Old"), Place::Itself);
    QCOMPARE(place(u"Desktop/Titles/Old"_s), Place::Itself);
    QCOMPARE(place(titles + u"/Old/Old"), Place::Itself);
    QCOMPARE(place(titles + u"/Lower/Glow"), Place::Free);
}

/// To the letter, as the users know it by heart.
void InstallForecastTest::tellsOfEachInstall()
{
    QStringList texts;
    for (const TemplateCategory &each : TemplateLibrary::categories())
        texts << each.installedText << each.customInstalledText;
    QCOMPARE(texts, (QStringList{u"Composition Installed..."_s, u"Composition Installed ..."_s,
                                 u"Effect Installed ..."_s, u"Effect Installed ..."_s,
                                 u"Generator Installed ..."_s, u"Generator Installed ..."_s,
                                 u"Title Installed ..."_s, u"Title Installed ..."_s,
                                 u"Transition Installed ..."_s, u"Transition Installed ..."_s}));
    QVERIFY(!TemplateLibrary::category(-1) && !TemplateLibrary::category(5));
}

QTEST_GUILESS_MAIN(InstallForecastTest)

#include "InstallForecastTest.moc"
