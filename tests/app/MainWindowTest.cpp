#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

using namespace Qt::StringLiterals;

/// Every action of the main window that no mode has for itself.
class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
};

void MainWindowTest::changes_data()
{
    ChangeTable::addRows(u"app/MainWindow.table"_s);
}

void MainWindowTest::changes()
{
    const LibraryHome home;
    home.makeFolder(u"Documents"_s);
    ChangeTable::run(home);
}

QTEST_MAIN(MainWindowTest)

#include "MainWindowTest.moc"
