#include "history/InstallationRecord.h"
#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

using namespace Qt::StringLiterals;

/// Every action of the main window that no mode has for itself, and of the windows beside it.
class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
};

void MainWindowTest::changes_data()
{
    ChangeTable::addRows(R"(
edit := segment segController 1
asked := backupResult=Select a Backup Folder or create a New Backup Folder ...
chosen := click runPrefsWindow, panel My Backups, click setBackupPath1
start | launch |
        off clearButton conformButton element frPopup mNewCatButton mSendButton setButton
        tClearButton;
        hide backupProgress dateFloat emptyHistory hidden orgButton renameButton
        scratch showBackup theBackupButton theReQueue; check compositionsChoice; ring input
start | segment segController 1 |
        off renameButton; show renameButton; hide addButton; focus oFile; segController=1;
        theTabView=1
edit | menu installModeItem |
        show addButton; hide renameButton; focus input; segController=0; theTabView=0
edit | segment segController 1 |
start | click openTemplatesRootFolder, menu openTemplatesRootFolderItem |
        open file://~/LIB/; open file://~/LIB/
start | click openCompositionsFolder, menu openCompositionsFolderItem |
        open file://~/LIB/Compositions.l; open file://~/LIB/Compositions.l
start | click openEffectsFolder, menu openEffectsFolderItem |
        open file://~/LIB/Effects.l/; open file://~/LIB/Effects.l/
start | click openGeneratorsFolder, menu openGeneratorsFolderItem |
        open file://~/LIB/Generators.l/; open file://~/LIB/Generators.l/
start | click openTitlesFolder, menu openTitlesFolderItem |
        open file://~/LIB/Titles.l; open file://~/LIB/Titles.l
start | click openTransitionsFolder, menu openTransitionsFolderItem |
        open file://~/LIB/Transitions.l; open file://~/LIB/Transitions.l
start | click openArchivesFolder, menu openArchivesFolderItem |
        open file://~/Documents/Brimvale; open file://~/Documents/Brimvale
start | menu runHelpWebView, menu linkToPayPal |
        open http://brimvale.example/Brimvale/help/Brimvale-help.html;
        open https://donations.example/cgi-bin/webscr?cmd=_s-xclick&hosted_button_id=EXAMPLE
start | menu aboutItem |
        alert <h3>Brimvale </h3> / Installs, inspects and edits templates for Motion. / About
        Brimvale / OK
start | menu openHelpSheetItem |
        show theSheet; focus closeHelpSheet; front theSheet; theSheet=The Install Module at a Glance
edit, click openHelpSheet, close theSheet, segment segController 0 | click openHelpSheet |
        show theSheet; theSheet=The Install Module at a Glance; helpSheetPages=0
click openHelpSheet | click closeHelpSheet | hide theSheet
click openHelpSheet | close theSheet | hide theSheet
type input a b, menu selectAllItem, menu cutItem | menu undoItem | input=a b
type input a b, menu selectAllItem, menu cutItem, menu undoItem | menu redoItem | input=
type input a b, menu selectAllItem, menu copyItem, type input c | menu pasteItem | input=ca b
start | menu quitItem | hide mWindow
start | menu openLogsWindowItem | show logWindow; focus theTable; front logWindow
click openLogsWindow | click logResetButton |
        off helpButton logResetButton; show logSheet; focus closeLogSheet; front logSheet
click openLogsWindow | click helpButton |
        check helpButton; logsHelpField=Reset will permanently remove history.
click openLogsWindow, click helpButton | click helpButton | uncheck helpButton; logsHelpField=
click openLogsWindow, click helpButton, close logWindow | click openLogsWindow |
        show logWindow; uncheck helpButton
click openLogsWindow, click logResetButton | click closeLogSheet |
        on helpButton logResetButton; hide logSheet
click openLogsWindow, click logResetButton | close logSheet |
        on helpButton logResetButton; hide logSheet
click openLogsWindow, click logResetButton | click clearLogs |
        on helpButton logResetButton; hide logSheet; store installations=; theTable=; logCount=;
        show emptyHistory
click openLogsWindow | type logFilter LINE a |
        focus logFilter; logFilter=LINE a
click openLogsWindow | type logFilter b |
        focus logFilter; logFilter=b; show emptyHistory; logCount=0 of 1; theTable=;
        hide emptyHistoryIcon; emptyHistoryHeading=No match;
        emptyHistoryText=No installation has all these words.
click openLogsWindow, type logFilter b, close logWindow | click openLogsWindow |
        show logWindow; hide emptyHistory; logCount=1 in all; logFilter=; theTable=a line|
click openLogsWindow | click closeLogWindow | hide logWindow
click runPrefsWindow | click closePrefWindow | hide prefWindow
start | menu runPrefsWindowItem |
        show prefWindow; hide existsTextField mCancel; focus createFolderStructure;
        front prefWindow;
        backupResult=Choose the folder for your backups, on another disk if you can.
click runPrefsWindow | click createFolderStructure |
        show existsTextField mCancel; existsTextField=Folder Structure already exists - ! ...
click runPrefsWindow, click createFolderStructure | click mCancel | hide mCancel; existsTextField=
click runPrefsWindow, click createFolderStructure, close prefWindow | click runPrefsWindow |
        show prefWindow; hide existsTextField mCancel
click runPrefsWindow | panel, click setBackupPath1 |
        $asked; panel Backup Folder Selector / Set / Select a Backup Folder or create a New Backup
        Folder ...; backupResult=Choose the folder for your backups, on another disk if you can.
click runPrefsWindow | panel My Backups, click setBackupPath1 |
        $asked; panel Backup Folder Selector / Set / Select a Backup Folder or create a New Backup Folder
        ...; show theBackupButton; backupPath=~/My Backups; store theAppBackupPath=~/My Backups;
        store theFolder8899=My Backups; theFolderImage=My Backups;
        backupResult=Every backup is a complete copy. Earlier ones stay as they are.
chosen | click theBackupButton |
        turn backupSpinner; run backupProgress; LIB => My Backups/DATE Motion Templates.l;
        backupResult=; dateFloat=DATE; pleaseWait=Please Wait ...; wait 2500; stop backupSpinner;
        backupResult=Written into “My Backups”: “DATE Motion Templates.l”, 46 bytes;
        lastBackupDate=DATE; pleaseWait=; show showBackup; store theLastBackupDate=DATE
chosen, click theBackupButton | click showBackup | open file://~/My Backups/
start | menu runHelpBook | show helpWindow; focus textView; front helpWindow
menu runHelpBook | click pageA | check pageA; uncheck navigateHOME; focus textView2; tabView=1
menu runHelpBook | click pageB | check pageB; uncheck navigateHOME; focus textView3; tabView=2
menu runHelpBook | click pageC | check pageC; uncheck navigateHOME; focus textView4; tabView=3
menu runHelpBook | click pageD | check pageD; uncheck navigateHOME; focus textView5; tabView=4
menu runHelpBook | click pageE | check pageE; uncheck navigateHOME; focus textView6; tabView=5
menu runHelpBook, click pageC | menu runHelpBook |
        check navigateHOME; uncheck pageC; focus textView; tabView=0
menu runHelpBook, click pageE | click navigateHOME |
        check navigateHOME; uncheck pageE; focus textView; tabView=0
menu runHelpBook | segment modeSegController 0 | log controlOne selected.; modeSegController=0
menu runHelpBook | segment modeSegController 1 |
        check pageA; uncheck navigateHOME; focus textView2; log controlTwo selected.;
        modeSegController=1; tabView=1
menu runHelpBook, click pageE | segment modeSegController 1 |
        log controlTwo selected.; modeSegController=1
menu runHelpBook, click pageC | segment modeSegController 0 |
        check pageB; uncheck pageC; focus textView3; log controlOne selected.; modeSegController=0;
        tabView=2
)");
}

void MainWindowTest::changes()
{
    const LibraryHome home;
    home.makeFolder(u"Documents"_s);
    home.makeFolder(u"My Backups"_s);
    QVERIFY(appendInstallation({u"a line"_s}));
    ChangeTable::run(home);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, MainWindowTest>(argc, argv);
}

#include "MainWindowTest.moc"
