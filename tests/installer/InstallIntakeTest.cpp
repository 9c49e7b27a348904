#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QUrl>

using namespace Qt::StringLiterals;

class InstallIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesDrops_data();
    void takesDrops();
    void takesDropsOnTheField();
};

void InstallIntakeTest::takesDrops_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("refused");
    QTest::addColumn<QString>("taken");
    QTest::newRow("any bytes in its name")
        << QStringList{u"Glöw % #1 'x'\n/"_s} << 0 << u"Glöw % #1 'x'\n"_s;
    QTest::newRow("a file") << QStringList{u"Glow.motn"_s} << 1 << QString();
    QTest::newRow("a folder with an extension") << QStringList{u"Pack.v2/"_s} << 1 << QString();
    QTest::newRow("folder last") << QStringList{u"a.motn"_s, u"b/"_s} << 1 << u"b"_s;
    QTest::newRow("file last") << QStringList{u"a/"_s, u"b.motn"_s} << 1 << QString();
}

void InstallIntakeTest::takesDrops()
{
    QFETCH(const QStringList, names);
    QFETCH(const int, refused);
    QFETCH(const QString, taken);
    const TestHome home;
    QStringList paths;
    for (const QString &name : names)
        paths << (name.endsWith(u'/') ? home.makeFolder(name.chopped(1)) : home.makeFile(name));
    const RunningProgram program;
    const AlertAnswerer alerts;
    program.dropFiles(u"installHint"_s, paths);
    const AlertAnswerer::Alert refusal{u"Template Error!"_s,
                                       u"This Install module only accepts Folders ..."_s,
                                       QMessageBox::Warning,
                                       {u"OK"_s}};
    QCOMPARE(alerts.seen, QList<AlertAnswerer::Alert>(refused, refusal));
    QCOMPARE(program.text(u"input"_s), taken.isEmpty() ? QString() : home.path(taken));
    QCOMPARE(program.text(u"test"_s), taken);
    QVERIFY(program.installButtonsAre(!taken.isEmpty()));
}

/// File managers offer the path as text too; the field must not take that for itself.
void InstallIntakeTest::takesDropsOnTheField()
{
    const TestHome home;
    const RunningProgram program;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(home.makeFolder(u"Glow"_s))});
    data.setText(data.urls().constFirst().toString());
    // The source of a move would remove the folder.
    QCOMPARE(program.drop(u"input"_s, data, Qt::MoveAction), Qt::IgnoreAction);
    QCOMPARE(program.text(u"input"_s), QString());
    QCOMPARE(program.drop(u"input"_s, data), Qt::LinkAction);
    QCOMPARE(program.text(u"input"_s), home.path(u"Glow"_s));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallIntakeTest>(argc, argv);
}

#include "InstallIntakeTest.moc"
