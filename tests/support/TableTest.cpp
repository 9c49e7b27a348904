#include "ActionTable.h"
#include "Scene.h"

using namespace Qt::StringLiterals;

/// Holds every row of a table: what is done changes this, and nothing else.
class TableTest : public QObject
{
    Q_OBJECT

public:
    explicit TableTest(const QString &file) : m_file(file) {}

private Q_SLOTS:
    void changes_data();
    void changes();

private:
    const QString m_file;
    QStringList m_items;
};

void TableTest::changes_data()
{
    m_items = addActionRows(m_file);
}

void TableTest::changes()
{
    QFETCH(const QString, start);
    QFETCH(const QString, action);
    QFETCH(const QString, changes);
    Scene scene(m_items);
    for (const QString &steps : {start, action}) {
        std::ignore = scene.changes();
        scene.perform(steps);
        if (QTest::currentTestFailed())
            return;
    }
    const QStringList expected = ChangeList::parsed(changes);
    const QStringList all = scene.changes();
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
