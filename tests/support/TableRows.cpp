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

void addTableRows(const QStringList &files)
{
    QByteArrayList lines;
    for (const QString &name : files) {
        QFile file(QStringLiteral(BRIMVALE_TESTS_FOLDER "/") + name);
        if (!file.open(QFile::ReadOnly))
            qFatal("there is no table %s", qUtf8Printable(name));
        while (!file.atEnd()) {
            const QByteArray line = file.readLine();
            if (line.startsWith(' '))
                lines.last() += line.trimmed();
            else if (!line.startsWith('#'))
                lines << line.trimmed();
        }
    }
    QTest::addColumn<QByteArrayList>("row");
    QByteArrayList row;
    for (const QByteArray &line : std::as_const(lines)) {
        const QByteArrayList above = row;
        row.clear();
        for (const QByteArray &cell : line.split('|'))
            row << (cell.trimmed() == "\"" ? above.value(row.size()) : unescaped(cell.trimmed()));
        QTest::newRow(line.constData()) << row;
    }
}
