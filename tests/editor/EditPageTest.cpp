#include "tests/motion/MotionFixtures.h"
#include "tests/support/ChangeTable.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTime>

using namespace Qt::StringLiterals;

namespace {

/// The program on its Edit side, in a home of its own.
class Editor : public TestHome, public RunningProgram
{
public:
    Editor() { chooseMode(1); }

    void dropFiles(const QStringList &paths) const
    {
        RunningProgram::dropFiles(u"editHint"_s, paths);
    }

    /// Makes the file, and drops it.
    void load(const QByteArray &content, const QString &name = u"Intro.motn"_s) const
    {
        dropFiles({makeFile(name, content)});
    }

    /// From the clipboard, for keys give only Latin text; presses Return behind it.
    void enter(const QString &name, const QString &text) const
    {
        QApplication::clipboard()->setText(text);
        type(name, {});
        QTest::keySequence(find<QLineEdit>(name), QKeySequence::Paste);
        pressKey(name, Qt::Key_Return);
    }

    void conform(int index) const
    {
        find<QComboBox>(u"frPopup"_s)->setCurrentIndex(index);
        click(u"conformButton"_s);
    }

    [[nodiscard]] QString saved() const { return QString::fromUtf8(read(u"Intro.motn"_s)); }
};

QByteArray themedFile()
{
    return motionFile().replace("<scene>", "<template><theme>Old</theme></template><scene>");
}

} // namespace

/// Every action of the Edit side: all that it changes, and what is in the file then.
class EditPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
    void showsFactsOf_data();
    void showsFactsOf();
    void conform_writesEachRate();
    void theme_isWrittenAsItStands();
    void unwritableFile_isLoggedAndKept();
    void archive_copiesAndNeverOverwrites();
};

void EditPageTest::changes_data()
{
    ChangeTable::addRows(R"(
edit := segment segController 1
loaded := segment segController 1, drop editHint Glow.motn
renaming := segment segController 1, drop editHint Glow.motn, click renameButton
enabled := on conformButton element frPopup renameButton setButton tClearButton; off oFile;
        show orgButton
disabled := off conformButton element frPopup setButton tClearButton; on oFile; hide orgButton
filled := hide emptyCard emptyPicture; show fileCard
emptied := hide fileCard; show emptyCard emptyPicture
facts := $filled; ring element; focus element; parText=Square; resOutput=1920x1080; secFloat=10.0;
        theDuration=10.0 seconds; theFrameRate=29.97; theFrames=300
noTheme := textField1 #0000ff; textField1=Template does not include Theme reference ...
refused := alert Project File Error! / This Edit module only accepts Motion Project files ... / warning / OK
said := show statusStrip; statusIcon=a picture
unsaid := hide statusStrip; statusIcon=
cleared := off conformButton element frPopup renameButton setButton tClearButton; on oFile;
        unring element; display=; $emptied; unfocus mWindow; input1=; parText=; resOutput=;
        secFloat=; statusImage=; textField1=; theDuration=; theFrameRate=; theFrames=; typeText=
edit | drop editHint Glow.motn |
        $facts; $enabled; $noTheme; display=Glow; input1=~/Glow.motn;
        log Dragged files / ~/Glow.motn / (29.97) / (300); statusImage=mDocument.png; typeText=motn
edit | panel, menu openFileItem | on renameButton; panel Open / &Open / Look in:
edit | panel Glow.motn, click oFile |
        on renameButton; panel Open / &Open / Look in:; $facts; $noTheme;
        on conformButton element frPopup setButton tClearButton; off oFile; show orgButton;
        display=Glow; input1=~/Glow.motn; log (29.97) / (300); statusImage=mDocument.png;
        typeText=motn
edit | panel Other.mov, click oFile |
        on renameButton; panel Open / &Open / Look in:; emptyHeading=That file was not opened;
        emptyText=Its name must end in .motn, .moef, .moti or .motr, in lower case
edit | drag editHint Glow.motn | light editHint
edit, drag editHint Glow.motn | leave editHint | dim editHint
edit | drop editHint Bare.moti |
        $enabled; $noTheme; $filled; ring element; display=Bare; focus element; input1=~/Bare.moti;
        log Dragged files / ~/Bare.moti / (25) / (300); parText=Square; resOutput=1920x1080;
        secFloat=12.0; statusImage=mTitle.png; theDuration=12.0 seconds; theFrameRate=25;
        theFrames=300; typeText=moti
edit, click openLogsWindow | drop editHint Themed.moef |
        $facts; $enabled; display=Themed; input1=~/Themed.moef; front mWindow;
        log Dragged files / ~/Themed.moef / (Old, Other) / (29.97) / (300); statusImage=mEffect.png;
        textField1=Old; typeText=moef
edit | drop editHint Themed.moef |
        $facts; $enabled; display=Themed; input1=~/Themed.moef;
        log Dragged files / ~/Themed.moef / (Old, Other) / (29.97) / (300); statusImage=mEffect.png;
        textField1=Old; typeText=moef
loaded | drop editHint Themed.moef |
        display=Themed; input1=~/Themed.moef;
        log Dragged files / ~/Themed.moef / (Old, Other) / (29.97) / (300); statusImage=mEffect.png;
        textField1 #000000; textField1=Old; typeText=moef
loaded | drop editHint Broken.motr |
        display=Broken; input1=~/Broken.motr; log Dragged files / ~/Broken.motr;
        statusImage=mTransition.png; typeText=motr
loaded | drop editHint Halfway.motr |
        display=Halfway; input1=~/Halfway.motr;
        log Dragged files / ~/Halfway.motr / (29.97) / (450); secFloat=15.0;
        statusImage=mTransition.png; theDuration=15.0 seconds; theFrames=450; typeText=motr
edit, drop editHint Bare.moti | drop editHint Other.mov |
        $disabled; display=; input1=~/Other.mov; log Dragged files / ~/Other.mov; textField1=;
        typeText=; unfocus mWindow; $refused
loaded | drop editHint LOUD.MOTN |
        $disabled; display=; input1=~/LOUD.MOTN; log Dragged files / ~/LOUD.MOTN; textField1=;
        typeText=; unfocus mWindow; $refused; log (60) / (300); secFloat=5.0;
        theDuration=5.0 seconds; theFrameRate=60
edit | drop editHint Glow.motn Folder Themed.moef |
        on renameButton; $filled; ring element; input1=~/Folder;
        log Dragged files / ~/Glow.motn / (29.97) / (300) / ~/Folder; parText=Square;
        resOutput=1920x1080; secFloat=10.0; statusImage=mDocument.png; textField1 #0000ff;
        theDuration=10.0 seconds; theFrameRate=29.97; theFrames=300; unfocus mWindow; $refused
loaded | click tClearButton | $cleared; hide orgButton
loaded, click orgButton, rest | menu clearEditorItem |
        $cleared; $unsaid; dateTextField=; wasArchived=
loaded | segment segController 0 |
        show addButton; hide renameButton; focus input; segController=0; theTabView=0
loaded, segment segController 0 | menu editModeItem |
        off renameButton; show renameButton; hide addButton; focus element; segController=1;
        theTabView=1
loaded | pick frPopup 4, menu conformItem |
        hide orgButton; run progressBarT; theFrameRate=25; theFrames=250; write Glow.motn
loaded, click conformButton, rest | pick frPopup 2, click conformButton |
        $unsaid; show progressBarT; run progressBarT; theFrameRate=23.98; theFrames=239.8;
        wasArchived=;
        write Glow.motn
loaded, click orgButton, rest | click conformButton |
        run progressBarT; hide progressBarT; dateTextField=; wasArchived=Choose Framerate;
        write Glow.motn
edit, drop editHint Twice.motn | pick frPopup 9, click conformButton |
        $said; run progressBarT; hide orgButton progressBarT; theFrameRate=60; theFrames=600;
        wasArchived=Choose Framerate;
        write Twice.motn
edit, drop editHint Bare.moti | pick frPopup 4, click conformButton | hide orgButton; frPopup=4
edit, drop editHint Broken.motr | click conformButton |
loaded | type element A & B, click setButton |
        run progressBarT; hide orgButton; textField1 #000000; textField1=A & B; write Glow.motn
edit, drop editHint Themed.moef | type element New, menu addElementsItem |
        hide orgButton; run progressBarT; log (Old, Other); textField1=New; write Themed.moef
edit, drop editHint Themed.moef, type element New, focus element | key element Return |
        hide orgButton; run progressBarT; element=; log (Old, Other); textField1=New;
        write Themed.moef
edit, drop editHint Broken.motr | click setButton |
        run progressBarT; hide orgButton;
        log Could not write document out... / Could not write document out...;
        textField1 #000000
edit, drop editHint Small.motn | click setButton |
loaded, click conformButton, rest | click setButton |
        $unsaid; show progressBarT; run progressBarT; textField1 #000000; textField1=; wasArchived=;
        write Glow.motn
loaded | menu backupOriginalItem |
        $said; run progressBarT; hide orgButton; Glow.motn => Documents/Brimvale/Glow-DATE.motn;
        dateTextField=DATE;
        wasArchived=Original Archived
loaded, click orgButton, rest | menu writeToFileItem |
        $cleared; $unsaid; dateTextField=; wasArchived=; write Glow.motn
loaded, open confirmSheet | click writeToFile |
        $emptied; off tClearButton; hide confirmSheet orgButton; display=; input1=; textField1=;
        write Glow.motn
loaded, open confirmSheet | click closeConfirmSheet | hide confirmSheet
loaded, open confirmSheet | close confirmSheet | hide confirmSheet
loaded | menu raiseRenameSheetItem |
        show renameSheet; focus newTempplateName; front renameSheet; mWindow=Glow;
        keptExtension=.motn; presentExtension=.motn; presentName=Glow
renaming, type newTempplateName New | click clearRenameTextField | newTempplateName=
renaming, focus renameTemplate | click clearRenameTextField | focus newTempplateName
renaming | click renameTemplate |
        newNameWarning #2c4cff; newNameWarning=Please append new name For Template or Cancel ...
renaming, click renameTemplate | click clearRenameTextField | newNameWarning=
renaming, click renameTemplate | click cancelRenameTemplate |
        hide renameSheet; mWindow=Brimvale; newNameWarning=
renaming, type newTempplateName New | key newTempplateName Escape |
        hide renameSheet; mWindow=Brimvale; newTempplateName=
renaming, type newTempplateName New | key newTempplateName Return |
        hide renameSheet; Glow.motn -> New.motn; display=New; input1=~/New.motn; mWindow=Brimvale
renaming, type newTempplateName New, click renameTemplate | click renameButton |
        show renameSheet; focus newTempplateName; mWindow=New; newTempplateName=; presentName=New
renaming, type newTempplateName Themed | click renameTemplate |
        hide renameSheet; display=Themed; input1=~/Themed.motn; mWindow=Brimvale
renaming, type newTempplateName Folder.motn/New | click renameTemplate |
        hide renameSheet; display=Folder.motn/New; input1=~/Folder.motn/New.motn; mWindow=Brimvale
renaming, type newTempplateName ../New | click renameTemplate |
        hide renameSheet; display=../New; input1=~/../New.motn; mWindow=Brimvale
renaming, type newTempplateName a.b | click renameTemplate |
        hide renameSheet; Glow.motn -> a.b.motn; display=a.b; input1=~/a.b.motn; mWindow=Brimvale
edit, drop editHint Linked.motn | click orgButton |
        $said; run progressBarT; hide orgButton; Glow.motn => Documents/Brimvale/Linked-DATE.motn;
        dateTextField=DATE;
        wasArchived=Original Archived
edit, drop editHint [*]-x.motn | click renameButton |
        show renameSheet; focus newTempplateName; front renameSheet; mWindow=[*][*]-x;
        keptExtension=.motn; presentExtension=.motn; presentName=[*]-x
edit, drop editHint Nine.motn | pick frPopup 8, click conformButton |
        hide orgButton; run progressBarT; theFrameRate=59.94; theFrames=593.406; write Nine.motn
edit | drop editHint Broken.motr Glow.motn |
        $filled; $enabled; $noTheme; ring element; display=Broken; focus element;
        input1=~/Broken.motr;
        log Dragged files / ~/Broken.motr; statusImage=mTransition.png; typeText=motr
loaded, click conformButton, rest | segment segController 1, click tClearButton |
        $cleared; $unsaid; wasArchived=
)");
}

void EditPageTest::changes()
{
    const TestHome home;
    const QByteArray file = motionFile();
    home.makeFile(u"Glow.motn"_s, file);
    home.makeFile(
        u"Themed.moef"_s,
        QByteArray(file).replace("<scene>", "<theme>Old</theme><theme>Other</theme><scene>"));
    home.makeFile(u"Themed.motn"_s, "taken");
    home.makeFile(u"Bare.moti"_s,
                  QByteArray(file).replace("<NTSC>1</NTSC>", "").replace("29.97", "25"));
    home.makeFile(u"Twice.motn"_s,
                  QByteArray(file).replace("<NTSC>1</NTSC>", "<NTSC>1</NTSC><NTSC>1</NTSC>"));
    home.makeFile(u"Halfway.motr"_s,
                  QByteArray(file).replace("<height>1080</height>", "").replace("300", "450"));
    home.makeFile(u"Small.motn"_s, "<ozml><a/></ozml>");
    home.makeFile(u"Broken.motr"_s, "<ozml");
    home.makeFile(u"Other.mov"_s, "no XML");
    home.makeFile(u"LOUD.MOTN"_s, QByteArray(file).replace("29.97", "60"));
    home.makeFolder(u"Folder"_s);
    home.makeFolder(u"Documents"_s);
    home.makeFile(u"Folder.motn/a"_s);
    home.makeFile(u"[*]-x.motn"_s, file);
    home.makeFile(u"Nine.motn"_s, QByteArray(file).replace("300", "297"));
    QVERIFY(QFile::link(u"Glow.motn"_s, home.path(u"Linked.motn"_s)));
    ChangeTable::run(home);
}

void EditPageTest::showsFactsOf_data()
{
    QTest::addColumn<QString>("fact"); // in the file
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("shown");
    const QString ratio = u"parText"_s;
    const auto row = [](const QString &fact, const QString &field, const QString &shown) {
        QTest::newRow(qUtf8Printable(fact)) << fact << field << shown;
    };
    row(u"<pixelAspectRatio>1"_s, ratio, u"Square"_s);
    row(u"<pixelAspectRatio>0.90909090909090895"_s, ratio, u"NTSC D1/DV"_s);
    row(u"<pixelAspectRatio>1.2121212121212122"_s, ratio, u"NTSC D1/DV Anamorphic"_s);
    row(u"<pixelAspectRatio>1.0925925925925926"_s, ratio, u"PAL D1/DV"_s);
    row(u"<pixelAspectRatio>1.4567901234567899"_s, ratio, u"PAL D1/DV Anamorphic"_s);
    row(u"<pixelAspectRatio>2"_s, ratio, u"Anamorphic 2:1"_s);
    row(u"<pixelAspectRatio>0.94999999999999996"_s, ratio, u"D4/D16"_s);
    row(u"<pixelAspectRatio>1.8999999999999999"_s, ratio, u"D4/D16 Anamorphic"_s);
    row(u"<pixelAspectRatio>1.333333333333333"_s, ratio, u"HD (960x720),(1440x1080)"_s);
    row(u"<pixelAspectRatio>1.5"_s, ratio, u"HD (1280x1080)"_s);
    row(u"<pixelAspectRatio>1.50"_s, ratio, u"1.50"_s);
    row(u"<duration>300 e"_s, u"secFloat"_s, u"10.0"_s);
    row(u"<duration>300e"_s, u"secFloat"_s, u"10.0"_s);
    row(u"<duration>3e2"_s, u"secFloat"_s, u"10.0"_s);
    row(u"<duration>none"_s, u"secFloat"_s, u"0.0"_s);
    row(u"<frameRate>0"_s, u"secFloat"_s, u"inf"_s);
}

void EditPageTest::showsFactsOf()
{
    QFETCH(const QString, fact);
    QFETCH(const QString, field);
    QFETCH(const QString, shown);
    const Editor editor;
    const QString tag = fact.section(u'>', 0, 0);
    const QString file = QString::fromUtf8(motionFile());
    const qsizetype start = file.indexOf(tag + u'>');
    editor.load((file.first(start) + fact + file.mid(file.indexOf(u"</"_s, start))).toUtf8());
    QCOMPARE(editor.text(field), shown);
}

void EditPageTest::conform_writesEachRate()
{
    const Editor editor;
    const auto *rates = editor.find<QComboBox>(u"frPopup"_s);
    QCOMPARE(rates->count(), 10);
    for (int index = 1; index < rates->count(); ++index) {
        editor.load(motionFile());
        editor.conform(index);
        const QString rate = rates->itemText(index).section(u' ', 0, 0);
        const QString frames = QString::number(10 * rate.toDouble());
        QVERIFY(editor.saved().contains(u"<frameRate>%1</frameRate>"_s.arg(rate)));
        QVERIFY(editor.saved().contains(u"<duration>%1</duration>"_s.arg(frames)));
        QVERIFY(editor.saved().contains(u"<NTSC>0</NTSC>"_s));
    }
}

void EditPageTest::theme_isWrittenAsItStands()
{
    const QString name = u"<b a=\"1\">&amp; 日本 😀"_s;
    const Editor editor;
    for (const QByteArray &file : {motionFile(), themedFile()}) {
        editor.load(file);
        editor.enter(u"element"_s, name);
        QVERIFY(editor.saved().contains(u"<theme>&lt;b a=\"1\"&gt;&amp;amp; 日本 😀</theme>"_s));
    }
}

void EditPageTest::unwritableFile_isLoggedAndKept()
{
    const Editor editor;
    editor.load(themedFile());
    QFile::setPermissions(editor.path(u"Intro.motn"_s), QFile::ReadOwner);
    const auto before = editor.snapshot();
    const LogLines log;
    editor.conform(4);
    QCOMPARE(log.take(), QStringList{u"Could not write document out..."_s});
    editor.enter(u"element"_s, u"New"_s);
    QCOMPARE(log.take(), (QStringList{u"(Old)"_s, u"Could not write document out..."_s}));
    QCOMPARE(editor.snapshot(), before);
}

void EditPageTest::archive_copiesAndNeverOverwrites()
{
    const Editor editor;
    editor.makeFolder(u"Documents/Brimvale"_s);
    editor.makeFolder(u"Glow"_s);
    const QString link = editor.path(u"Glow/a.b.motn"_s);
    QVERIFY(QFile::link(editor.makeFile(u"real.motn"_s, motionFile()), link));
    QVERIFY(QTest::qWaitFor([] { return QTime::currentTime().msec() < 100; }));
    for (int time = 0; time < 2; ++time) {
        editor.dropFiles({link});
        editor.click(u"orgButton"_s);
        QCOMPARE(editor.text(u"wasArchived"_s), u"Original Archived"_s);
    }
    // The second copy of a second stays beside the original.
    const QString copy = u"a.b-"_s + editor.text(u"dateTextField"_s) + u".motn"_s;
    QCOMPARE(editor.names(u"Documents/Brimvale"_s), QStringList{copy});
    QVERIFY(!QFileInfo(editor.path(u"Documents/Brimvale/"_s + copy)).isSymLink());
    QCOMPARE(editor.names(u"Glow"_s), (QStringList{copy, u"a.b.motn"_s}));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, EditPageTest>(argc, argv);
}

#include "EditPageTest.moc"
