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
    ChangeTable::addRows(u"installer/InstallPage.table"_s);
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

QTEST_MAIN(InstallPageTest)

#include "InstallPageTest.moc"
