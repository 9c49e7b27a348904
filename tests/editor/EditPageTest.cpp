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
    ChangeTable::addRows(u"editor/EditPage.table"_s);
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
    home.makeFile(u"[*].x.motn"_s, file);
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

QTEST_MAIN(EditPageTest)

#include "EditPageTest.moc"
