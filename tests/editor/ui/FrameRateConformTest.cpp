#include "Editor.h"
#include "widgets/Spinner.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QSignalSpy>

#include <clocale>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// Chooses an item by the keyboard, and presses the button.
void conform(const Editor &editor, int index)
{
    auto *rates = editor.find<QComboBox>(u"frPopup"_s);
    rates->setFocus();
    for (int step = 0; step < index; ++step)
        QTest::keyClick(rates, Qt::Key_Down);
    editor.click(u"conformButton"_s);
}

int chosenRate(const Editor &editor)
{
    return editor.find<QComboBox>(u"frPopup"_s)->currentIndex();
}

/// What the bar shows one after the other.
class BarSpy : public QSignalSpy
{
public:
    BarSpy(const Editor &editor, const QString &bar)
        : QSignalSpy(editor.find<QProgressBar>(bar), &QProgressBar::valueChanged)
    {
    }

    [[nodiscard]] QList<int> values() const
    {
        QList<int> list;
        for (const QVariantList &arguments : *this)
            list << arguments.first().toInt();
        return list;
    }
};

QList<int> hundredSteps()
{
    QList<int> steps(100);
    std::iota(steps.begin(), steps.end(), 1);
    return steps;
}

} // namespace

class FrameRateConformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conformsToEachRate();
    void writesTheSameUnderEveryLocale();
    void keepsTheFrameRateWithoutOne_data();
    void keepsTheFrameRateWithoutOne();
    void doesNothingWithoutATriple_data();
    void doesNothingWithoutATriple();
    void asksForARateAfterTheFirstTriple();
    void logsThatItCannotWrite();
    void animatesOnce();
    void sharesTheCounterWithTheInstaller();
    void writesTheFileBackAndResets_data();
    void writesTheFileBackAndResets();
};

void FrameRateConformTest::conformsToEachRate()
{
    const Editor editor;
    const auto *rates = editor.find<QComboBox>(u"frPopup"_s);
    QCOMPARE(rates->count(), 10);
    for (int index = 1; index < rates->count(); ++index) {
        editor.load(motionFile());
        editor.click(u"orgButton"_s);
        conform(editor, index);
        const QString rate = rates->itemText(index).section(u' ', 0, 0);
        const QString frames = QString::number(10 * rate.toDouble());
        QStringList expected = elements(motionFile());
        expected.replaceInStrings(u"frameRate=29.97"_s, u"frameRate="_s + rate)
            .replaceInStrings(u"duration=300"_s, u"duration="_s + frames)
            .replaceInStrings(u"NTSC=1"_s, u"NTSC=0"_s);
        QCOMPARE(elements(editor.read(u"Intro.motn"_s)), expected);
        QCOMPARE(editor.texts({u"theFrameRate"_s, u"theFrames"_s, u"theDuration"_s}),
                 (QStringList{rate, frames, u"10.0 seconds"_s}));
        QCOMPARE(editor.text(u"dateTextField"_s) + editor.text(u"wasArchived"_s), QString());
        QCOMPARE(chosenRate(editor), 0);
        QVERIFY(!editor.isShown(u"orgButton"_s));
        QVERIFY(editor.isShown(u"progressBarT"_s));
    }
}

void FrameRateConformTest::writesTheSameUnderEveryLocale()
{
    // As QApplication sets it in a German session, where that locale is installed.
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German));
    const auto reset = qScopeGuard([&] {
        QLocale::setDefault(QLocale::c());
        std::setlocale(LC_ALL, before.constData());
    });
    const Editor editor;
    editor.load(motionFile({{"300<", "297<"}, {"29.97", "30"}}));
    QCOMPARE(editor.text(u"theDuration"_s), u"9.9 seconds"_s);
    conform(editor, 5);
    QCOMPARE(editor.text(u"theFrames"_s), u"296.703"_s);
    QVERIFY(editor.read(u"Intro.motn"_s).contains("<duration>296.703</duration>"));
}

void FrameRateConformTest::keepsTheFrameRateWithoutOne_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("status");
    QTest::addColumn<bool>("barShown");
    QTest::newRow("prompt") << 0 << u"Choose Framerate"_s << false;
    QTest::newRow("no selection") << -1 << u"Original Archived"_s << true;
}

void FrameRateConformTest::keepsTheFrameRateWithoutOne()
{
    QFETCH(int, index);
    const Editor editor;
    editor.load(motionFile());
    editor.click(u"orgButton"_s);
    QVERIFY(editor.waitForAnimation());
    const BarSpy steps(editor, u"progressBarT"_s);
    editor.find<QComboBox>(u"frPopup"_s)->setCurrentIndex(index);
    editor.click(u"conformButton"_s);
    QTEST(editor.text(u"wasArchived"_s), "status");
    QTEST(editor.isShown(u"progressBarT"_s), "barShown");
    QCOMPARE(chosenRate(editor), 0);
    QVERIFY(editor.read(u"Intro.motn"_s) != motionFile()); // indented
    QCOMPARE(elements(editor.read(u"Intro.motn"_s)), elements(motionFile()));
    QTRY_COMPARE(steps.values(), hundredSteps() << 0);
}

void FrameRateConformTest::doesNothingWithoutATriple_data()
{
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<bool>("endsTheArchiveOffer");
    QTest::newRow("NTSC") << QByteArray("<NTSC>1</NTSC>") << true;
    QTest::newRow("duration") << QByteArray("<duration>300</duration>") << false;
    QTest::newRow("frame rate") << QByteArray("<frameRate>29.97</frameRate>") << false;
}

void FrameRateConformTest::doesNothingWithoutATriple()
{
    QFETCH(QByteArray, missing);
    QFETCH(bool, endsTheArchiveOffer);
    const Editor editor;
    editor.load(motionFile({{missing, {}}}));
    const auto before = editor.snapshot();
    const BarSpy steps(editor, u"progressBarT"_s);
    conform(editor, 4);
    QCOMPARE(editor.snapshot(), before);
    QCOMPARE(chosenRate(editor), 4);
    QCOMPARE(editor.isShown(u"orgButton"_s), !endsTheArchiveOffer);
    QVERIFY(!QTest::qWaitFor([&] { return !steps.isEmpty(); }, 50));
}

void FrameRateConformTest::asksForARateAfterTheFirstTriple()
{
    const Editor editor;
    editor.load(motionFile({{"<NTSC>1</NTSC>", "<NTSC>1</NTSC><NTSC>1</NTSC>"}}));
    conform(editor, 4);
    QCOMPARE(elements(editor.read(u"Intro.motn"_s)).filter(u"NTSC"_s).join(u' '),
             u"ozml/scene/sceneSettings/NTSC=0 ozml/scene/sceneSettings/NTSC=1"_s);
    QCOMPARE(editor.text(u"theFrames"_s), u"250"_s);
    QCOMPARE(editor.text(u"wasArchived"_s), u"Choose Framerate"_s);
    QVERIFY(!editor.isShown(u"progressBarT"_s));
}

void FrameRateConformTest::logsThatItCannotWrite()
{
    const Editor editor;
    editor.load(motionFile());
    QFile::setPermissions(editor.path(u"Intro.motn"_s), QFile::ReadOwner);
    const auto before = editor.snapshot();
    const LogLines log;
    conform(editor, 4);
    QCOMPARE(log.take(), QStringList{u"Could not write document out..."_s});
    QCOMPARE(editor.snapshot(), before);
    QCOMPARE(editor.texts({u"theFrames"_s, u"theFrameRate"_s}), (QStringList{u"250"_s, u"25"_s}));
}

void FrameRateConformTest::animatesOnce()
{
    const Editor editor;
    editor.load(motionFile());
    const BarSpy steps(editor, u"progressBarT"_s);
    QElapsedTimer time;
    time.start();
    conform(editor, 4);
    QTRY_VERIFY(steps.size() > 10);
    conform(editor, 6);
    QCOMPARE(editor.text(u"theFrames"_s), u"300"_s);
    QTRY_COMPARE(steps.values(), hundredSteps() << 0);
    QVERIFY(time.elapsed() >= 400);
    QVERIFY(editor.isShown(u"progressBarT"_s));
}

void FrameRateConformTest::sharesTheCounterWithTheInstaller()
{
    const Editor editor;
    editor.load(motionFile());
    QList<int> steps; // of both, one after the other
    for (const QString &name : {u"progressBarT"_s, u"progressBar"_s}) {
        const auto *bar = editor.find<QProgressBar>(name);
        connect(bar, &QProgressBar::valueChanged, bar, [&](int value) { steps << value; });
    }
    editor.chooseMode(0);
    editor.RunningProgram::dropFiles(u"installHint"_s, {editor.makeFolder(u"Glow"_s)});
    editor.click(u"mSendButton"_s);
    editor.chooseMode(1);
    conform(editor, 4);

    QTRY_COMPARE(steps.count(0), 2);
    QCOMPARE(steps.first(101), hundredSteps() << 0);
}

void FrameRateConformTest::writesTheFileBackAndResets_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("menu") << QString();
    QTest::newRow("sheet") << u"writeToFile"_s;
    QTest::newRow("sheet, cancelled") << u"closeConfirmSheet"_s;
}

void FrameRateConformTest::writesTheFileBackAndResets()
{
    QFETCH(QString, button);
    const Editor editor;
    editor.load(themedFile("Glow"));
    editor.find<Spinner>(u"theIndicator"_s)->startAnimation();
    if (button.isEmpty()) {
        editor.find<QAction>(u"writeToFileItem"_s)->trigger();
    } else {
        editor.find<QDialog>(u"confirmSheet"_s)->open();
        editor.click(button);
    }
    const bool isWritten = button != u"closeConfirmSheet";
    QCOMPARE(editor.read(u"Intro.motn"_s) != themedFile("Glow"), isWritten);
    QCOMPARE(elements(editor.read(u"Intro.motn"_s)), elements(themedFile("Glow")));
    for (const QString &field : {u"input1"_s, u"textField1"_s, u"display"_s})
        QCOMPARE(editor.text(field).isEmpty(), isWritten);
    QCOMPARE(editor.isShown(u"orgButton"_s), !isWritten);
    QCOMPARE(editor.isEnabled(u"tClearButton"_s), !isWritten);
    QVERIFY(!editor.find<Spinner>(u"theIndicator"_s)->isAnimating());
    QVERIFY(!editor.isShown(u"confirmSheet"_s));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, FrameRateConformTest>(argc, argv);
}

#include "FrameRateConformTest.moc"
