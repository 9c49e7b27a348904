#include "history/InstallationRecord.h"
#include "settings/SettingsStore.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QProgressBar>
#include <QSignalSpy>
#include <QTableView>

using namespace Qt::StringLiterals;

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

} // namespace

class InstallationHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsWhatIsChosenAtTheEnd();
    void runsOneAnimationForTwoInstalls();
    void leavesOutWhatIsNoRecord();
    void asksBeforeItResets();
};

/// The category that is selected then, and the template of the last sheet, also a cancelled one.
void InstallationHistoryTest::recordsWhatIsChosenAtTheEnd()
{
    const LibraryHome home;
    const RunningProgram program;
    SettingsStore store;
    std::ignore = appendInstallation({u"stored meanwhile"_s});
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    for (const QString &control :
         {u"mNewCatButton"_s, u"closeSheet"_s, u"mSendButton"_s, u"effectsChoice"_s})
        program.click(control);
    QCOMPARE(shownLines(program), QStringList());
    QTRY_COMPARE(shownLines(program).size(), 2);
    QCOMPARE(shownLines(program).at(0), u"stored meanwhile"_s);
    QCOMPARE(shownLines(program).at(1).mid(19), u" Effects   Glow"_s);
    QCOMPARE(installationRecords(store.object(SettingsStore::installations)).size(), 2);
}

void InstallationHistoryTest::runsOneAnimationForTwoInstalls()
{
    const LibraryHome home;
    const RunningProgram program;
    QSignalSpy bar(program.find<QProgressBar>(u"progressBar"_s), &QProgressBar::valueChanged);
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.install();
    QTRY_VERIFY(bar.size() > 50);
    program.chooseTitle(home.makeFolder(u"Desktop/Shine"_s));
    program.install();
    QTRY_COMPARE(shownLines(program).size(), 1);
    QVERIFY(!bar.wait(50)); // a second timer would count on
    QCOMPARE(bar.size(), 101);
    QCOMPARE(bar.last().first().toInt(), 0);
    QCOMPARE(home.names(u"Desktop"_s), QStringList());
}

void InstallationHistoryTest::leavesOutWhatIsNoRecord()
{
    const QVariantMap record{{u"installations"_s, u"a line"_s}};
    const QVariantMap other{{u"something"_s, u"else"_s}};
    QCOMPARE(installationRecords(record).size(), 0);
    const auto records = installationRecords(QVariantList{u"text"_s, other, record, QVariant(), 5});
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.at(0).line, u"a line"_s);
}

void InstallationHistoryTest::asksBeforeItResets()
{
    const TestHome home;
    SettingsStore store;
    std::ignore = appendInstallation({u"a line"_s});
    const RunningProgram program;
    for (const QString &control : {u"openLogsWindow"_s, u"logResetButton"_s})
        program.click(control);
    program.pressKey(u"logSheet"_s, Qt::Key_Escape);
    QVERIFY(!program.isShown(u"logSheet"_s) && program.isEnabled(u"logResetButton"_s));
    QCOMPARE(shownLines(program), QStringList(u"a line"_s));
    QVERIFY(store.object(SettingsStore::installations).isValid());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallationHistoryTest>(argc, argv);
}

#include "InstallationHistoryTest.moc"
