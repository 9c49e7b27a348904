#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QFile>

using namespace Qt::StringLiterals;

class InstallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void movesTheTemplate_data();
    void movesTheTemplate();
    void touchesNothingElse_data();
    void touchesNothingElse();
    void installsWhatWasChosenWhenTheSheetOpened();
    void changesNothingWhenCancelled();
};

void InstallTest::movesTheTemplate_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("subCategory");
    for (const QString &category : LibraryHome::categories()) {
        QTest::newRow(qUtf8Printable(category)) << category << QString();
        QTest::newRow(qUtf8Printable(category + u", sub-category")) << category << u"New "_s;
    }
}

void InstallTest::movesTheTemplate()
{
    QFETCH(const QString, category);
    QFETCH(const QString, subCategory);
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
    program.click(category.toLower() + u"Choice"_s);
    program.install(subCategory);
    QCOMPARE(program.text(u"input"_s), QString());
    QVERIFY(program.installButtonsAre(false));

    QString folder = LibraryHome::folder(category);
    auto expected = before;
    if (!subCategory.isEmpty()) {
        QCOMPARE(program.text(u"sheetLabel"_s), category);
        folder += u'/' + subCategory;
        expected.insert(folder, before.value(LibraryHome::folder(category)));
    }
    QCOMPARE(home.snapshot(), home.withMoved(expected, u"Desktop/Glow"_s, folder + u"/Glow"_s));
}

void InstallTest::touchesNothingElse_data()
{
    QTest::addColumn<QString>("typed"); // "HOME" stands for the full path of the home
    QTest::addColumn<QString>("subCategory");
    QTest::addColumn<QString>("from"); // what is moved, if anything
    QTest::addColumn<QString>("to");   // its place inside Titles
    const QString nothing;
    const QString glow = u"Desktop/Glow"_s;
    for (const char *path :
         {"", "/", "..", "~", "HOME/", "HOME/Desktop/..", "Desktop/Glow", "HOME/Desktop/Glimmer"})
        QTest::addRow("\"%s\"", path) << QString::fromLatin1(path) << nothing << nothing << nothing;
    QTest::newRow("trailing slashes") << u"~/Desktop/Glow//"_s << nothing << glow << u"/Glow"_s;
    QTest::newRow("a link, not its target")
        << u"~/Desktop/Link"_s << nothing << u"Desktop/Link"_s << u"/Link"_s;
    QTest::newRow("into a folder") << u"~/Desktop/Glow"_s << u"Old"_s << glow << u"/Old/Glow"_s;
}

void InstallTest::touchesNothingElse()
{
    QFETCH(QString, typed);
    QFETCH(const QString, subCategory);
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    const LibraryHome home;
    QVERIFY(QFile::link(home.path(u"Documents"_s), home.path(u"Desktop/Link"_s)));
    const RunningProgram program;
    const auto before = home.snapshot();
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.type(u"input"_s, typed.replace(u"HOME"_s, home.path()));
    program.pressKey(u"input"_s, Qt::Key_Return);
    program.install(subCategory);
    QCOMPARE(home.snapshot(),
             from.isEmpty() ? before : home.withMoved(before, from, home.titles() + to));
}

void InstallTest::installsWhatWasChosenWhenTheSheetOpened()
{
    const LibraryHome home;
    const RunningProgram program;
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.click(u"mNewCatButton"_s);
    program.dropFiles(u"installHint"_s, {home.makeFolder(u"Shine"_s)});
    program.click(u"generateCustomFolder"_s);
    QCOMPARE(home.read(home.titles() + u"/Glow/Glow.moti"_s), "new");
    QCOMPARE(home.names(u"Shine"_s), QStringList());
}

void InstallTest::changesNothingWhenCancelled()
{
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.click(u"mNewCatButton"_s);
    program.type(u"textField"_s, u"Lower Thirds"_s);
    program.pressKey(u"textField"_s, Qt::Key_Escape);
    QCOMPARE(home.snapshot(), before);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallTest>(argc, argv);
}

#include "InstallTest.moc"
