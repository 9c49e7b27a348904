#include "Editor.h"

using namespace Qt::StringLiterals;

namespace {

const QString noTheme = u"Template does not include Theme reference ..."_s;
const QString couldNotWrite = u"Could not write document out..."_s;

/// Types a name, and presses Return.
void setTheme(const Editor &editor, const QString &name)
{
    editor.paste(u"element"_s, name);
    editor.pressKey(u"element"_s, Qt::Key_Return);
}

} // namespace

class ThemeReferenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheNameAsItStands();
    void insertsTheElementOnce();
    void needsThreeChildren();
    void leavesWhatItCannotChange_data();
    void leavesWhatItCannotChange();
};

void ThemeReferenceTest::writesTheNameAsItStands()
{
    const QString name = u"<b a=\"1\">&amp; 'x' ]]> 日本 😀"_s;
    const Editor editor;
    for (const QByteArray &file : {motionFile(), themedFile("Old")}) {
        editor.load(file);
        editor.click(u"orgButton"_s);
        editor.load(file); // offers the archive again
        setTheme(editor, name);
        QStringList expected = elements(themedFile("Old"));
        expected.replaceInStrings(u"theme=Old"_s, u"theme="_s + name);
        QCOMPARE(elements(editor.read(u"Intro.motn"_s)), expected);
        QCOMPARE(editor.text(u"textField1"_s), name);
        QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::black));
        const QStringList emptied = {u"element"_s, u"dateTextField"_s, u"wasArchived"_s};
        QCOMPARE(editor.texts(emptied).join(QString()), QString());
        QVERIFY(!editor.isShown(u"orgButton"_s));
        QVERIFY(editor.waitForAnimation());
    }
}

void ThemeReferenceTest::insertsTheElementOnce()
{
    const Editor editor;
    editor.load(motionFile());
    editor.click(u"conformButton"_s); // asks for a frame rate, and hides the bar
    const LogLines log;
    setTheme(editor, u"One"_s);
    QCOMPARE(log.take(), QStringList());
    QVERIFY(editor.isShown(u"progressBarT"_s));
    setTheme(editor, u"Two"_s);
    QCOMPARE(log.take(), QStringList{u"(One)"_s});
    QCOMPARE(elements(editor.read(u"Intro.motn"_s)), elements(themedFile("Two")));
}

void ThemeReferenceTest::needsThreeChildren()
{
    const Editor editor;
    editor.load("<ozml>\n<a/>\n\n<b/>\n</ozml>");
    const auto before = editor.snapshot();
    const LogLines log;
    setTheme(editor, u"Glow"_s);
    QCOMPARE(editor.snapshot(), before);
    QCOMPARE(editor.text(u"element"_s), u"Glow"_s);
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::blue));
    QVERIFY(editor.isShown(u"orgButton"_s));
    QCOMPARE(log.take(), QStringList());
}

void ThemeReferenceTest::leavesWhatItCannotChange_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("no XML") << QByteArray("<ozml>") << false << noTheme
                            << QStringList(2, couldNotWrite);
    QTest::newRow("insertion") << motionFile() << true << noTheme << QStringList(2, couldNotWrite);
    QTest::newRow("change") << themedFile("Old") << true << u"New"_s
                            << QStringList{u"(Old)"_s, couldNotWrite};
}

void ThemeReferenceTest::leavesWhatItCannotChange()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, readOnly);
    const Editor editor;
    editor.load(file);
    if (readOnly)
        QFile::setPermissions(editor.path(u"Intro.motn"_s), QFile::ReadOwner);
    const auto before = editor.snapshot();
    const LogLines log;
    setTheme(editor, u"New"_s);
    QTEST(log.take(), "lines");
    QTEST(editor.text(u"textField1"_s), "shown");
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::black));
    QCOMPARE(editor.text(u"element"_s), QString());
    QCOMPARE(editor.snapshot(), before);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, ThemeReferenceTest>(argc, argv);
}

#include "ThemeReferenceTest.moc"
