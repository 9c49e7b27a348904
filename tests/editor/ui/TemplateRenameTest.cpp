#include "Editor.h"
#include "tests/support/LibraryHome.h"

using namespace Qt::StringLiterals;

class TemplateRenameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void renames_data();
    void renames();
    void asksForAName();
    void cancels_data();
    void cancels();
};

namespace {

const QString sheet = u"renameSheet"_s;
const QString field = u"newTempplateName"_s;

QString title(const Editor &editor)
{
    return editor.find<QWidget>(u"mWindow"_s)->windowTitle();
}

} // namespace

void TemplateRenameTest::renames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("renamed");
    QTest::addColumn<bool>("isMoved");
    QTest::newRow("plain") << u"Old.moti"_s << u"New"_s << u"New.moti"_s << true;
    QTest::newRow("dots") << u"a.b.motn"_s << u"c.d"_s << u"c.d.motn"_s << true;
    QTest::newRow("blanks only") << u"Old.motr"_s << u"  "_s << u"  .motr"_s << true;
    QTest::newRow("dots only") << u"Old.moef"_s << u".."_s << u"...moef"_s << true;
    QTest::newRow("pictogram") << u"Old.moti"_s << u"Büro 😀"_s << u"Büro 😀.moti"_s << true;
    QTest::newRow("no extension") << u"Old"_s << u"New"_s << u"New."_s << true;
    const auto failure = [](const char *why, const QString &typed) {
        QTest::newRow(why) << u"Old.moti"_s << typed << typed + u".moti"_s << false;
    };
    failure("taken by a file", u"Taken"_s);
    failure("taken by a folder", u"Folder"_s);
    failure("its own name", u"Old"_s);
    failure("into a folder", u"Folder.moti/New"_s);
    failure("out of the folder", u"../New"_s);
    failure("from the root", u"/New"_s);
    failure("too long", QString(300, u'n'));
}

void TemplateRenameTest::renames()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(QString, renamed);
    QFETCH(bool, isMoved);
    const AlertAnswerer alerts; // of the file without an extension
    const Editor editor;
    editor.makeFile(u"Glow/Taken.moti"_s, "taken");
    editor.makeFolder(u"Glow/Folder.moti"_s);
    editor.load(motionFile(), u"Glow/"_s + name);
    const auto before = editor.snapshot();
    editor.click(u"renameButton"_s);
    QVERIFY(editor.waitUntilActive(sheet));
    QCOMPARE(editor.find<QWidget>(sheet)->windowModality(), Qt::WindowModal);
    QCOMPARE(title(editor), editor.text(u"display"_s));
    QVERIFY(editor.find<QWidget>(field)->hasFocus());
    editor.paste(field, typed);
    editor.pressKey(field, Qt::Key_Return);

    QVERIFY(!editor.isShown(sheet));
    QCOMPARE(title(editor), u"Brimvale"_s);
    QCOMPARE(editor.snapshot(),
             isMoved ? LibraryHome::withMoved(before, u"Glow/"_s + name, u"Glow/"_s + renamed)
                     : before);
    QCOMPARE(editor.texts({u"display"_s, u"input1"_s, field}),
             (QStringList{typed, editor.path(u"Glow"_s) + u'/' + renamed, typed}));
}

void TemplateRenameTest::asksForAName()
{
    const Editor editor;
    editor.load(motionFile());
    const auto before = editor.snapshot();
    editor.click(u"renameButton"_s);
    QVERIFY(editor.waitUntilActive(sheet));
    editor.pressKey(field, Qt::Key_Return);
    QVERIFY(editor.isShown(sheet));
    QCOMPARE(editor.text(u"newNameWarning"_s),
             u"Please append new name For Template or Cancel ..."_s);
    QCOMPARE(editor.colour(u"newNameWarning"_s), QColor::fromRgbF(0.1723F, 0.2978F, 1));
    QCOMPARE(title(editor), u"Intro"_s);
    QCOMPARE(editor.snapshot(), before);
    editor.type(field, u"x"_s);
    editor.click(u"clearRenameTextField"_s);
    QCOMPARE(editor.text(u"newNameWarning"_s) + editor.text(field), QString());
    QVERIFY(editor.isShown(sheet));
    QVERIFY(editor.find<QWidget>(field)->hasFocus());
}

void TemplateRenameTest::cancels_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("escape") << true;
}

void TemplateRenameTest::cancels()
{
    QFETCH(bool, byKey);
    const Editor editor;
    editor.load(motionFile());
    editor.click(u"renameButton"_s);
    editor.pressKey(field, Qt::Key_Return);
    editor.type(field, u"New"_s);
    if (byKey)
        editor.pressKey(field, Qt::Key_Escape);
    else
        editor.click(u"cancelRenameTemplate"_s);
    QVERIFY(!editor.isShown(sheet));
    QCOMPARE(editor.text(u"newNameWarning"_s) + editor.text(field), QString());
    QCOMPARE(title(editor), u"Brimvale"_s);
    QCOMPARE(editor.names({}).filter(u".motn"_s), QStringList{u"Intro.motn"_s});
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, TemplateRenameTest>(argc, argv);
}

#include "TemplateRenameTest.moc"
