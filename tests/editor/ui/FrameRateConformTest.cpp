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

const QString couldNotWrite = u"Could not write document out..."_s;

/// The pop-up's item by the keyboard, then the button by the mouse.
void conform(const Editor &editor, int index)
{
    auto *rates = editor.find<QComboBox>(u"frPopup"_s);
    rates->setFocus();
    for (int step = 0; step < index; ++step)
        QTest::keyClick(rates, Qt::Key_Down);
    QCOMPARE(rates->currentIndex(), index);
    editor.click(u"conformButton"_s);
}

int chosenRate(const Editor &editor)
{
    return editor.find<QComboBox>(u"frPopup"_s)->currentIndex();
}

/// frameRate, duration and NTSC of a file.
QStringList triple(const QByteArray &file)
{
    return texts(file, u"frameRate"_s) + texts(file, u"duration"_s) + texts(file, u"NTSC"_s);
}

QList<int> values(const QSignalSpy &spy)
{
    QList<int> list;
    for (const QVariantList &arguments : spy)
        list << arguments.first().toInt();
    return list;
}

/// The value of a progress bar while its animation runs from an empty counter.
QList<int> wholeAnimation()
{
    QList<int> steps(100);
    std::iota(steps.begin(), steps.end(), 1);
    return steps << 0;
}

} // namespace

class FrameRateConformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conformsToEachRate_data();
    void conformsToEachRate();
    void writesTheSameUnderEveryLocale();
    void keepsTheFrameRateWithoutOne_data();
    void keepsTheFrameRateWithoutOne();
    void doesNothingWithoutATriple_data();
    void doesNothingWithoutATriple();
    void changesTheFirstTripleOnly_data();
    void changesTheFirstTripleOnly();
    void saysInTheLogThatItCannotWrite_data();
    void saysInTheLogThatItCannotWrite();
    void animatesOnce();
    void sharesTheCounterWithTheInstaller();
    void writesTheFileBackAndResets();
    void closesTheConfirmationSheet_data();
    void closesTheConfirmationSheet();
};

void FrameRateConformTest::conformsToEachRate_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("frames");
    QTest::newRow("15") << 1 << u"15"_s << u"150"_s;
    QTest::newRow("23.98") << 2 << u"23.98"_s << u"239.8"_s;
    QTest::newRow("24") << 3 << u"24"_s << u"240"_s;
    QTest::newRow("25") << 4 << u"25"_s << u"250"_s;
    QTest::newRow("29.97") << 5 << u"29.97"_s << u"299.7"_s;
    QTest::newRow("30") << 6 << u"30"_s << u"300"_s;
    QTest::newRow("50") << 7 << u"50"_s << u"500"_s;
    QTest::newRow("59.94") << 8 << u"59.94"_s << u"599.4"_s;
    QTest::newRow("60") << 9 << u"60"_s << u"600"_s;
}

void FrameRateConformTest::conformsToEachRate()
{
    QFETCH(int, index);
    QFETCH(QString, rate);
    QFETCH(QString, frames);
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    editor.click(u"orgButton"_s);
    conform(editor, index);

    QStringList expected = elements(motionFile());
    expected.replaceInStrings(u"frameRate=29.97"_s, u"frameRate="_s + rate)
        .replaceInStrings(u"duration=300"_s, u"duration="_s + frames)
        .replaceInStrings(u"NTSC=1"_s, u"NTSC=0"_s);
    QCOMPARE(elements(home.read(u"Intro.motn"_s)), expected);
    QCOMPARE(editor.text(u"theFrameRate"_s), rate);
    QCOMPARE(editor.text(u"theFrames"_s), frames);
    QCOMPARE(editor.text(u"theDuration"_s), u"10.0 seconds"_s);
    QCOMPARE(chosenRate(editor), 0);
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(editor.isShown(u"progressBarT"_s));
    QCOMPARE(editor.text(u"dateTextField"_s) + editor.text(u"wasArchived"_s), QString());
}

void FrameRateConformTest::writesTheSameUnderEveryLocale()
{
    // What QApplication does at the start in a German session, where that locale is installed.
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German));
    {
        TestHome home;
        const Editor editor;
        editor.drop(
            {home.makeFile(u"Intro.motn"_s, motionFile({{"300<", "297<"}, {"29.97", "30"}}))});
        QCOMPARE(editor.text(u"theDuration"_s), u"9.9 seconds"_s);
        conform(editor, 5);
        QCOMPARE(editor.text(u"theFrames"_s), u"296.703"_s);
        QCOMPARE(triple(home.read(u"Intro.motn"_s)),
                 (QStringList{u"29.97"_s, u"296.703"_s, u"0"_s}));
    }
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_ALL, before.constData());
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
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    editor.click(u"orgButton"_s);
    QVERIFY(editor.waitForAnimation());
    const QSignalSpy steps(editor.find<QProgressBar>(u"progressBarT"_s),
                           &QProgressBar::valueChanged);
    editor.find<QComboBox>(u"frPopup"_s)->setCurrentIndex(index);
    editor.click(u"conformButton"_s);

    QTEST(editor.text(u"wasArchived"_s), "status");
    QTEST(editor.isShown(u"progressBarT"_s), "barShown");
    QCOMPARE(chosenRate(editor), 0);
    QVERIFY(home.read(u"Intro.motn"_s) != motionFile()); // indented
    QCOMPARE(elements(home.read(u"Intro.motn"_s)), elements(motionFile()));
    QTRY_COMPARE(values(steps), wholeAnimation());
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
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile({{missing, {}}}))});
    const auto before = home.snapshot();
    const QSignalSpy steps(editor.find<QProgressBar>(u"progressBarT"_s),
                           &QProgressBar::valueChanged);
    conform(editor, 4);
    QCOMPARE(home.snapshot(), before);
    QCOMPARE(chosenRate(editor), 4);
    QCOMPARE(editor.isShown(u"orgButton"_s), !endsTheArchiveOffer);
    QVERIFY(!QTest::qWaitFor([&] { return !steps.isEmpty(); }, 50));
}

void FrameRateConformTest::changesTheFirstTripleOnly_data()
{
    QTest::addColumn<QByteArray>("twice");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("NTSC") << QByteArray("<NTSC>1</NTSC>")
                          << QStringList{u"25"_s, u"250"_s, u"0"_s, u"1"_s};
    QTest::newRow("duration") << QByteArray("<duration>300</duration>")
                              << QStringList{u"25"_s, u"250"_s, u"300"_s, u"0"_s};
    QTest::newRow("frame rate") << QByteArray("<frameRate>29.97</frameRate>")
                                << QStringList{u"25"_s, u"29.97"_s, u"250"_s, u"0"_s};
}

void FrameRateConformTest::changesTheFirstTripleOnly()
{
    QFETCH(QByteArray, twice);
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile({{twice, twice + twice}}))});
    conform(editor, 4);
    QTEST(triple(home.read(u"Intro.motn"_s)), "expected");
    QCOMPARE(editor.text(u"theFrames"_s), u"250"_s);
    QCOMPARE(editor.text(u"wasArchived"_s), u"Choose Framerate"_s);
    QVERIFY(!editor.isShown(u"progressBarT"_s));
}

void FrameRateConformTest::saysInTheLogThatItCannotWrite_data()
{
    QTest::addColumn<QString>("readOnly");
    QTest::newRow("file") << u"Folder/Intro.motn"_s;
    QTest::newRow("folder") << u"Folder"_s;
}

void FrameRateConformTest::saysInTheLogThatItCannotWrite()
{
    QFETCH(QString, readOnly);
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Folder/Intro.motn"_s, motionFile())});
    const auto mode = QFile::permissions(home.path(readOnly));
    QFile::setPermissions(home.path(readOnly), QFile::ReadOwner | QFile::ExeOwner);
    const auto before = home.snapshot();
    const LogLines log;
    conform(editor, 4);
    QCOMPARE(log.take(), QStringList{couldNotWrite});
    QCOMPARE(home.snapshot(), before);
    QCOMPARE(editor.text(u"theFrames"_s), u"250"_s);
    QCOMPARE(editor.text(u"theFrameRate"_s), u"25"_s);
    QFile::setPermissions(home.path(readOnly), mode);
}

void FrameRateConformTest::animatesOnce()
{
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    auto *bar = editor.find<QProgressBar>(u"progressBarT"_s);
    const QSignalSpy steps(bar, &QProgressBar::valueChanged);
    QElapsedTimer time;
    time.start();
    conform(editor, 4);
    QTRY_VERIFY(bar->value() > 10);
    conform(editor, 6);
    QTRY_COMPARE(values(steps), wholeAnimation());
    QVERIFY(time.elapsed() >= 101 * 4 - 4);
    QVERIFY(editor.isShown(u"progressBarT"_s));
    QCOMPARE(texts(home.read(u"Intro.motn"_s), u"frameRate"_s), QStringList{u"30"_s});
}

void FrameRateConformTest::sharesTheCounterWithTheInstaller()
{
    TestHome home;
    home.makeFolder(u"Movies/Motion Templates.localized/Titles.localized"_s);
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    const QSignalSpy steps(editor.find<QProgressBar>(u"progressBarT"_s),
                           &QProgressBar::valueChanged);
    const QSignalSpy installSteps(editor.find<QProgressBar>(u"progressBar"_s),
                                  &QProgressBar::valueChanged);
    editor.chooseMode(0);
    editor.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
    editor.click(u"titlesChoice"_s);
    editor.click(u"mSendButton"_s);
    editor.chooseMode(1);
    conform(editor, 4);

    const auto hasEnded = [](const QSignalSpy &spy) {
        return !spy.isEmpty() && spy.last().first() == 0;
    };
    QTRY_VERIFY(hasEnded(steps) || hasEnded(installSteps));
    QList<int> both = values(steps) + values(installSteps);
    std::sort(both.begin(), both.end());
    both.removeAll(0);
    QCOMPARE(both, wholeAnimation().first(100));
    QTRY_VERIFY(hasEnded(steps) && hasEnded(installSteps));
}

void FrameRateConformTest::writesTheFileBackAndResets()
{
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, themedFile("Glow"))});
    editor.click(u"orgButton"_s);
    editor.find<Spinner>(u"theIndicator"_s)->startAnimation();
    editor.find<QAction>(u"writeToFileItem"_s)->trigger();

    const QByteArray written = home.read(u"Intro.motn"_s);
    QVERIFY(written != themedFile("Glow"));
    QCOMPARE(elements(written), elements(themedFile("Glow")));
    for (const QString &field : {u"input1"_s, u"textField1"_s, u"display"_s, u"dateTextField"_s})
        QCOMPARE(editor.text(field), QString());
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(!editor.isEnabled(u"tClearButton"_s));
    QVERIFY(!editor.find<Spinner>(u"theIndicator"_s)->isAnimating());
    QCOMPARE(editor.text(u"typeText"_s), u"motn"_s); // and the rest as it was
    QCOMPARE(editor.text(u"theFrames"_s), u"300"_s);
}

void FrameRateConformTest::closesTheConfirmationSheet_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("writes");
    QTest::newRow("save") << u"writeToFile"_s << true;
    QTest::newRow("cancel") << u"closeConfirmSheet"_s << false;
    QTest::newRow("escape") << QString() << false;
}

void FrameRateConformTest::closesTheConfirmationSheet()
{
    QFETCH(QString, button);
    QFETCH(bool, writes);
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    auto *sheet = editor.find<QDialog>(u"confirmSheet"_s);
    sheet->open();
    editor.find<Spinner>(u"theIndicator"_s)->startAnimation();
    if (button.isEmpty())
        QTest::keyClick(sheet, Qt::Key_Escape);
    else
        editor.click(button);
    QVERIFY(!sheet->isVisible());
    QVERIFY(!editor.find<Spinner>(u"theIndicator"_s)->isAnimating());
    QCOMPARE(home.read(u"Intro.motn"_s) != motionFile(), writes);
    QCOMPARE(editor.text(u"display"_s).isEmpty(), writes);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, FrameRateConformTest>(argc, argv);
}

#include "FrameRateConformTest.moc"
