#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

using namespace Qt::StringLiterals;

class FolderStructureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesWhatIsMissing_data();
    void makesWhatIsMissing();
};

void FolderStructureTest::makesWhatIsMissing_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    QTest::addColumn<qsizetype>("made");
    const QString root = u"Movies/Motion Templates.localized"_s;
    const QString there = u"Folder Structure already exists - ! ..."_s;
    QTest::newRow("no library") << u"Movies"_s << u"other"_s << u"Folder Structure Created"_s
                                << qsizetype{6};
    QTest::newRow("categories missing")
        << root + u"/Effects.localized"_s << root + u"/Titles.localized"_s << there << qsizetype{3};
    QTest::newRow("the library is a file") << u"Movies"_s << root << there << qsizetype{0};
}

void FolderStructureTest::makesWhatIsMissing()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, file);
    QFETCH(const QString, message);
    QFETCH(const qsizetype, made);
    const TestHome home;
    home.makeFolder(folder);
    home.makeFile(file);
    const RunningProgram program;
    program.click(u"runPrefsWindow"_s);
    const auto before = home.snapshot().size();
    program.click(u"createFolderStructure"_s);
    QCOMPARE(program.text(u"existsTextField"_s), message);
    QCOMPARE(home.snapshot().size() - before, made);
    QCOMPARE(home.read(file), "content");
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, FolderStructureTest>(argc, argv);
}

#include "FolderStructureTest.moc"
