#include "history/InstallationRecord.h"
#include "tests/support/ChangeTable.h"
#include "tests/support/LibraryHome.h"

#include <QClipboard>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

/// What the history window shows.
QStringList shownLines(const RunningProgram &program)
{
    const QAbstractItemModel *model = program.find<QTableView>(u"theTable"_s)->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row)
        lines << model->index(row, 0).data().toString();
    return lines;
}

} // namespace

class InstallationHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes_data();
    void changes();
    void runsOneAnimationForTwoInstalls();
    void leavesOutWhatIsNoRecord();
    void takesALineApart_data();
    void takesALineApart();
    void copiesWhatIsSelected();
    void staysAtWhatIsSelectedWhenARecordComes();
};

void InstallationHistoryTest::changes_data()
{
    ChangeTable::addRows(u"history/InstallationHistory.table"_s);
}

void InstallationHistoryTest::changes()
{
    const TestHome home;
    QVERIFY(appendInstallation({u"a line"_s}));
    ChangeTable::run(home);
}

void InstallationHistoryTest::runsOneAnimationForTwoInstalls()
{
    const LibraryHome home;
    const RunningProgram program;
    QSignalSpy bar(program.find<QProgressBar>(u"progressBar"_s), &QProgressBar::valueChanged);
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.install();
    QTRY_VERIFY(bar.size() > 50);
    program.chooseTitle(home.makeFolder(u"Desktop/Shine"_s));
    program.install();
    QTRY_COMPARE(shownLines(program).size(), 1);
    QVERIFY(!bar.wait(50)); // a second timer would count on
    QCOMPARE(bar.size(), 101);
    QCOMPARE(bar.last().first().toInt(), 0);
    QCOMPARE(home.names(u"Desktop"_s), QStringList());
}

void InstallationHistoryTest::leavesOutWhatIsNoRecord()
{
    const QVariantMap record{{u"installations"_s, u"a line"_s}};
    const QVariantMap other{{u"something"_s, u"else"_s}};
    QCOMPARE(installationRecords(record).size(), 0);
    const auto records = installationRecords(QVariantList{u"text"_s, other, record, QVariant(), 5});
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.at(0).line, u"a line"_s);
}

void InstallationHistoryTest::takesALineApart_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("ours") << u"2026-11-21 10:00:00 Titles   Lower   Third"_s
                          << QStringList{u"2026-11-21 10:00:00"_s, u"Titles"_s, u"Lower   Third"_s};
    QTest::newRow("no name") << u"a b Effects   "_s << QStringList{u"a b"_s, u"Effects"_s, u""_s};
    for (const char *line : {"", "   ", "Titles   Glow", " Titles   Glow", "1 Titles  Glow",
                             "1 Other   Glow", "1 titles   Glow", "a line"})
        QTest::newRow(line) << QString::fromLatin1(line) << QStringList();
}

void InstallationHistoryTest::takesALineApart()
{
    QFETCH(QString, line);
    const auto parts = InstallationRecord{line}.parts();
    QTEST(parts ? QStringList({parts->date, parts->category, parts->templateName}) : QStringList(),
          "parts");
}

/// Top to bottom, whatever the order of the clicks; the Edit menu's items do the same.
void InstallationHistoryTest::copiesWhatIsSelected()
{
    const TestHome home;
    for (const QString &line : {u"first"_s, u"second"_s, u"third"_s})
        QVERIFY(appendInstallation({line}));
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    QVERIFY(QTest::qWaitForWindowActive(program.find<QWidget>(u"logWindow"_s)));
    auto *table = program.find<QTableView>(u"theTable"_s);
    table->selectRow(2);
    table->selectionModel()->select(table->model()->index(0, 0), QItemSelectionModel::Select);
    QTest::keySequence(table, QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), u"first\nthird"_s);
    program.find<QAction>(u"selectAllItem"_s)->trigger();
    program.find<QAction>(u"copyItem"_s)->trigger();
    QCOMPARE(QApplication::clipboard()->text(), u"first\nsecond\nthird"_s);
}

void InstallationHistoryTest::staysAtWhatIsSelectedWhenARecordComes()
{
    const LibraryHome home;
    for (int line = 0; line < 100; ++line)
        QVERIFY(appendInstallation({QString::number(line)}));
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    auto *table = program.find<QTableView>(u"theTable"_s);
    table->selectRow(3);
    program.find<QWidget>(u"mWindow"_s)->activateWindow();
    program.chooseTitle(home.path(u"Desktop/Glow"_s));
    program.install();
    QTRY_COMPARE(shownLines(program).size(), 101);
    QVERIFY(table->selectionModel()->isRowSelected(3));
    QVERIFY(table->visualRect(table->model()->index(100, 0)).bottom() <=
            table->viewport()->height());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallationHistoryTest>(argc, argv);
}

#include "InstallationHistoryTest.moc"
