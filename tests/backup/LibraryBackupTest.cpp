#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

#include <QAction>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class LibraryBackupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
    void copiesWithoutOtherActions();
};

void LibraryBackupTest::changes_data()
{
    ChangeTable::addRows(R"(
backup := click runPrefsWindow
chosen := click runPrefsWindow, panel My Backups, click setBackupPath1
busy := turn backupSpinner; dateFloat=DATE; pleaseWait=Please Wait ...
copied := run backupProgress; turn backupSpinner; backupResult=; dateFloat=DATE;
        pleaseWait=Please Wait ...
done := stop backupSpinner; lastBackupDate=DATE; pleaseWait=; store theLastBackupDate=DATE
start | menu runPrefsWindowItem |
        show prefWindow; hide existsTextField mCancel;
        backupResult=Choose the folder for your backups, on another disk if you can.;
        focus createFolderStructure; front prefWindow
backup | click createFolderStructure |
        show existsTextField mCancel; existsTextField=Folder Structure already exists - ! ...
backup, click createFolderStructure, focus mCancel | key mCancel Space |
        hide mCancel; existsTextField=; unfocus prefWindow
backup, click createFolderStructure, close prefWindow | click runPrefsWindow |
        show prefWindow; hide existsTextField mCancel
backup | panel, click setBackupPath1 |
        backupResult=Select a Backup Folder or create a New Backup Folder ...;
        panel Backup Folder Selector / Set / Select a Backup Folder or create a New Backup Folder
        ...; backupResult=Choose the folder for your backups, on another disk if you can.
backup | panel My Backups, click setBackupPath1 |
        backupResult=Select a Backup Folder or create a New Backup Folder ...;
        panel Backup Folder Selector / Set / Select a Backup Folder or create a New Backup Folder
        ...; show theBackupButton; backupPath=~/My Backups;
        backupResult=Every backup is a complete copy. Earlier ones stay as they are.;
        store theAppBackupPath=~/My Backups; store theFolder8899=My Backups;
        theFolderImage=My Backups
chosen | click theBackupButton |
        $copied; LIB => My Backups/DATE Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “My Backups”: “DATE Motion Templates.l”, 46 bytes
chosen | menu runPrefsWindowItem | front prefWindow
backup | click theBackupButton |
set backupPath ~/Own, click runPrefsWindow | click theBackupButton |
        $copied; LIB => Own/DATE Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “Own”: “DATE Motion Templates.l”, 46 bytes
set backupPath ~/Dangling, click runPrefsWindow | click theBackupButton |
        $copied; LIB => Dangling/DATE Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “Dangling”: “DATE Motion Templates.l”, 46 bytes
set backupPath ~/Movies, click runPrefsWindow | click theBackupButton |
        $copied; LIB => Movies/DATE Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “Movies”: “DATE Motion Templates.l”, 46 bytes
set backupPath ~/LIB/Titles.localized, click runPrefsWindow | click theBackupButton |
        $busy; backupResult=; wait 2500; $done; backupResult=Nothing was written into “Titles.l”.
set backupPath ~/Link, click runPrefsWindow | click theBackupButton |
        $busy; backupResult=; wait 2500; $done; backupResult=Nothing was written into “Link”.
set backupPath ~/Nowhere, click runPrefsWindow | click theBackupButton |
        $busy; backupResult=; wait 2500; $done;
        backupResult=Nothing was written: the backup folder is not there.
set backupPath ~/Taken, click runPrefsWindow | click theBackupButton |
        $copied; LIB => Taken/Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “Taken”: “Motion Templates.l”, 46 bytes. It could not take its
        name with the date.
hide Elsewhere LIB, set backupPath ~/My Backups, click runPrefsWindow | click theBackupButton |
        $copied; Elsewhere => My Backups/DATE Motion Templates.l; wait 2500; $done; show showBackup;
        backupResult=Written into “My Backups”: “DATE Motion Templates.l”, 46 bytes
remove LIB, click runPrefsWindow | click createFolderStructure |
        turn spinner; wait 1500; show existsTextField mCancel; stop spinner;
        existsTextField=Folder Structure Created; make LIB
remove Movies, click runPrefsWindow | click createFolderStructure |
        turn spinner; wait 1500; show existsTextField mCancel; stop spinner;
        existsTextField=Folder Structure Created
noFolders := remove LIB/Compositions.localized, remove LIB/Effects.localized,
        remove LIB/Generators.localized, remove LIB/Titles.localized, remove LIB/Transitions.localized
noFolders, click runPrefsWindow | click createFolderStructure |
        show existsTextField mCancel; existsTextField=Folder Structure already exists - ! ...;
        make LIB/Compositions.l; make LIB/Effects.l; make LIB/Generators.l; make LIB/Titles.l;
        make LIB/Transitions.l
backup | click closePrefWindow | hide prefWindow
chosen, focus closePrefWindow | key closePrefWindow Return | hide prefWindow
chosen, click theBackupButton | click showBackup | open file://~/My Backups/
)");
}

void LibraryBackupTest::changes()
{
    const LibraryHome home;
    home.makeFolder(u"My Backups"_s);
    home.makeFile(u"Own/Motion Templates.localized/mine"_s);
    home.makeFolder(u"Dangling"_s);
    QVERIFY(QFile::link(u"Nowhere"_s, home.path(u"Dangling/Motion Templates.localized"_s)));
    QVERIFY(QFile::link(home.path(u"Movies/Motion Templates.localized"_s), home.path(u"Link"_s)));
    for (int second = 0; second < 10; ++second) {
        const QDateTime date = QDateTime::currentDateTime().addSecs(second);
        home.makeFile(u"Taken/"_s + date.toString(u"yyyy-MM-dd HH-mm-ss "_s) +
                      u"Motion Templates.localized"_s);
    }
    ChangeTable::run(home);
}

/// The windows stay alive meanwhile, but nothing else starts: not by mouse, key or menu.
void LibraryBackupTest::copiesWithoutOtherActions()
{
    const LibraryHome home;
    QVERIFY(
        SettingsStore().setObject(home.makeFolder(u"Backups"_s), SettingsStore::theAppBackupPath));
    setWaitLength([](auto) { return 1ms; });
    const RunningProgram program;
    const auto isUntouched = [&] {
        return program.isShown(u"addButton"_s) && !program.isShown(u"theSheet"_s) &&
               program.text(u"input"_s).isEmpty() && !program.isShown(u"logWindow"_s);
    };
    program.click(u"runPrefsWindow"_s);
    bool isTried = false;
    // More and more, until a copy takes long enough.
    for (int files = 100; files < 20000 && !isTried; files *= 2) {
        for (int file = 0; file < files; ++file)
            home.makeFile(home.titles() + u"/Big %1/%2"_s.arg(files).arg(file));
        QTimer::singleShot(0, program.find<QWidget>(u"mWindow"_s), [&] {
            isTried = program.isShown(u"backupProgress"_s);
            if (!isTried)
                return;
            program.chooseMode(1);
            program.click(u"openHelpSheet"_s);
            program.pressKey(u"input"_s, Qt::Key_A);
            program.find<QAction>(u"openLogsWindowItem"_s)->trigger();
            QVERIFY(isUntouched());
        });
        program.click(u"theBackupButton"_s);
    }
    setWaitLength({});
    QVERIFY(isTried && isUntouched());
    program.chooseMode(1);
    QVERIFY(!program.isShown(u"addButton"_s));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, LibraryBackupTest>(argc, argv);
}

#include "LibraryBackupTest.moc"
