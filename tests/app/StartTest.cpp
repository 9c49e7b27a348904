#include "settings/SettingsStore.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"
#include "widgets/DateField.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class StartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsSettingsOfAnEarlierRun();
    void endsWithItsWindow();
};

void StartTest::showsSettingsOfAnEarlierRun()
{
    const QDateTime date(QDate(2024, 2, 29), QTime(13, 5, 7));
    const TestHome earlier;
    SettingsStore store;
    std::ignore = store.setObject(u"/backups/No, 1; \"ü\""_s, SettingsStore::theAppBackupPath);
    std::ignore = store.setObject(date, SettingsStore::theLastBackupDate);
    std::ignore = store.setObject(u"2024"_s, SettingsStore::theFolder8899);
    QVERIFY(store.synchronize());

    // Of the same settings in another place nothing is in memory yet.
    const TestHome home;
    const QString folder = u".config/Brimvale"_s;
    for (const QString &file : earlier.names(folder))
        home.makeFile(folder + u'/' + file, earlier.read(folder + u'/' + file));
    const RunningProgram program;
    QCOMPARE(program.text(u"backupPath"_s), u"/backups/No, 1; \"ü\""_s);
    QCOMPARE(program.text(u"theFolderImage"_s), u"2024"_s);
    QCOMPARE(program.find<DateField>(u"lastBackupDate"_s)->objectValue().toDateTime(), date);
}

/// Beside another window, and while the library is about to be made.
void StartTest::endsWithItsWindow()
{
    const TestHome home;
    const RunningProgram program;
    QTimer::singleShot(0ms, this, [&] {
        for (const QString &control :
             {u"openLogsWindow"_s, u"runPrefsWindow"_s, u"createFolderStructure"_s})
            program.click(control);
    });
    QTimer::singleShot(100ms, this, [&] { program.find<QWidget>(u"mWindow"_s)->close(); });
    QTimer::singleShot(5s, QCoreApplication::instance(), [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
}

QTEST_MAIN(StartTest)

#include "StartTest.moc"
