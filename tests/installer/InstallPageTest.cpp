#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

using namespace Qt::StringLiterals;

/// Every action of the Install side, and all that it changes.
class InstallPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
};

void InstallPageTest::changes_data()
{
    ChangeTable::addRows(R"(
chosen := drop installHint Desktop/Glow
sheet := drop installHint Desktop/Glow, click titlesChoice, click mNewCatButton
ready := on clearButton mNewCatButton mSendButton
listed := hide emptyHistory; logCount=1 in all
notReady := off clearButton mNewCatButton mSendButton
refused := alert Template Error! / This Install module only accepts Folders ... / warning / OK
installed := off clearButton mNewCatButton mSendButton; ring input; focus input; input=; test=
start | drop installHint Desktop/Glow |
        $ready; unring input; input=~/Desktop/Glow; log Dragged files / ~/Desktop/Glow; test=Glow;
        unfocus mWindow
start | drop input Desktop/Glow |
        $ready; unring input; input=~/Desktop/Glow; log Dragged files / ~/Desktop/Glow; test=Glow;
        unfocus mWindow
start | drag installHint Desktop/Glow | light installHint
drag installHint Desktop/Glow | leave installHint | dim installHint
drag installHint Desktop/Glow | drop installHint Desktop/Glow |
        $ready; dim installHint; unring input; input=~/Desktop/Glow;
        log Dragged files / ~/Desktop/Glow; test=Glow; unfocus mWindow
start | drop installHint Intro.motn |
        unring input; log Dragged files / ~/Intro.motn; unfocus mWindow; $refused
chosen | drop installHint Pack.v2 |
        $notReady; input=; log Dragged files / ~/Pack.v2; test=; $refused
start | drop installHint Intro.motn Desktop/Glow |
        unring input; log Dragged files / ~/Intro.motn; unfocus mWindow; $refused; $ready;
        focus mWindow; input=~/Desktop/Glow; log ~/Desktop/Glow; test=Glow
start | drop installHint Desktop/Glow Intro.motn |
        unring input; log Dragged files / ~/Desktop/Glow / ~/Intro.motn; unfocus mWindow; $refused
start | type input ~/Desktop/Glow// | input=~/Desktop/Glow//
type input ~/Desktop/Glow// | key input Return | unring input; test=Glow; unfocus mWindow
start | panel Desktop/Glow, click addButton |
        panel Folder Selector / Add / Select Motion Content Folder ...; $ready;
        input=~/Desktop/Glow; test=Glow
start | panel, menu doOpenItem | panel Folder Selector / Add / Select Motion Content Folder ...
start | menu clearInputsItem |
chosen | click clearButton | $notReady; input=; test=
chosen, focus clearButton | click clearButton | $notReady; input=; test=; unfocus mWindow
chosen | menu clearInputsItem | $notReady; input=; test=
chosen, click effectsChoice | menu moveAndCloseItem | $installed; run progressBar;
        Desktop/Glow -> LIB/Effects.l/Glow
chosen, click generatorsChoice, focus generatorsChoice | key generatorsChoice Return |
        $installed; run progressBar; Desktop/Glow -> LIB/Generators.l/Glow
chosen, click titlesChoice, focus titlesChoice | key titlesChoice Enter |
        $installed; run progressBar; Desktop/Glow -> LIB/Titles.l/Glow
chosen, click transitionsChoice | click mSendButton |
        $installed; run progressBar; Desktop/Glow -> LIB/Transitions.l/Glow
chosen | click titlesChoice | check titlesChoice; uncheck compositionsChoice
chosen | click mSendButton, rest |
        $installed; Desktop/Glow -> LIB/Compositions.l/Glow; hiddenDF=DATE; $listed;
        store installations=DATE Compositions   |; theTable=DATE Compositions   |
sheet | click generateCustomFolder, click effectsChoice, rest |
        $installed; hide catSheet; check effectsChoice; uncheck titlesChoice; unring textField;
        Desktop/Glow -> LIB/Titles.l/Glow; hiddenDF=DATE; mirroredPath=; $listed;
        store installations=DATE Effects   Glow|; theReQueue=Done; theTable=DATE Effects   Glow|;
        unfocus catSheet
chosen | click mNewCatButton |
        show catSheet; focus textField; front catSheet; mirroredPath=~/Desktop/Glow;
        sheetLabel=Compositions; theLastPathComponent=Glow; theReQueue=Glow
chosen, click effectsChoice | menu createCategoryItem |
        show catSheet; focus textField; front catSheet; mirroredPath=~/Desktop/Glow;
        sheetLabel=Effects; theLastPathComponent=Glow; theReQueue=Glow
chosen, type input, key input Return | click mNewCatButton |
        show catSheet; focus textField; front catSheet; sheetLabel=Compositions;
        theLastPathComponent=Please assign a Folder Path ...
sheet | click closeSheet | hide catSheet
sheet | close catSheet | hide catSheet
sheet, type textField New | key textField Escape | hide catSheet
sheet, focus closeSheet | key closeSheet Return | hide catSheet
sheet, type textField New | key textField Return |
        $installed; run progressBar; hide catSheet; unring textField;
        Desktop/Glow -> LIB/Titles.l/New/Glow;
        make LIB/Titles.l/New; mirroredPath=; textField=; theReQueue=Done; unfocus catSheet
sheet, drop installHint Desktop/Shine | click generateCustomFolder |
        $installed; run progressBar; hide catSheet; unring textField;
        Desktop/Glow -> LIB/Titles.l/Glow;
        mirroredPath=; theReQueue=Done; unfocus catSheet
sheet, click generatorsChoice, type textField Old | click generateCustomFolder |
        $installed; run progressBar; hide catSheet; unring textField;
        Desktop/Glow -> LIB/Generators.l/Old/Glow;
        mirroredPath=; textField=; theReQueue=Done; unfocus catSheet
chosen, type input, key input Return | click mSendButton |
        $notReady; run progressBar; ring input; focus input
chosen, type input /, key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input .., key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input ~, key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input ~/Desktop/.., key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input Desktop/Glow, key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input ~/Desktop/Nothing, key input Return | click mSendButton |
        $installed; run progressBar
chosen, type input ~/Desktop/Glow//, key input Return | click mSendButton |
        $installed; run progressBar; Desktop/Glow -> LIB/Compositions.l/Glow
chosen, type input ~/Desktop/Link, key input Return | click mSendButton |
        $installed; run progressBar; Desktop/Link -> LIB/Compositions.l/Link
sheet, type textField New, click closeSheet | click mNewCatButton |
        show catSheet; focus textField; textField=
click openLogsWindow | drop installHint Desktop/Glow |
        $ready; unring input; focus mWindow; front mWindow; input=~/Desktop/Glow;
        log Dragged files / ~/Desktop/Glow; test=Glow
start | drop installHint Gl%20ö#1'x' |
        $ready; unring input; input=~/Gl%20ö#1'x'; log Dragged files / ~/Gl%20ö#1'x';
        test=Gl%20ö#1'x'; unfocus mWindow
start | drop installHint Desktop/Glow Desktop/Shine |
        $ready; unring input; input=~/Desktop/Shine;
        log Dragged files / ~/Desktop/Glow / ~/Desktop/Shine; test=Shine; unfocus mWindow
)");
}

void InstallPageTest::changes()
{
    const LibraryHome home;
    home.makeFile(u"Intro.motn"_s);
    home.makeFile(u"Pack.v2/a"_s);
    home.makeFile(u"Desktop/Shine/a"_s);
    home.makeFolder(u"Gl%20ö#1'x'"_s);
    QVERIFY(QFile::link(home.path(u"Pack.v2"_s), home.path(u"Desktop/Link"_s)));
    ChangeTable::run(home);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallPageTest>(argc, argv);
}

#include "InstallPageTest.moc"
