#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

using namespace Qt::StringLiterals;

/// Every action of the main window that no mode has for itself.
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
start | launch |
        off clearButton conformButton element frPopup mNewCatButton mSendButton setButton
        tClearButton;
        hide backupProgress dateFloat fileCard hidden orgButton renameButton scratch showBackup
        statusStrip theBackupButton theReQueue; check compositionsChoice; ring input
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
        show theSheet; focus closeHelpSheet; front theSheet;
        theSheet=The Install Module at a Glance
edit, click openHelpSheet, close theSheet, segment segController 0 | click openHelpSheet |
        show theSheet; helpSheetPages=0; theSheet=The Install Module at a Glance
click openHelpSheet | click closeHelpSheet | hide theSheet
click openHelpSheet | close theSheet | hide theSheet
type input a b, menu selectAllItem, menu cutItem | menu undoItem | input=a b
pasted := type input a b, menu selectAllItem, menu copyItem, type input c, menu pasteItem
pasted, menu undoItem | menu redoItem | input=ca b
type input a b, menu selectAllItem, menu copyItem, type input c | menu pasteItem | input=ca b
start | menu quitItem | hide mWindow
start | remove LIB/Titles.localized, click openTitlesFolder | remove LIB/Titles.l
)");
}

void MainWindowTest::changes()
{
    const LibraryHome home;
    home.makeFolder(u"Documents"_s);
    ChangeTable::run(home);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, MainWindowTest>(argc, argv);
}

#include "MainWindowTest.moc"
