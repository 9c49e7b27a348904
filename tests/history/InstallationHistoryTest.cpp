#include "history/InstallationDelegate.h"
#include "history/InstallationRecord.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QClipboard>
#include <QHeaderView>
#include <QTableView>
#include <QTextDocumentFragment>

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
    void paintsEachPartInItsColumn();
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
    QApplication::clipboard()->clear();
    program.find<QWidget>(u"logFilter"_s)->setFocus(); // the menu's command is for the field then
    program.find<QAction>(u"copyItem"_s)->trigger();
    QCOMPARE(QApplication::clipboard()->text(), QString());

    program.find<QWidget>(u"mWindow"_s)->activateWindow();
    program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
    program.click(u"mSendButton"_s);
    QTRY_COMPARE(shownLines(program).size(), 101);
    QVERIFY(table->selectionModel()->isRowSelected(3));
    QVERIFY(table->visualRect(table->model()->index(100, 0)).bottom() <=
            table->viewport()->height());
}

/// As far as it can be told without a picture to compare with: what differs between two lines
/// differs in its own column, and the header has a word over each.
void InstallationHistoryTest::paintsEachPartInItsColumn()
{
    const LibraryHome home;
    for (const QString &line : {u"2026-11-21 Titles   Glow"_s, u"2025-11-21 Titles   Glow"_s,
                                u"2026-11-21 Effects   Glow"_s, u"2026-11-21 Titles   <b>Shine"_s})
        QVERIFY(appendInstallation({line}));
    const RunningProgram program;
    program.click(u"openLogsWindow"_s);
    auto *table = program.find<QTableView>(u"theTable"_s);
    table->setAlternatingRowColors(false);
    program.find<QWidget>(u"logFilter"_s)->setFocus();
    const auto cells = [&](QWidget *painted, const QRect &row) {
        QList<QImage> pictures;
        for (const QRect &each : InstallationDelegate::columns(row, table))
            pictures << painted->grab(QRect(each.topLeft(), QSize(70, row.height()))).toImage();
        return pictures;
    };
    const auto rowAt = [&](int row) {
        return cells(table->viewport(), table->visualRect(table->model()->index(row, 0)));
    };
    const QList<QImage> first = rowAt(0);
    for (int part = 0; part < 3; ++part) {
        const QList<QImage> other = rowAt(part + 1);
        for (int column = 0; column < 3; ++column)
            QCOMPARE(other.at(column) != first.at(column), column == part);
    }
    const QList<QImage> titles =
        cells(table->horizontalHeader(), table->horizontalHeader()->rect());
    QVERIFY(titles.at(0) != titles.at(1) && titles.at(1) != titles.at(2));
    const QString tip = table->model()->index(3, 0).data(Qt::ToolTipRole).toString();
    QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), u"2026-11-21 Titles <b>Shine"_s);
}

QTEST_MAIN(InstallationHistoryTest)

#include "InstallationHistoryTest.moc"
