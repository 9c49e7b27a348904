#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"
#include "widgets/Spinner.h"

#include <QElapsedTimer>
#include <QStackedWidget>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString root = u"Movies/Motion Templates.localized"_s;

QStringList inRoot(const QStringList &categories)
{
    QStringList paths;
    for (const QString &category : categories)
        paths << root + u'/' + category + u".localized"_s;
    return paths;
}

const QStringList all =
    inRoot({u"Compositions"_s, u"Effects"_s, u"Generators"_s, u"Titles"_s, u"Transitions"_s});

} // namespace

class FolderStructureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesWhatIsMissing_data();
    void makesWhatIsMissing();
    void handlesEventsBeforeItMakesAnything();
};

void FolderStructureTest::makesWhatIsMissing_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("made");
    const QStringList nothing;
    const QStringList movies{u"Movies"_s};
    const QString created = u"Folder Structure Created"_s;
    const QString there = u"Folder Structure already exists - ! ..."_s;
    QTest::newRow("no library") << movies << nothing << created << QStringList{root} + all;
    QTest::newRow("no Movies") << nothing << nothing << created << nothing;
    QTest::newRow("Movies is a file") << nothing << movies << created << nothing;
    QTest::newRow("all there") << all << nothing << there << nothing;
    QTest::newRow("an empty library") << QStringList{root} << nothing << there << all;
    QTest::newRow("Titles missing")
        << all.mid(0, 3) + all.mid(4) << nothing << there << all.mid(3, 1);
    QTest::newRow("Titles is a file")
        << all.mid(0, 2) << all.mid(3, 1) << there << all.mid(2, 1) + all.mid(4);
    QTest::newRow("the library is a file") << movies << QStringList{root} << there << nothing;
}

void FolderStructureTest::makesWhatIsMissing()
{
    QFETCH(const QStringList, folders);
    QFETCH(const QStringList, files);
    QFETCH(const QString, message);
    QFETCH(const QStringList, made);
    const TestHome home;
    for (const QString &folder : folders)
        home.makeFolder(folder);
    for (const QString &file : files)
        home.makeFile(file);
    const RunningProgram program;
    program.click(u"runPrefsWindow"_s);
    QVERIFY(!program.isShown(u"existsTextField"_s) && !program.isShown(u"mCancel"_s));
    const auto before = home.snapshot();

    QElapsedTimer clock;
    clock.start();
    program.click(u"createFolderStructure"_s);
    const bool waited = clock.elapsed() >= 1500;
    QCOMPARE(waited, message == u"Folder Structure Created");
    QVERIFY(clock.elapsed() < (waited ? 2500 : 1000));
    QVERIFY(program.isShown(u"existsTextField"_s) && program.isShown(u"mCancel"_s));
    QCOMPARE(program.text(u"existsTextField"_s), message);
    QCOMPARE(home.changesSince(before), made);
}

void FolderStructureTest::handlesEventsBeforeItMakesAnything()
{
    const TestHome home;
    home.makeFolder(u"Movies"_s);
    const RunningProgram program;
    program.click(u"runPrefsWindow"_s);
    int ticks = 0;
    int ticksWithoutLibrary = 0;
    int ticksWithSpinner = 0;
    QTimer second;
    connect(&second, &QTimer::timeout, this, [&] {
        ++ticks;
        ticksWithoutLibrary += home.exists(root) ? 0 : 1;
        ticksWithSpinner += program.find<Spinner>(u"spinner"_s)->isAnimating() ? 1 : 0;
    });
    second.start(20ms);
    QTimer::singleShot(100ms, this, [&] { program.chooseMode(1); });
    // Nothing guards against a second one.
    QTimer::singleShot(200ms, this, [&] { program.click(u"createFolderStructure"_s); });
    program.click(u"createFolderStructure"_s);
    second.stop();
    QVERIFY2(ticks > 50, qPrintable(QString::number(ticks)));
    QCOMPARE(ticksWithoutLibrary, ticks);
    QCOMPARE(program.find<QStackedWidget>(u"theTabView"_s)->currentIndex(), 1);
    QVERIFY(!program.find<Spinner>(u"spinner"_s)->isAnimating());
    QCOMPARE(home.names(root).size(), 5);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, FolderStructureTest>(argc, argv);
}

#include "FolderStructureTest.moc"
