#include "platform/Path.h"

#include "tests/support/TestHome.h"

using namespace Qt::StringLiterals;

class PathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parts_data();
    void parts();
    void joined_data();
    void joined();
    void expandingTilde_data();
    void expandingTilde();
};

void PathTest::parts_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("lastComponent");
    QTest::addColumn<QString>("withoutLastComponent");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("withoutExtension");

    const auto row = [](const char *name, const QString &path, const QString &last,
                        const QString &folder, const QString &extension, const QString &stem) {
        QTest::newRow(name) << path << last << folder << extension << stem;
    };
    row("nothing", u""_s, u""_s, u""_s, u""_s, u""_s);
    row("the root", u"/"_s, u"/"_s, u"/"_s, u""_s, u"/"_s);
    row("the root, doubled", u"//"_s, u"/"_s, u"/"_s, u""_s, u"/"_s);
    row("in the root", u"/Glow"_s, u"Glow"_s, u"/"_s, u""_s, u"/Glow"_s);
    row("a name alone", u"Glow"_s, u"Glow"_s, u""_s, u""_s, u"Glow"_s);
    row("a folder", u"/a/Glow/"_s, u"Glow"_s, u"/a"_s, u""_s, u"/a/Glow"_s);
    row("two dots", u"/a/b.c.motn"_s, u"b.c.motn"_s, u"/a"_s, u"motn"_s, u"/a/b.c"_s);
    row("a dot at the end", u"/a/b."_s, u"b."_s, u"/a"_s, u""_s, u"/a/b"_s);
    row("a dot in a folder", u"/a.b/c"_s, u"c"_s, u"/a.b"_s, u""_s, u"/a.b/c"_s);
    row("an extension and a slash", u"/a/b.moef/"_s, u"b.moef"_s, u"/a"_s, u"moef"_s, u"/a/b"_s);
}

void PathTest::parts()
{
    QFETCH(QString, path);
    QTEST(Path::lastComponent(path), "lastComponent");
    QTEST(Path::withoutLastComponent(path), "withoutLastComponent");
    QTEST(Path::extension(path), "extension");
    QTEST(Path::withoutExtension(path), "withoutExtension");
}

void PathTest::joined_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("component");
    QTest::addColumn<QString>("joined");
    QTest::newRow("plain") << u"/a"_s << u"b"_s << u"/a/b"_s;
    QTest::newRow("slash at the end") << u"/a//"_s << u"b"_s << u"/a/b"_s;
    QTest::newRow("slash at the start") << u"/a/"_s << u"/b"_s << u"/a/b"_s;
    QTest::newRow("in the root") << u"/"_s << u"b"_s << u"/b"_s;
    QTest::newRow("both the root's") << u"//"_s << u"/b"_s << u"/b"_s;
    QTest::newRow("no folder") << u""_s << u"b"_s << u"b"_s;
    QTest::newRow("no component") << u"/a/"_s << u""_s << u"/a/"_s;
}

void PathTest::joined()
{
    QFETCH(QString, folder);
    QFETCH(QString, component);
    QTEST(Path::joined(folder, component), "joined");
}

void PathTest::expandingTilde_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expanded");
    const QString home = qEnvironmentVariable("HOME");
    QTest::newRow("the home") << u"~"_s << home;
    QTest::newRow("in the home") << u"~/Movies/"_s << home + u"/Movies/"_s;
    QTest::newRow("somebody's home") << u"~somebody"_s << u"~somebody"_s;
    QTest::newRow("further on") << u"/a/~"_s << u"/a/~"_s;
}

void PathTest::expandingTilde()
{
    QFETCH(QString, path);
    QTEST(Path::expandingTilde(path), "expanded");
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, PathTest>(argc, argv);
}

#include "PathTest.moc"
