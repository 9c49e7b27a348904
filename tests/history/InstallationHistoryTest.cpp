#include "history/InstallationRecord.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QClipboard>
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
    void leavesOutWhatIsNoRecord();
    void takesALineApart();
    void keepsWhatIsSelected();
};

void InstallationHistoryTest::leavesOutWhatIsNoRecord()
{
    const QVariantMap record{{u"installations"_s, u"a line"_s}};
    const QVariantMap other{{u"something"_s, u"else"_s}};
    QCOMPARE(installationRecords(record).size(), 0);
    const auto records = installationRecords(QVariantList{u"text"_s, other, record, QVariant(), 5});
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.at(0).line, u"a line"_s);
}

void InstallationHistoryTest::takesALineApart()
{
    const auto partsOf = [](const QString &line) {
        const auto parts = InstallationRecord{line}.parts();
        return parts ? QStringList{parts->date, parts->category, parts->templateName}.join(u'|')
                     : QString();
    };
    QCOMPARE(partsOf(u"2026-11-21 10:00:00 Titles   Lower   Third"_s),
             u"2026-11-21 10:00:00|Titles|Lower   Third"_s);
    QCOMPARE(partsOf(u"a b Effects   "_s), u"a b|Effects|"_s);
    for (const char *line : {"", "   ", "Titles   Glow", " Titles   Glow", "1 Titles  Glow",
                             "1 Other   Glow", "1 titles   Glow", "a line"})
        QVERIFY2(partsOf(QString::fromLatin1(line)).isEmpty(), line);
}

/// Copies it top to bottom, whatever the order of the clicks, by key and by menu; a new record is
/// shown, and leaves it selected.
void InstallationHistoryTest::keepsWhatIsSelected()
{
    const LibraryHome home;
    for (int line = 0; line < 100; ++line)
        QVERIFY(appendInstallation({QString::number(line)}));
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    QVERIFY(QTest::qWaitForWindowActive(program.find<QWidget>(u"logWindow"_s)));
    auto *table = program.find<QTableView>(u"theTable"_s);
    program.find<QAction>(u"selectAllItem"_s)->trigger();
    QCOMPARE(table->selectionModel()->selectedRows().size(), 100);
    table->selectRow(3);
    table->selectionModel()->select(table->model()->index(1, 0), QItemSelectionModel::Select);
    QTest::keySequence(table, QKeySequence::Copy);
    const QString copied = QApplication::clipboard()->text();
    QCOMPARE(copied, shownLines(program).at(1) + u'\n' + shownLines(program).at(3));
    QApplication::clipboard()->clear();
    program.find<QAction>(u"copyItem"_s)->trigger();
    QCOMPARE(QApplication::clipboard()->text(), copied);

    program.find<QWidget>(u"mWindow"_s)->activateWindow();
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
    program.click(u"mSendButton"_s);
    QTRY_COMPARE(shownLines(program).size(), 101);
    QVERIFY(table->selectionModel()->isRowSelected(3));
    QVERIFY(table->visualRect(table->model()->index(100, 0)).bottom() <=
            table->viewport()->height());
}

QTEST_MAIN(InstallationHistoryTest)

#include "InstallationHistoryTest.moc"
