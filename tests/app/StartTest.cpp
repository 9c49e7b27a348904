#include "app/SettingsStore.h"
#include "history/InstallationRecord.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"
#include "widgets/DateField.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QDateTime lastBackup(QDate(2024, 2, 29), QTime(13, 5, 7));

/// What an earlier run left behind.
int writeSettings(const QStringList &arguments)
{
    SettingsStore store;
    store.setObject(u"/backups/No, 1; \"ü\""_s, SettingsStore::theAppBackupPath);
    store.setObject(lastBackup, SettingsStore::theLastBackupDate);
    store.setObject(u"2024"_s, SettingsStore::theFolder8899);
    for (int record = 1; record <= arguments.first().toInt(); ++record)
        appendInstallation(store, {u"%1, Titles   Glow"_s.arg(record)});
    return 0;
}

} // namespace

class StartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsInstallModeWithEverythingEmpty();
    void makesTheArchiveFolder_data();
    void makesTheArchiveFolder();
    void showsSettingsOfAnEarlierRun();
    void switchesModes();
    void endsWithItsWindow_data();
    void endsWithItsWindow();
};

void StartTest::showsInstallModeWithEverythingEmpty()
{
    const TestHome home;
    const RunningProgram program;
    for (const auto &name : {"mSendButton", "clearButton", "mNewCatButton", "tClearButton",
                             "element", "frPopup", "conformButton", "setButton"})
        QVERIFY2(!program.isEnabled(QLatin1StringView(name)), name);
    for (const auto &name : {"hidden", "orgButton", "renameButton", "theBackupButton"})
        QVERIFY2(!program.isShown(QLatin1StringView(name)), name);
    for (const auto &name : {"input",           "test",           "textField",
                             "mirroredPath",    "theReQueue",     "theLastPathComponent",
                             "existsTextField", "backupPath",     "lastBackupDate",
                             "pleaseWait",      "theFolderImage", "logsHelpField",
                             "logSource",       "textField1",     "input1",
                             "display",         "element",        "typeText",
                             "theFrames",       "theFrameRate",   "theDuration",
                             "secFloat",        "resOutput",      "wasArchived",
                             "newNameWarning"})
        QVERIFY2(program.text(QLatin1StringView(name)).isEmpty(), name);
    QVERIFY(program.isShown(u"addButton"_s));
    QVERIFY(program.isEnabled(u"oFile"_s));
    QVERIFY(program.find<QLabel>(u"statusImage"_s)->pixmap(Qt::ReturnByValue).isNull());
    QCOMPARE(program.find<QComboBox>(u"frPopup"_s)->currentIndex(), 0);
    QCOMPARE(program.find<QStackedWidget>(u"theTabView"_s)->currentIndex(), 0);
    QCOMPARE(program.find<QTableView>(u"theTable"_s)->model()->rowCount(), 0);
}

void StartTest::makesTheArchiveFolder_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("made");
    const QStringList documents{u"Documents"_s};
    const QStringList nothing;
    QTest::newRow("in Documents") << documents << nothing << QStringList{u"Documents/Brimvale"_s};
    QTest::newRow("but no Documents") << nothing << nothing << nothing;
    QTest::newRow("unless Documents is a file") << nothing << documents << nothing;
    QTest::newRow("unless it is there")
        << documents << QStringList{u"Documents/Brimvale/old.motn"_s} << nothing;
    QTest::newRow("unless a file is there")
        << documents << QStringList{u"Documents/Brimvale"_s} << nothing;
}

void StartTest::makesTheArchiveFolder()
{
    QFETCH(const QStringList, folders);
    QFETCH(const QStringList, files);
    QFETCH(const QStringList, made);
    const TestHome home;
    for (const QString &folder : folders)
        home.makeFolder(folder);
    for (const QString &file : files)
        home.makeFile(file);
    const auto before = home.snapshot();

    const AlertAnswerer alerts;
    const RunningProgram program;
    QCOMPARE(home.changesSince(before), made);
    QCOMPARE(alerts.seen.size(), 0);
}

void StartTest::showsSettingsOfAnEarlierRun()
{
    for (const int records : {0, 1, 2, 300}) {
        const TestHome home;
        QCOMPARE(runChild(u"writeSettings"_s, {QString::number(records)}).exitCode, 0);
        const RunningProgram program;
        QCOMPARE(program.text(u"backupPath"_s), u"/backups/No, 1; \"ü\""_s);
        QCOMPARE(program.text(u"theFolderImage"_s), u"2024"_s);
        QVERIFY(program.text(u"lastBackupDate"_s).contains(u"2024"_s));
        const QVariant date = program.find<DateField>(u"lastBackupDate"_s)->objectValue();
        QCOMPARE(date.metaType(), QMetaType::fromType<QDateTime>());
        QCOMPARE(date.toDateTime(), lastBackup);
        QVERIFY(!program.isShown(u"theBackupButton"_s));
        const QAbstractItemModel *table = program.find<QTableView>(u"theTable"_s)->model();
        QCOMPARE(table->rowCount(), records);
        for (int row = 0; row < records; ++row)
            QCOMPARE(table->index(row, 0).data().toString(), u"%1, Titles   Glow"_s.arg(row + 1));
    }
}

void StartTest::switchesModes()
{
    const TestHome home;
    const RunningProgram program;
    program.type(u"input"_s, u"/some/Glow"_s);
    const auto *modules = program.find<QStackedWidget>(u"theTabView"_s);
    auto *renameButton = program.find<QWidget>(u"renameButton"_s);
    for (int round = 0; round < 2; ++round) {
        renameButton->setEnabled(true);
        program.chooseMode(1);
        QCOMPARE(modules->currentIndex(), modules->count() - 1);
        QVERIFY(!program.isShown(u"addButton"_s));
        QVERIFY(program.isShown(u"renameButton"_s));
        QVERIFY(!renameButton->isEnabled());
        program.chooseMode(0);
        QCOMPARE(modules->currentIndex(), 0);
        QVERIFY(program.isShown(u"addButton"_s));
        QVERIFY(!program.isShown(u"renameButton"_s));
        QVERIFY(!renameButton->isEnabled());
    }
    QCOMPARE(program.text(u"input"_s), u"/some/Glow"_s);
}

void StartTest::endsWithItsWindow_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::newRow("alone") << QStringList();
    QTest::newRow("beside the log window") << QStringList{u"openLogsWindow"_s};
    QTest::newRow("under a sheet") << QStringList{u"openHelpSheet"_s};
    QTest::newRow("while the library is about to be made")
        << QStringList{u"runPrefsWindow"_s, u"createFolderStructure"_s};
}

void StartTest::endsWithItsWindow()
{
    QFETCH(const QStringList, clicks);
    const TestHome home;
    const RunningProgram program;
    QTimer::singleShot(0ms, this, [&] {
        for (const QString &control : clicks)
            program.click(control);
    });
    QTimer::singleShot(100ms, this, [&] { program.find<QWidget>(u"mWindow"_s)->close(); });
    QTimer tooLate;
    connect(&tooLate, &QTimer::timeout, this, [] { QCoreApplication::exit(1); });
    tooLate.start(1000ms);
    QCOMPARE(QApplication::exec(), 0);
}

int main(int argc, char *argv[])
{
    return runTestOrChild<QApplication, StartTest>(argc, argv,
                                                   {{u"writeSettings"_s, writeSettings}});
}

#include "StartTest.moc"
