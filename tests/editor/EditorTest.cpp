#include "tests/motion/MotionFixtures.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/LogLines.h"
#include "tests/support/RunningProgram.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
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

    [[nodiscard]] QStringList texts(const QStringList &names) const
    {
        QStringList found;
        for (const QString &each : names)
            found << text(each);
        return found;
    }

    [[nodiscard]] QString saved() const { return QString::fromUtf8(read(u"Intro.motn"_s)); }
};

QByteArray themedFile()
{
    return motionFile().replace("<scene>", "<template><theme>Old</theme></template><scene>");
}

const AlertAnswerer::Alert wrongKind{u"Project File Error!"_s,
                                     u"This Edit module only accepts Motion Project files ..."_s,
                                     QMessageBox::Warning,
                                     {u"OK"_s}};

const QStringList names = {u"input1"_s, u"display"_s, u"typeText"_s, u"textField1"_s};
const QStringList factNames = {u"theFrameRate"_s, u"theFrames"_s, u"secFloat"_s,
                               u"theDuration"_s,  u"resOutput"_s, u"parText"_s};

} // namespace

class EditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsAndClearsTheModule_data();
    void fillsAndClearsTheModule();
    void endsAtTheFirstMissingFact();
    void rejectsOtherFiles();
    void conform_writesEachRate();
    void conform_withoutARateOrATriple_keepsTheFacts();
    void theme_isWrittenAsItStands();
    void unwritableFile_isLoggedAndKept();
    void writingBack_keepsTheFactsAndResets();
    void archive_copiesAndNeverOverwrites();
    void rename_movesTheFileInItsFolder_data();
    void rename_movesTheFileInItsFolder();
    void rename_withoutAName_asksForOne();
};

void EditorTest::fillsAndClearsTheModule_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::newRow("drop") << true;
    QTest::newRow("panel") << false;
}

void EditorTest::fillsAndClearsTheModule()
{
    QFETCH(bool, dropped);
    const Editor editor;
    const QString path =
        editor.makeFile(u"Büro.v2.moef"_s, themedFile().replace("Old", "Glow</theme><theme>Other"));
    const LogLines log;
    if (dropped) {
        editor.dropFiles({path});
        QCOMPARE(log.take(), (QStringList{u"Dragged files"_s, path, u"(Glow, Other)"_s,
                                          u"(29.97)"_s, u"(300)"_s}));
    } else {
        editor.click(u"oFile"_s);
        auto *panel = editor.find<QMainWindow>(u"mWindow"_s)->findChild<QFileDialog *>();
        panel->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(panel, Qt::Key_Return);
    }
    QCOMPARE(editor.texts(names), (QStringList{path, u"Büro.v2"_s, u"moef"_s, u"Glow"_s}));
    QCOMPARE(editor.texts(factNames),
             (QStringList{u"29.97"_s, u"300"_s, u"10.0"_s, u"10.0 seconds"_s, u"1920x1080"_s,
                          u"Square"_s}));
    editor.click(u"tClearButton"_s);
    QCOMPARE(editor.texts(names + factNames).join(QString()), QString());
}

void EditorTest::endsAtTheFirstMissingFact()
{
    const Editor editor;
    editor.load(motionFile());
    QStringList expected = editor.texts(factNames);
    editor.load("<ozml");
    QCOMPARE(editor.texts(factNames), expected);
    editor.load(motionFile().replace("29.97", "25").replace("<duration>300</duration>", {}));
    expected.first() = u"25"_s;
    QCOMPARE(editor.texts(factNames), expected);
    QCOMPARE(editor.text(u"textField1"_s), u"Template does not include Theme reference ..."_s);
}

void EditorTest::rejectsOtherFiles()
{
    const Editor editor;
    const QString good = editor.makeFile(u"One.motn"_s, motionFile());
    // Motion's XML, but not by its name.
    const QString loud = editor.makeFile(u"Two.MOTN"_s, motionFile().replace("29.97", "60"));
    const QString folder = editor.makeFolder(u"Folder"_s);
    const AlertAnswerer alerts;
    editor.dropFiles({loud});
    QCOMPARE(editor.texts(factNames).first(), u"60"_s);
    editor.dropFiles({good, folder, loud});
    QCOMPARE(alerts.seen, (QList{wrongKind, wrongKind}));
    QCOMPARE(editor.texts(names), (QStringList{folder, u""_s, u""_s, u""_s}));
    QCOMPARE(editor.texts(factNames).first(), u"29.97"_s);
    QVERIFY(!editor.isEnabled(u"conformButton"_s));
}

void EditorTest::conform_writesEachRate()
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
        QCOMPARE(editor.texts({u"theFrameRate"_s, u"theFrames"_s}), (QStringList{rate, frames}));
    }
}

void EditorTest::conform_withoutARateOrATriple_keepsTheFacts()
{
    const Editor editor;
    editor.load(motionFile());
    editor.conform(0);
    QCOMPARE(editor.text(u"wasArchived"_s), u"Choose Framerate"_s);
    QVERIFY(editor.saved().contains(u"<duration>300</duration>"_s));
    editor.load(motionFile().replace("<NTSC>1</NTSC>", {}));
    const auto before = editor.snapshot();
    editor.conform(4);
    QCOMPARE(editor.snapshot(), before);
}

void EditorTest::theme_isWrittenAsItStands()
{
    const QString name = u"<b a=\"1\">&amp; 日本 😀"_s;
    const Editor editor;
    for (const QByteArray &file : {motionFile(), themedFile()}) {
        editor.load(file);
        editor.enter(u"element"_s, name);
        QVERIFY(editor.saved().contains(u"<theme>&lt;b a=\"1\"&gt;&amp;amp; 日本 😀</theme>"_s));
        QCOMPARE(editor.texts({u"textField1"_s, u"element"_s}), (QStringList{name, u""_s}));
    }
}

void EditorTest::unwritableFile_isLoggedAndKept()
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

void EditorTest::writingBack_keepsTheFactsAndResets()
{
    const Editor editor;
    editor.load(themedFile());
    editor.find<QDialog>(u"confirmSheet"_s)->open();
    editor.click(u"closeConfirmSheet"_s);
    QCOMPARE(editor.read(u"Intro.motn"_s), themedFile());
    editor.find<QAction>(u"writeToFileItem"_s)->trigger();
    QVERIFY(editor.saved().contains(u"\n\t\t<theme>Old</theme>\n"_s)); // indented
    QCOMPARE(editor.text(u"input1"_s), QString());
}

void EditorTest::archive_copiesAndNeverOverwrites()
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

void EditorTest::rename_movesTheFileInItsFolder_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isMoved");
    QTest::newRow("dots and pictograms") << u"Büro.d 😀"_s << true;
    QTest::newRow("taken") << u"Taken"_s << false;
    QTest::newRow("into a folder") << u"Folder.motn/New"_s << false;
    QTest::newRow("out of the folder") << u"../New"_s << false;
    QTest::newRow("too long") << QString(300, u'n') << false;
}

void EditorTest::rename_movesTheFileInItsFolder()
{
    QFETCH(QString, typed);
    QFETCH(bool, isMoved);
    const Editor editor;
    editor.makeFile(u"Glow/Taken.motn"_s, "taken");
    editor.makeFolder(u"Glow/Folder.motn"_s);
    editor.load(motionFile(), u"Glow/a.b.motn"_s);
    auto expected = editor.snapshot();
    const QString renamed = u"Glow/"_s + typed + u".motn"_s;
    if (isMoved)
        expected = LibraryHome::withMoved(expected, u"Glow/a.b.motn"_s, renamed);
    editor.click(u"renameButton"_s);
    editor.enter(u"newTempplateName"_s, typed);
    QCOMPARE(editor.snapshot(), expected);
    QCOMPARE(editor.texts({u"display"_s, u"input1"_s}),
             (QStringList{typed, editor.path() + u'/' + renamed}));
    QVERIFY(!editor.isShown(u"renameSheet"_s));
}

void EditorTest::rename_withoutAName_asksForOne()
{
    const Editor editor;
    editor.load(motionFile());
    const auto before = editor.snapshot();
    editor.click(u"renameButton"_s);
    editor.enter(u"newTempplateName"_s, {});
    QCOMPARE(editor.text(u"newNameWarning"_s),
             u"Please append new name For Template or Cancel ..."_s);
    editor.type(u"newTempplateName"_s, u"New"_s);
    editor.pressKey(u"newTempplateName"_s, Qt::Key_Escape);
    QVERIFY(!editor.isShown(u"renameSheet"_s));
    QCOMPARE(editor.snapshot(), before);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, EditorTest>(argc, argv);
}

#include "EditorTest.moc"
