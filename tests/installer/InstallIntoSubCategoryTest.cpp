#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QDir>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class InstallIntoSubCategoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatItWillInstall();
    void installsIntoTheNamedFolder_data();
    void installsIntoTheNamedFolder();
    void installsWhatWasChosenWhenTheSheetOpened();
    void changesNothingWhenCancelled();
    void installsNothingWithoutATemplate_data();
    void installsNothingWithoutATemplate();

private:
    static void openSheet(const RunningProgram &program, const LibraryHome &home);
};

/// For the template on the desktop, and Titles.
void InstallIntoSubCategoryTest::openSheet(const RunningProgram &program, const LibraryHome &home)
{
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.click(u"mNewCatButton"_s);
}

void InstallIntoSubCategoryTest::showsWhatItWillInstall()
{
    const LibraryHome home;
    const RunningProgram program;
    openSheet(program, home);
    const auto *sheet = program.find<QWidget>(u"catSheet"_s);
    QVERIFY(sheet->isVisible());
    QCOMPARE(sheet->windowModality(), Qt::WindowModal);
    QCOMPARE(sheet->parentWidget(), program.find<QWidget>(u"mWindow"_s));
    for (const auto &category : home.categories()) {
        program.type(u"textField"_s, u"left over"_s);
        program.click(u"closeSheet"_s);
        program.click(category.choice);
        program.click(u"mNewCatButton"_s);
        QCOMPARE(program.text(u"sheetLabel"_s), category.name);
        QCOMPARE(program.text(u"textField"_s), QString());
        QCOMPARE(program.text(u"mirroredPath"_s), home.path(u"Desktop/Glow"_s));
        QCOMPARE(program.text(u"theReQueue"_s), u"Glow"_s);
        QCOMPARE(program.text(u"theLastPathComponent"_s), u"Glow"_s);
    }
}

void InstallIntoSubCategoryTest::installsIntoTheNamedFolder_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("made");      // a folder inside Titles, if any
    QTest::addColumn<QString>("installed"); // the template's place inside Titles, if any
    const auto row = [](const char *title, const QString &typed, const QString &made,
                        const QString &installed) {
        QTest::newRow(title) << typed << made << installed;
    };
    const QString nothing;
    row("a new name", u"Lower Thirds"_s, u"/Lower Thirds"_s, u"/Lower Thirds/Glow"_s);
    row("an existing folder", u"Old"_s, nothing, u"/Old/Glow"_s);
    row("no name", nothing, nothing, u"/Glow"_s);
    row("a trailing blank", u"Lower "_s, u"/Lower "_s, u"/Lower /Glow"_s);
    row("a trailing slash", u"Lower/"_s, u"/Lower"_s, u"/Lower/Glow"_s);
    row("a leading slash", u"/Lower"_s, u"/Lower"_s, u"/Lower/Glow"_s);
    row("a tilde", u"~"_s, u"/~"_s, u"/~/Glow"_s);
    row("below a tilde", u"~/Lower"_s, nothing, nothing);
    row("below a missing folder", u"Lower/Thirds"_s, nothing, nothing);
    row("below an existing folder", u"Old/Lower"_s, u"/Old/Lower"_s, u"/Old/Lower/Glow"_s);
    row("a file", u"Old/Old.moti"_s, nothing, nothing);
    row("a name too long", QString(300, u'x'), nothing, nothing);
    row("the longest name", QString(255, u'x'), u'/' + QString(255, u'x'),
        u'/' + QString(255, u'x') + u"/Glow"_s);
    row("the category itself", u"."_s, nothing, u"/Glow"_s);
    row("another category", u"../Effects.localized"_s, nothing, u"/../Effects.localized/Glow"_s);
}

void InstallIntoSubCategoryTest::installsIntoTheNamedFolder()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, made);
    QFETCH(const QString, installed);
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    openSheet(program, home);
    program.type(u"textField"_s, typed);
    program.pressKey(u"textField"_s, Qt::Key_Return);

    auto expected = before;
    if (!installed.isEmpty())
        expected =
            home.withMoved(before, u"Desktop/Glow"_s, QDir::cleanPath(home.titles() + installed));
    if (!made.isEmpty())
        expected.insert(home.titles() + made, before.value(home.titles()));
    QCOMPARE(home.snapshot(), expected);
    QVERIFY(!program.isShown(u"catSheet"_s));
    QCOMPARE(program.text(u"theReQueue"_s), u"Done"_s);
    QCOMPARE(program.text(u"theLastPathComponent"_s), u"Glow"_s);
    for (const QString &field : {u"mirroredPath"_s, u"textField"_s, u"input"_s, u"test"_s})
        QCOMPARE(program.text(field), QString());
    QVERIFY(program.installButtonsAre(false));
    QTRY_VERIFY(program.find<QLineEdit>(u"input"_s)->hasFocus());
}

void InstallIntoSubCategoryTest::installsWhatWasChosenWhenTheSheetOpened()
{
    const LibraryHome home;
    home.makeFolder(u"Desktop/Shine"_s);
    const RunningProgram program;
    const auto before = home.snapshot();
    openSheet(program, home);
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Shine"_s)});
    QCOMPARE(program.text(u"test"_s), u"Shine"_s);
    program.click(u"generateCustomFolder"_s);
    QCOMPARE(home.snapshot(),
             home.withMoved(before, u"Desktop/Glow"_s, home.titles() + u"/Glow"_s));
}

void InstallIntoSubCategoryTest::changesNothingWhenCancelled()
{
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    for (const bool byEscape : {false, true}) {
        openSheet(program, home);
        program.type(u"textField"_s, u"Lower Thirds"_s);
        if (byEscape)
            program.pressKey(u"textField"_s, Qt::Key_Escape);
        else
            program.click(u"closeSheet"_s);
        QVERIFY(!program.isShown(u"catSheet"_s));
        QCOMPARE(home.changesSince(before), QStringList());
        QCOMPARE(program.text(u"mirroredPath"_s), home.path(u"Desktop/Glow"_s));
        QCOMPARE(program.text(u"input"_s), home.path(u"Desktop/Glow"_s));
        QCOMPARE(program.text(u"theReQueue"_s), u"Glow"_s);
        QVERIFY(program.installButtonsAre(true));
    }
}

void InstallIntoSubCategoryTest::installsNothingWithoutATemplate_data()
{
    QTest::addColumn<bool>("confirmed");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("made");
    const QString lower = LibraryHome::titles() + u"/Lower"_s;
    QTest::newRow("no name left, new folder") << true << u"Lower"_s << QStringList{lower};
    QTest::newRow("no name left, the category") << true << QString() << QStringList();
    QTest::newRow("no path left, new folder") << false << u"Lower"_s << QStringList{lower};
    QTest::newRow("no path left, the category") << false << QString() << QStringList();
}

void InstallIntoSubCategoryTest::installsNothingWithoutATemplate()
{
    QFETCH(const bool, confirmed);
    QFETCH(const QString, typed);
    QFETCH(const QStringList, made);
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.type(u"input"_s, QString());
    if (confirmed)
        program.pressKey(u"input"_s, Qt::Key_Return);
    program.click(u"mNewCatButton"_s);
    QVERIFY(program.isShown(u"catSheet"_s));
    QCOMPARE(program.text(u"theLastPathComponent"_s), u"Please assign a Folder Path ..."_s);
    program.type(u"textField"_s, typed);
    program.click(u"generateCustomFolder"_s);
    QCOMPARE(home.changesSince(before), made);
    QCOMPARE(program.text(u"theReQueue"_s), u"Done"_s);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallIntoSubCategoryTest>(argc, argv);
}

#include "InstallIntoSubCategoryTest.moc"
