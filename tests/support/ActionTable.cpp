#include "ActionTable.h"

#include "TableRows.h"

#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;

QStringList addActionRows(const QString &file)
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("changes");
    QStringList items;
    QMap<QString, QString> named = {{u"start"_s, {}}};
    const auto expand = [&](QString text) {
        for (auto each = named.begin(); each != named.end(); ++each)
            text.replace(u'$' + each.key(), each.value());
        return text;
    };
    for (const QByteArrayList &lines : tableRows({file})) {
        const QString line = QString::fromUtf8(lines.join(' '));
        if (line.startsWith("has "_L1) && !line.contains(u'|')) {
            items << line.mid(4);
        } else if (const qsizetype sign = line.indexOf(u" := "_s); sign > 0) {
            named.insert(line.first(sign), expand(line.mid(sign + 4)));
        } else {
            const QString start = line.section(u'|', 0, 0).trimmed();
            const QString action = line.section(u'|', 1, 1).trimmed();
            QStringList steps = start.split(u", "_s);
            for (QString &step : steps)
                step = named.value(step, step);
            QTest::newRow(qUtf8Printable(start + u": "_s + action))
                << steps.join(u", "_s) << action << expand(line.section(u'|', 2));
        }
    }
    return items;
}
