#include "TableRows.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray unescaped(QByteArray cell)
{
    cell = QByteArray::fromPercentEncoding(cell.replace("\\n", "\n").replace("\\t", "\t"), '\\');
    for (qsizetype at = 0; (at = cell.indexOf('{', at)) >= 0;) {
        const qsizetype blank = cell.indexOf(' ', at);
        const qsizetype end = cell.indexOf('}', blank);
        const QByteArray once = cell.sliced(blank + 1, end - blank - 1);
        const QByteArray often = once.repeated(cell.sliced(at + 1, blank - at - 1).toInt());
        cell.replace(at, end + 1 - at, often);
        at += often.size();
    }
    return cell;
}

} // namespace

QList<QByteArrayList> tableRows(const QStringList &files)
{
    QList<QByteArrayList> rows;
    for (const QString &name : files) {
        QFile file(QStringLiteral(BRIMVALE_TESTS_FOLDER "/") + name);
        if (!file.open(QFile::ReadOnly))
            qFatal("there is no table %s", qUtf8Printable(name));
        while (!file.atEnd()) {
            const QByteArray line = file.readLine();
            if (line.startsWith(' '))
                rows.last() << line.trimmed();
            else if (!line.startsWith('#') && !line.trimmed().isEmpty())
                rows << QByteArrayList{line.trimmed()};
        }
    }
    return rows;
}

void addTableRows(const QStringList &files)
{
    QTest::addColumn<QByteArrayList>("row");
    QByteArrayList row;
    for (const QByteArrayList &lines : tableRows(files)) {
        const QByteArray line = lines.join();
        const QByteArrayList above = row;
        row.clear();
        for (const QByteArray &cell : line.split('|'))
            row << (cell.trimmed() == "\"" ? above.value(row.size()) : unescaped(cell.trimmed()));
        QTest::newRow(line.constData()) << row;
    }
}
