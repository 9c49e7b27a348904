#include "app/SettingsStore.h"
#include "history/InstallationRecord.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTextStream>

#include <algorithm>
#include <csignal>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// What the history window shows.
QStringList shownLines(const RunningProgram &program)
{
    const QAbstractItemModel *model = program.find<QTableView>(u"theTable"_s)->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row)
        lines << model->index(row, 0).data().toString();
    return lines;
}

/// The lines that the next run of the program would find on the disk, each with its keys.
QStringList storedLines()
{
    return runChild(u"printHistory"_s).output.split(u'\n', Qt::SkipEmptyParts);
}

int printHistory(const QStringList &)
{
    QTextStream out(stdout);
    for (const QVariant &each : SettingsStore().object(SettingsStore::installations).toList()) {
        const QVariantMap record = each.toMap();
        out << QStringList(record.keys()).join(u',') << ": "
            << record.value(u"installations"_s).toString() << '\n';
    }
    return 0;
}

/// Adds as many records as it is told to the history.
int addRecords(const QStringList &arguments)
{
    QVariantList records = SettingsStore().object(SettingsStore::installations).toList();
    for (int record = 1; record <= arguments.first().toInt(); ++record)
        records << QVariantMap{{u"installations"_s, u"%1 Titles   Glow"_s.arg(record)}};
    SettingsStore().setObject(records, SettingsStore::installations);
    return 0;
}

/// Resets the history as the user does, and is killed at once.
int resetAndDie(const QStringList &)
{
    const RunningProgram program;
    for (const QString &control : {u"openLogsWindow"_s, u"logResetButton"_s, u"clearLogs"_s})
        program.click(control);
    return std::raise(SIGKILL);
}

/// Until the running animation has come to its end and its record is made.
bool waitForTheEnd(const RunningProgram &program)
{
    QEventLoop loop; // QTest's own waiting would slow the timer down
    QObject::connect(program.find<QProgressBar>(u"progressBar"_s), &QProgressBar::valueChanged,
                     &loop, [&](int value) {
                         if (value == 0)
                             loop.quit();
                     });
    QTimer::singleShot(5s, &loop, [&] { loop.exit(1); });
    return loop.exec() == 0;
}

QList<int> values(const QSignalSpy &valueChanged)
{
    QList<int> all;
    for (const QVariantList &each : valueChanged)
        all << each.constFirst().toInt();
    return all;
}

QList<int> oneToHundred()
{
    QList<int> all(100);
    std::iota(all.begin(), all.end(), 1);
    return all;
}

} // namespace

class InstallationHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsOnTick101();
    void recordsWhatIsChosenAtTheEnd_data();
    void recordsWhatIsChosenAtTheEnd();
    void runsOneAnimationForTwoInstalls();
    void countsWithTheEditor();
    void addsToWhatWasStoredMeanwhile();
    void leavesOutWhatIsNoRecord();
    void showsTenThousandRecords();
    void explainsReset();
    void asksBeforeItResets_data();
    void asksBeforeItResets();
    void resetsForGood();
};

void InstallationHistoryTest::recordsOnTick101()
{
    const LibraryHome home;
    const RunningProgram program;
    const QSignalSpy bar(program.find<QProgressBar>(u"progressBar"_s), &QProgressBar::valueChanged);
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    QElapsedTimer clock;
    clock.start();
    program.click(u"mSendButton"_s);
    QCOMPARE(shownLines(program), QStringList());
    QVERIFY(waitForTheEnd(program));
    const qint64 duration = clock.elapsed();
    QVERIFY2(duration >= 700 && duration < 1500, qPrintable(QString::number(duration)));

    QCOMPARE(values(bar), oneToHundred() + QList{0});
    const QStringList lines = shownLines(program);
    QCOMPARE(lines.size(), 1);
    const QDateTime date = QDateTime::fromString(lines.at(0).left(19), u"yyyy-MM-dd HH:mm:ss"_s);
    QVERIFY(qAbs(date.secsTo(QDateTime::currentDateTime())) <= 2);
    QCOMPARE(lines.at(0).mid(19), u" Titles   "_s);
    QCOMPARE(program.text(u"logSource"_s), QString());
    QTRY_COMPARE(storedLines(), QStringList{u"installations: "_s + lines.at(0)});
}

void InstallationHistoryTest::recordsWhatIsChosenAtTheEnd_data()
{
    QTest::addColumn<QStringList>("before"); // what is clicked with Glow chosen and Titles selected
    QTest::addColumn<QStringList>("during"); // and while the bar runs
    QTest::addColumn<QString>("record");
    const QStringList nothing;
    const QStringList cancelledSheet{u"mNewCatButton"_s, u"closeSheet"_s};
    const QStringList install{u"mSendButton"_s};
    QTest::newRow("without a sheet") << install << nothing << u"Titles   "_s;
    QTest::newRow("after a sheet") << cancelledSheet + install << nothing << u"Titles   Glow"_s;
    QTest::newRow("by a sheet") << QStringList{u"mNewCatButton"_s, u"generateCustomFolder"_s}
                                << nothing << u"Titles   Glow"_s;
    for (const auto &category : LibraryHome::categories())
        QTest::newRow(qPrintable(u"changed to "_s + category.name))
            << install << QStringList{category.choice} << category.name + u"   "_s;
    QTest::newRow("nothing selected") << install << QStringList{u"none"_s} << QString();
}

void InstallationHistoryTest::recordsWhatIsChosenAtTheEnd()
{
    QFETCH(const QStringList, before);
    QFETCH(const QStringList, during);
    QFETCH(const QString, record);
    const LibraryHome home;
    const RunningProgram program;
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    for (const QString &control : before)
        program.click(control);
    if (during == QStringList{u"none"_s}) {
        auto *matrix = program.find<QButtonGroup>(u"theMatrix"_s);
        matrix->setExclusive(false);
        matrix->checkedButton()->setChecked(false);
    } else {
        for (const QString &control : during)
            program.click(control);
    }
    QVERIFY(waitForTheEnd(program));
    const QStringList lines = shownLines(program);
    QCOMPARE(lines.size(), record.isEmpty() ? 0 : 1);
    QCOMPARE(lines.value(0).mid(20), record);
}

void InstallationHistoryTest::runsOneAnimationForTwoInstalls()
{
    const LibraryHome home;
    const RunningProgram program;
    QSignalSpy bar(program.find<QProgressBar>(u"progressBar"_s), &QProgressBar::valueChanged);
    program.installTitle(home.path(u"Desktop/Glow"_s));
    QTRY_VERIFY(bar.size() > 50);
    program.installTitle(home.makeFolder(u"Desktop/Shine"_s));
    QVERIFY(waitForTheEnd(program));
    QCOMPARE(values(bar), oneToHundred() + QList{0});
    QCOMPARE(home.names(u"Desktop"_s), QStringList());

    QVERIFY(!bar.wait(50)); // a second timer would count on
    QCOMPARE(shownLines(program).size(), 1);
}

/// Both bars advance one counter; the one that runs on takes it from the start again.
void InstallationHistoryTest::countsWithTheEditor()
{
    const LibraryHome home;
    const RunningProgram program;
    const QSignalSpy install(program.find<QProgressBar>(u"progressBar"_s),
                             &QProgressBar::valueChanged);
    const QSignalSpy edit(program.find<QProgressBar>(u"progressBarT"_s),
                          &QProgressBar::valueChanged);
    program.installTitle(home.path(u"Desktop/Glow"_s));
    program.chooseMode(1);
    program.dropFiles(u"editHint"_s, {home.makeFile(u"Glow.moti"_s, R"(<?xml version="1.0"?>
        <ozml><displayversion/><template/><scene><sceneSettings><width>1920</width>
        <height>1080</height><duration>60</duration><frameRate>30</frameRate><NTSC>0</NTSC>
        <pixelAspectRatio>1</pixelAspectRatio></sceneSettings></scene></ozml>)")});
    program.click(u"setButton"_s);
    QTRY_COMPARE(shownLines(program).size(), 1);
    QTRY_COMPARE(edit.isEmpty() ? 1 : edit.last().first().toInt(), 0);

    QVERIFY(edit.size() > 10);
    QVERIFY(install.size() > 10);
    // 100 steps, one end, 100 steps, the other end.
    QList<int> all = values(install) + values(edit);
    std::sort(all.begin(), all.end());
    QList<int> expected = oneToHundred() + oneToHundred() + QList{0, 0};
    std::sort(expected.begin(), expected.end());
    QCOMPARE(all, expected);
}

void InstallationHistoryTest::addsToWhatWasStoredMeanwhile()
{
    const LibraryHome home;
    const RunningProgram program;
    QCOMPARE(runChild(u"addRecords"_s, {u"1"_s}).exitCode, 0);
    program.installTitle(home.path(u"Desktop/Glow"_s));
    QVERIFY(waitForTheEnd(program));
    const QStringList lines = shownLines(program);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), u"1 Titles   Glow"_s);
    QTRY_COMPARE(storedLines().size(), 2);
}

void InstallationHistoryTest::leavesOutWhatIsNoRecord()
{
    const QVariantMap record{{u"installations"_s, u"a line"_s}};
    const QVariantMap other{{u"something"_s, u"else"_s}};
    QCOMPARE(installationRecords({}).size(), 0);
    QCOMPARE(installationRecords(u"text"_s).size(), 0);
    QCOMPARE(installationRecords(record).size(), 0);
    const auto records = installationRecords(QVariantList{u"text"_s, other, record, QVariant(), 5});
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.at(0).line, u"a line"_s);
}

void InstallationHistoryTest::showsTenThousandRecords()
{
    const LibraryHome home;
    QCOMPARE(runChild(u"addRecords"_s, {u"10000"_s}).exitCode, 0);
    QElapsedTimer clock;
    clock.start();
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    QVERIFY(QTest::qWaitForWindowExposed(program.find<QWidget>(u"logWindow"_s)));
    QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
    const QStringList lines = shownLines(program);
    QCOMPARE(lines.size(), 10000);
    QCOMPARE(lines.last(), u"10000 Titles   Glow"_s);

    program.installTitle(home.path(u"Desktop/Glow"_s));
    QVERIFY(waitForTheEnd(program));
    QCOMPARE(shownLines(program).size(), 10001);
}

void InstallationHistoryTest::explainsReset()
{
    const TestHome home;
    const RunningProgram program;
    const QString explanation = u"Reset will permanently remove history."_s;
    program.click(u"openLogsWindow"_s);
    QTRY_VERIFY(program.find<QWidget>(u"logWindow"_s)->isActiveWindow());
    program.click(u"helpButton"_s);
    QCOMPARE(program.text(u"logsHelpField"_s), explanation);
    program.find<QWidget>(u"logWindow"_s)->close();

    program.click(u"openLogsWindow"_s);
    auto *box = program.find<QCheckBox>(u"helpButton"_s);
    QVERIFY(!box->isChecked());
    QCOMPARE(program.text(u"logsHelpField"_s), explanation);
    program.click(u"helpButton"_s);
    QCOMPARE(program.text(u"logsHelpField"_s), explanation);
    program.click(u"helpButton"_s);
    QCOMPARE(program.text(u"logsHelpField"_s), QString());
}

void InstallationHistoryTest::asksBeforeItResets_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("resets");
    QTest::newRow("cancelled") << u"closeLogSheet"_s << false;
    QTest::newRow("cancelled by Escape") << u"Escape"_s << false;
    QTest::newRow("confirmed") << u"clearLogs"_s << true;
}

void InstallationHistoryTest::asksBeforeItResets()
{
    QFETCH(const QString, answer);
    QFETCH(const bool, resets);
    const TestHome home;
    QCOMPARE(runChild(u"addRecords"_s, {u"3"_s}).exitCode, 0);
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    program.click(u"logResetButton"_s);
    const auto *sheet = program.find<QWidget>(u"logSheet"_s);
    QVERIFY(sheet->isVisible());
    QCOMPARE(sheet->windowModality(), Qt::WindowModal);
    QCOMPARE(sheet->parentWidget(), program.find<QWidget>(u"logWindow"_s));
    QVERIFY(!program.isEnabled(u"logResetButton"_s) && !program.isEnabled(u"helpButton"_s));

    if (answer == u"Escape")
        program.pressKey(u"logSheet"_s, Qt::Key_Escape);
    else
        program.click(answer);
    QVERIFY(!sheet->isVisible());
    QVERIFY(program.isEnabled(u"logResetButton"_s) && program.isEnabled(u"helpButton"_s));
    QCOMPARE(shownLines(program).size(), resets ? 0 : 3);
    QCOMPARE(storedLines().size(), resets ? 0 : 3);
}

void InstallationHistoryTest::resetsForGood()
{
    const TestHome home;
    SettingsStore().setObject(u"/backups"_s, SettingsStore::theAppBackupPath);
    for (const QString &records : {u"0"_s, u"1000"_s}) {
        QCOMPARE(runChild(u"addRecords"_s, {records}).exitCode, 0);
        QCOMPARE(runChild(u"resetAndDie"_s).exitCode, -1);
        QVERIFY(!SettingsStore().object(SettingsStore::installations).isValid());
        QCOMPARE(SettingsStore().object(SettingsStore::theAppBackupPath), u"/backups"_s);
    }
}

int main(int argc, char *argv[])
{
    return runTestOrChild<QApplication, InstallationHistoryTest>(argc, argv,
                                                                 {{u"printHistory"_s, printHistory},
                                                                  {u"addRecords"_s, addRecords},
                                                                  {u"resetAndDie"_s, resetAndDie}});
}

#include "InstallationHistoryTest.moc"
