#include "HomeItem.h"
#include "Step.h"

using namespace Qt::StringLiterals;

/// A table of actions, from a file beside the tests of its room. A row is
///     start state | action | every change
/// where the start state and the action are steps (Step.h) with ", " between them, and the changes
/// (ChangeList.h) have "; " between them. "start" is the program as it starts. A line that starts
/// with blanks goes on with the one before it.
///     name := text        a start state of that name, or "$name", changes that many rows have
///     has item            what the home of each row has (HomeItem.h)
///     # text              a remark
class TableTest : public QObject
{
    Q_OBJECT

public:
    explicit TableTest(const QString &file) : m_file(file) {}

private Q_SLOTS:
    void changes_data();
    void changes();

private:
    [[nodiscard]] QStringList lines() const;

    const QString m_file;
    QStringList m_items;
};

QStringList TableTest::lines() const
{
    QFile table(m_file);
    if (!table.open(QIODevice::ReadOnly))
        qFatal("there is no table %s", qUtf8Printable(m_file));
    QStringList lines;
    for (const QString &line :
         QString::fromUtf8(table.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u' ') && !lines.isEmpty())
            lines.last() += u' ' + line.trimmed();
        else if (!line.startsWith(u'#'))
            lines << line;
    }
    return lines;
}

void TableTest::changes_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("changes");
    QMap<QString, QString> named = {{u"start"_s, {}}};
    const auto expand = [&](QString text) {
        for (auto each = named.begin(); each != named.end(); ++each)
            text.replace(u'$' + each.key(), each.value());
        return text;
    };
    for (const QString &line : lines()) {
        if (line.startsWith("has "_L1) && !line.contains(u'|')) {
            m_items << line;
        } else if (const qsizetype sign = line.indexOf(u" := "_s); sign > 0) {
            named.insert(line.first(sign).trimmed(), expand(line.mid(sign + 4)).simplified());
        } else {
            const QString start = line.section(u'|', 0, 0).simplified();
            const QString action = line.section(u'|', 1, 1).simplified();
            QStringList steps = start.split(u", "_s);
            for (QString &step : steps)
                step = named.value(step, step);
            QTest::newRow(qUtf8Printable(start + u": "_s + action))
                << steps.join(u", "_s) << action << expand(line.section(u'|', 2));
        }
    }
}

void TableTest::changes()
{
    QFETCH(const QString, start);
    QFETCH(const QString, action);
    QFETCH(const QString, changes);
    const TestHome home;
    for (const QString &item : std::as_const(m_items))
        putIntoHome(home, item.mid(4));
    const RunningProgram program;
    ChangeList list(home);
    for (const QString &steps : {start, action}) {
        std::ignore = list.take();
        for (const QString &step : steps.split(u", "_s, Qt::SkipEmptyParts)) {
            perform(step, program, list, home);
            if (QTest::currentTestFailed())
                return;
        }
    }
    const QStringList expected = ChangeList::parsed(changes);
    const QStringList all = list.take();
    QStringList missing = expected;
    QStringList more = all;
    for (const QString &each : all)
        missing.removeOne(each);
    for (const QString &each : expected)
        more.removeOne(each);
    QVERIFY2(all == expected,
             qUtf8Printable(u"\n   missing: "_s + missing.join(u"; "_s) + u"\n   too many: "_s +
                            more.join(u"; "_s) + u"\n   all: "_s + all.join(u"; "_s)));
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2)
        qFatal("which table?");
    TableTest test(arguments.takeAt(1));
    return QTest::qExec(&test, arguments);
}

#include "TableTest.moc"
