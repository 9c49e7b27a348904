#include "Scene.h"

#include "HomeItem.h"
#include "widgets/ProgressAnimation.h"
#include "widgets/SegmentedControl.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QThreadPool>
#include <QTimerEvent>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A step's words, and what it works on.
struct Step
{
    const RunningProgram &program;
    ChangeList &changes;
    const TestHome &home;
    QString verb;
    QString name;     // the first word behind it
    QString argument; // all words behind it
    QString rest;     // but for the first one

    [[nodiscard]] QStringList paths() const
    {
        QStringList paths;
        for (const QString &path : rest.split(u' ', Qt::SkipEmptyParts))
            paths << home.path(path);
        return paths;
    }
};

/// Without the focus that a mouse would bring.
void press(QAbstractButton *button)
{
    if (button->isVisible())
        button->click();
}

void pressKey(QWidget *control, const QString &keys)
{
    const QKeyCombination key = QKeySequence(keys)[0];
    if (control)
        QTest::keyClick(control, key.key(), key.keyboardModifiers());
    else
        QTest::keyClick(QGuiApplication::focusWindow(), key.key(), key.keyboardModifiers());
    const auto isDown = [](const QWidget *each) {
        const auto *button = qobject_cast<const QAbstractButton *>(each);
        return button && button->isDown();
    };
    // A shortcut holds its button down for a moment.
    QVERIFY(
        QTest::qWaitFor([&] { return std::ranges::none_of(QApplication::allWidgets(), isDown); }));
}

/// Another window comes to the front, and goes.
void goAway(QWidget *window)
{
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    other.close();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

/// One step of each bar that runs; false when none does.
bool tick(const RunningProgram &program)
{
    bool isRunning = false;
    for (const QString &bar : {u"progressBar"_s, u"progressBarT"_s}) {
        const auto *animation = program.find<QWidget>(bar)->findChild<ProgressAnimation *>();
        if (!animation->isRunning())
            continue;
        isRunning = true;
        auto *timer = animation->findChild<QTimer *>();
        QTimerEvent event(timer->timerId());
        static_cast<QObject *>(timer)->event(&event); // past the filter that holds the bars
    }
    return isRunning;
}

int ticksToRest(const RunningProgram &program)
{
    int ticks = 0;
    while (tick(program))
        ++ticks;
    return ticks;
}

/// Until the card has nothing to wait for or to read any more.
void settleCard(const RunningProgram &program)
{
    auto *delay =
        program.find<QWidget>(u"dropZone"_s)->findChild<QTimer *>({}, Qt::FindDirectChildrenOnly);
    delay->setInterval(0);
    do {
        while (delay->isActive())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    } while (delay->isActive());
}

/// False when it is no such step.
bool useControl(const Step &step)
{
    const auto &[program, changes, home, verb, name, argument, rest] = step;
    if (verb == u"click")
        press(program.find<QAbstractButton>(name));
    else if (verb == u"segment")
        press(program.find<SegmentedControl>(name)->button(rest.toInt()));
    else if (verb == u"focus")
        program.find<QWidget>(name)->setFocus();
    else if (verb == u"open")
        program.find<QDialog>(name)->open();
    else if (verb == u"menu")
        program.find<QAction>(name)->trigger();
    else if (verb == u"key")
        pressKey(program.find<QWidget>(name), rest);
    else if (verb == u"press")
        pressKey(nullptr, name);
    else if (verb == u"type")
        program.type(name, rest);
    else if (verb == u"pick")
        program.find<QComboBox>(name)->setCurrentIndex(rest.toInt());
    else if (verb == u"drop")
        program.dropFiles(name, step.paths());
    else if (verb == u"drag")
        program.drag(name, step.paths());
    else if (verb == u"leave")
        program.leave(name);
    else if (verb == u"set")
        program.find<QWidget>(name)->setProperty("text", rest);
    else if (verb == u"close")
        program.find<QWidget>(name)->close();
    else if (verb == u"minimize")
        program.find<QWidget>(name)->showMinimized();
    else if (verb == u"shrink")
        program.find<QWidget>(name)->resize(1, 1);
    else
        return false;
    return true;
}

bool useSurroundings(const Step &step)
{
    const auto &[program, changes, home, verb, name, argument, rest] = step;
    if (verb == u"clipboard")
        QApplication::clipboard()->setText(QString(argument)
                                               .replace(u"\\s"_s, u" "_s)
                                               .replace(u"\\n"_s, u"\n"_s)
                                               .replace(u"HOME"_s, home.path()));
    else if (verb == u"away")
        goAway(program.find<QWidget>(u"mWindow"_s));
    else if (verb == u"has")
        putIntoHome(home, argument);
    else if (verb == u"remove")
        return QDir(home.path(argument)).removeRecursively();
    else if (verb == u"hide")
        return QFile::rename(home.path(rest), home.path(name)) &&
               QFile::link(home.path(name), home.path(rest));
    else if (verb == u"panel")
        changes.answerPanel(name.isEmpty() ? QString() : home.path(argument));
    else if (verb == u"tick")
        for (int n = 0; n < name.toInt(); ++n)
            std::ignore = tick(program);
    else if (verb == u"rest")
        changes.happen(u"ticks %1"_s.arg(ticksToRest(program)));
    else if (verb == u"launch")
        changes.forgetStates();
    else if (verb == u"unread")
        changes.withholdReading();
    else if (verb == u"card") {
        settleCard(program);
        changes.watchCard();
    } else
        return false;
    return true;
}

} // namespace

Scene::Furnished::Furnished(const QStringList &items)
{
    for (const QString &item : items)
        putIntoHome(*this, item);
}

Scene::Scene(const QStringList &items) : m_home(items) {}

void Scene::perform(const QString &steps)
{
    for (const QString &step : steps.split(u", "_s, Qt::SkipEmptyParts)) {
        const QString argument =
            step.section(u' ', 1).replace(u"LIB"_s, u"Movies/Motion Templates.localized"_s);
        const Step words{m_program,
                         m_changes,
                         m_home,
                         step.section(u' ', 0, 0),
                         argument.section(u' ', 0, 0),
                         argument,
                         argument.section(u' ', 1)};
        QVERIFY2(useControl(words) || useSurroundings(words),
                 qUtf8Printable(u"no step: "_s + step));
        QVERIFY(QTest::qWaitFor([&] { return words.verb == u"panel" || m_changes.isAnswered(); }));
    }
}
