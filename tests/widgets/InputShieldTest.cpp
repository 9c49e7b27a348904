#include "widgets/InputShield.h"

#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"
#include "widgets/SegmentedControl.h"

#include <QAction>
#include <QProgressBar>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class InputShieldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEverythingButTheWindowsStill();
};

/// No action starts, by mouse, key, menu or screen reader, and none that runs goes on; nor does
/// what was pressed last come later.
void InputShieldTest::keepsEverythingButTheWindowsStill()
{
    const TestHome home;
    const RunningProgram program;
    program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
    program.click(u"mSendButton"_s);
    auto *input = program.find<QWidget>(u"input"_s);
    auto *window = program.find<QWidget>(u"mWindow"_s);
    auto *bar = program.find<QProgressBar>(u"progressBar"_s);
    QTRY_VERIFY(bar->value() > 0);
    const int value = bar->value();
    program.drag(u"installHint"_s, {home.path()}); // and lets go when the shield is up
    {
        InputShield shield;
        bool isAlive = false;
        QTimer::singleShot(30ms, window, [&] { isAlive = true; });
        while (!isAlive)
            shield.refreshWindows();
        program.chooseMode(1);
        program.pressKey(u"input"_s, Qt::Key_A);
        program.dropFiles(u"installHint"_s, {home.path(u"Glow"_s)});
        program.find<QAction>(u"openLogsWindowItem"_s)->trigger();
        program.find<SegmentedControl>(u"segController"_s)->button(1)->click();
        QVERIFY(!window->close());
        QCoreApplication::postEvent(
            input, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s));
    }
    QCOMPARE(bar->value(), value);
    QVERIFY(program.isShown(u"addButton"_s) && !program.isShown(u"logWindow"_s));
    QCoreApplication::processEvents();
    QCOMPARE(program.text(u"input"_s), QString());
    QTRY_VERIFY(bar->value() > value);
    program.pressKey(u"input"_s, Qt::Key_A);
    program.chooseMode(1);
    QVERIFY(program.text(u"input"_s) == u"a" && !program.isShown(u"addButton"_s));
}

QTEST_MAIN(InputShieldTest)

#include "InputShieldTest.moc"
