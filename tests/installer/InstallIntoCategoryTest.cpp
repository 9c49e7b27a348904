#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QButtonGroup>
#include <QDir>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class InstallIntoCategoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void movesTheTemplate_data();
    void movesTheTemplate();
    void touchesNothingElse_data();
    void touchesNothingElse();
    void needsTheCategory_data();
    void needsTheCategory();
    void installsNothingWithoutASelection();
};

void InstallIntoCategoryTest::movesTheTemplate_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("folder");
    for (const auto &category : LibraryHome::categories())
        QTest::newRow(qUtf8Printable(category.name)) << category.choice << category.folder;
}

void InstallIntoCategoryTest::movesTheTemplate()
{
    QFETCH(const QString, choice);
    QFETCH(const QString, folder);
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
    program.click(choice);
    program.click(u"mSendButton"_s);

    QCOMPARE(home.snapshot(), home.withMoved(before, u"Desktop/Glow"_s, folder + u"/Glow"_s));
    QCOMPARE(program.text(u"input"_s), QString());
    QCOMPARE(program.text(u"test"_s), QString());
    QCOMPARE(program.text(u"theLastPathComponent"_s), QString());
    QVERIFY(program.find<QLineEdit>(u"input"_s)->hasFocus());
    QVERIFY(program.installButtonsAre(false));
}

void InstallIntoCategoryTest::touchesNothingElse_data()
{
    QTest::addColumn<QString>("typed"); // "HOME" stands for the full path of the home
    QTest::addColumn<QString>("moved"); // what goes into the category, if anything
    const QString nothing;
    const QString root = u"HOME/Movies/Motion Templates.localized"_s;
    for (const auto *path :
         {"", "/", "//", ".", "..", "./", "../", "/.", "/..", "~", "~/", "~/.", "~/..",
          "~/Desktop/..", "HOME", "HOME/", "HOME/Desktop/.", "HOME/Desktop/../Desktop/.."})
        QTest::addRow("typed \"%s\"", path) << QString::fromLatin1(path) << nothing;
    QTest::newRow("a relative path") << u"Desktop/Glow"_s << nothing;
    QTest::newRow("a bare name") << u"Glow"_s << nothing;
    QTest::newRow("what is not there") << u"HOME/Desktop/Glimmer"_s << nothing;
    QTest::newRow("below what is not there") << u"HOME/Dusktop/Glow"_s << nothing;
    QTest::newRow("below a file") << u"HOME/Desktop/Glow/Glow.moti/x"_s << nothing;
    QTest::newRow("the library") << root << nothing;
    QTest::newRow("the category itself") << root + u"/Titles.localized/"_s << nothing;
    QTest::newRow("trailing slashes") << u"HOME/Desktop/Glow//"_s << u"Desktop/Glow"_s;
    QTest::newRow("a tilde") << u"~/Desktop/Glow"_s << u"Desktop/Glow"_s;
    QTest::newRow("a link, not its target") << u"HOME/Desktop/Link"_s << u"Desktop/Link"_s;
    QTest::newRow("a link to nothing") << u"HOME/Desktop/Dangling"_s << u"Desktop/Dangling"_s;
}

void InstallIntoCategoryTest::touchesNothingElse()
{
    QFETCH(QString, typed);
    QFETCH(const QString, moved);
    const LibraryHome home;
    QVERIFY(QFile::link(home.path(u"Documents"_s), home.makeFolder(u"Desktop"_s) + u"/Link"_s));
    QVERIFY(QFile::link(u"/nonexistent"_s, home.path(u"Desktop/Dangling"_s)));
    const RunningProgram program;
    QVERIFY(QDir::setCurrent(home.path()));
    const auto before = home.snapshot();
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.type(u"input"_s, typed.replace(u"HOME"_s, home.path()));
    program.click(u"mSendButton"_s);

    const auto expected =
        moved.isEmpty()
            ? before
            : home.withMoved(before, moved, home.titles() + moved.mid(moved.lastIndexOf(u'/')));
    QCOMPARE(home.snapshot(), expected);
    QCOMPARE(program.text(u"input"_s), QString());
    QCOMPARE(program.text(u"test"_s), QString());
    QVERIFY(QDir::setCurrent(u"/"_s));
}

void InstallIntoCategoryTest::needsTheCategory_data()
{
    QTest::addColumn<bool>("isFile");
    QTest::addColumn<QString>("subCategory");
    QTest::newRow("missing") << false << QString();
    QTest::newRow("missing, sub-category") << false << u"Lower Thirds"_s;
    QTest::newRow("a file") << true << QString();
    QTest::newRow("a file, sub-category") << true << u"Lower Thirds"_s;
}

void InstallIntoCategoryTest::needsTheCategory()
{
    QFETCH(const bool, isFile);
    QFETCH(const QString, subCategory);
    const LibraryHome home;
    QVERIFY(QDir(home.path(home.titles())).removeRecursively());
    if (isFile)
        home.makeFile(home.titles());
    const RunningProgram program;
    const auto before = home.snapshot();
    program.installTitle(home.path(u"Desktop/Glow"_s), subCategory);
    QCOMPARE(home.changesSince(before), QStringList());
    QCOMPARE(program.text(u"input"_s), QString());
}

void InstallIntoCategoryTest::installsNothingWithoutASelection()
{
    const LibraryHome home;
    const RunningProgram program;
    const auto before = home.snapshot();
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
    auto *matrix = program.find<QButtonGroup>(u"theMatrix"_s);
    matrix->setExclusive(false);
    matrix->checkedButton()->setChecked(false);
    program.click(u"mSendButton"_s);
    QCOMPARE(home.changesSince(before), QStringList());
    QCOMPARE(program.text(u"input"_s), home.path(u"Desktop/Glow"_s));
    QVERIFY(program.find<QLineEdit>(u"input"_s)->hasFocus());
    QVERIFY(program.installButtonsAre(false));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallIntoCategoryTest>(argc, argv);
}

#include "InstallIntoCategoryTest.moc"
