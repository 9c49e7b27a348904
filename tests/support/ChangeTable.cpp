#include "ChangeTable.h"

#include "widgets/SegmentedControl.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QProgressBar>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString library = u"Movies/Motion Templates.localized"_s;

/// The lines, where each that starts with a blank goes on with the one before.
QStringList joinedLines(const QString &table)
{
    QStringList lines;
    for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith("        "_L1) && !lines.isEmpty())
            lines.last() += u' ' + line.trimmed();
        else
            lines << line;
    }
    return lines;
}

bool isResting(const RunningProgram &program)
{
    return program.find<QProgressBar>(u"progressBar"_s)->value() == 0 &&
           program.find<QProgressBar>(u"progressBarT"_s)->value() == 0;
}

/// Whether the bars come to rest, or to run; without a sleep, so that they take their own time.
bool waitFor(bool rest, const RunningProgram &program)
{
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(5s);
    while (isResting(program) != rest && deadline.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isResting(program) == rest;
}

/// Without the focus that a mouse would bring.
void press(QAbstractButton *button)
{
    if (button->isVisible())
        button->click();
}

void perform(const RunningProgram &program, ChangeList &changes, const TestHome &home,
             const QString &step)
{
    const QString verb = step.section(u' ', 0, 0);
    const QString name = step.section(u' ', 1, 1);
    const QString argument = QString(step.section(u' ', 1)).replace(u"LIB"_s, library);
    const QString rest = argument.section(u' ', 1);
    QStringList paths;
    for (const QString &path : rest.split(u' ', Qt::SkipEmptyParts))
        paths << home.path(path);
    if (verb == u"click")
        press(program.find<QAbstractButton>(name));
    else if (verb == u"segment")
        press(program.find<SegmentedControl>(name)->button(rest.toInt()));
    else if (verb == u"launch")
        changes.forgetStates();
    else if (verb == u"focus")
        program.find<QWidget>(name)->setFocus();
    else if (verb == u"open")
        program.find<QDialog>(name)->open();
    else if (verb == u"menu")
        program.find<QAction>(name)->trigger();
    else if (verb == u"key")
        program.pressKey(name, static_cast<Qt::Key>(QKeySequence(rest)[0].key()));
    else if (verb == u"type")
        program.type(name, rest);
    else if (verb == u"mode")
        program.chooseMode(name.toInt());
    else if (verb == u"pick")
        program.find<QComboBox>(name)->setCurrentIndex(rest.toInt());
    else if (verb == u"drop")
        program.dropFiles(name, paths);
    else if (verb == u"drag")
        program.drag(name, paths);
    else if (verb == u"leave")
        program.leave(name);
    else if (verb == u"set")
        QVERIFY(program.find<QWidget>(name)->setProperty("text", rest));
    else if (verb == u"remove")
        QVERIFY(QDir(home.path(argument)).removeRecursively());
    else if (verb == u"hide")
        QVERIFY(QFile::rename(home.path(rest), home.path(name)) &&
                QFile::link(home.path(name), home.path(rest)));
    else if (verb == u"close")
        program.find<QWidget>(name)->close();
    else if (verb == u"panel")
        changes.answerPanel(name.isEmpty() ? QString() : home.path(argument));
    else if (verb == u"rest")
        QVERIFY(waitFor(false, program) && waitFor(true, program));
    else
        QFAIL(qUtf8Printable(u"no such step: "_s + step));
    QVERIFY(QTest::qWaitFor([&] { return verb == u"panel" || changes.isAnswered(); }));
}

} // namespace

void ChangeTable::addRows(const QString &file)
{
    QFile table(QStringLiteral(BRIMVALE_TESTS_FOLDER "/") + file);
    if (!table.open(QIODevice::ReadOnly))
        qFatal("there is no table %s", qUtf8Printable(file));
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("changes");
    QMap<QString, QString> named = {{u"start"_s, {}}};
    const auto expand = [&](QString text) {
        for (auto each = named.begin(); each != named.end(); ++each)
            text.replace(u'$' + each.key(), each.value());
        return text;
    };
    for (const QString &line : joinedLines(QString::fromUtf8(table.readAll()))) {
        const QStringList cells = line.split(u'|');
        if (const qsizetype sign = line.indexOf(u" := "_s); sign > 0) {
            named.insert(line.first(sign).trimmed(), expand(line.mid(sign + 4)).simplified());
            continue;
        }
        const QString start = cells.at(0).simplified();
        QStringList steps = start.split(u", "_s);
        for (QString &step : steps)
            step = named.value(step, step);
        const QString action = cells.value(1).simplified();
        QTest::newRow(qUtf8Printable(start + u": "_s + action))
            << steps.join(u", "_s) << action << expand(line.section(u'|', 2));
    }
}

void ChangeTable::run(const TestHome &home)
{
    QFETCH(const QString, start);
    QFETCH(const QString, action);
    QFETCH(const QString, changes);
    const RunningProgram program;
    ChangeList list(home);
    for (const QString &step : start.split(u", "_s, Qt::SkipEmptyParts)) {
        perform(program, list, home, step);
        if (QTest::currentTestFailed())
            return;
    }
    std::ignore = list.take();
    for (const QString &step : action.split(u", "_s))
        perform(program, list, home, step);
    // What starts a bar shows at its first step.
    if (changes.contains("run progressBar"_L1))
        QVERIFY(waitFor(false, program));
    const QStringList expected = ChangeList::parsed(changes);
    const QStringList all = list.take();
    QStringList missing = expected;
    QStringList more = all;
    for (const QString &each : all)
        missing.removeOne(each);
    for (const QString &each : expected)
        more.removeOne(each);
    QVERIFY2(all == expected,
             qUtf8Printable(u"\n   missing: "_s + missing.join(u"; "_s) + u"\n   too many: "_s +
                            more.join(u"; "_s) + u"\n   all: "_s + all.join(u"; "_s)));
}
