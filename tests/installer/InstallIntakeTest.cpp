#include "tests/support/LogLines.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const AlertAnswerer::Alert refusal{u"Template Error!"_s,
                                   u"This Install module only accepts Folders ..."_s,
                                   QMessageBox::Warning,
                                   {u"OK"_s}};

} // namespace

class InstallIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesDrops_data();
    void takesDrops();
    void answersTheDragSource_data();
    void answersTheDragSource();
    void takesDropsOnTheField();
    void emptiesTheFieldsBeforeTheAlert();
    void takesATypedPath_data();
    void takesATypedPath();
    void choosesInTheFolderSelector_data();
    void choosesInTheFolderSelector();
    void clears();
};

void InstallIntakeTest::takesDrops_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("refused");
    QTest::addColumn<QString>("taken");
    const auto row = [](const char *title, const QStringList &names, int refused,
                        const QString &taken) {
        QTest::newRow(title) << names << refused << taken;
    };
    row("a folder", {u"Glow/"_s}, 0, u"Glow"_s);
    row("any bytes in its name", {u"Glöw % #1 'x'\n/"_s}, 0, u"Glöw % #1 'x'\n"_s);
    row("a file", {u"Glow.motn"_s}, 1, {});
    row("a folder with an extension", {u"Pack.v2/"_s}, 1, {});
    row("a file without an extension", {u"Glow"_s}, 0, u"Glow"_s);
    row("nothing behind the dot", {u"Glow./"_s}, 0, u"Glow."_s);
    row("nothing before the dot", {u".Glow/"_s}, 1, {});
    row("three folders", {u"a/"_s, u"b/"_s, u"c/"_s}, 0, u"c"_s);
    row("folder last", {u"a.motn"_s, u"b/"_s}, 1, u"b"_s);
    row("file last", {u"a/"_s, u"b.motn"_s}, 1, {});
    row("two files", {u"a.motn"_s, u"b.moti"_s}, 2, {});
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
    const LogLines log;
    QCOMPARE(program.dropFiles(u"installHint"_s, paths), Qt::LinkAction);
    QCOMPARE(log.take(), QStringList(u"Dragged files"_s) + paths);
    QCOMPARE(alerts.seen, QList<AlertAnswerer::Alert>(refused, refusal));
    QCOMPARE(program.text(u"input"_s), taken.isEmpty() ? QString() : home.path(taken));
    QCOMPARE(program.text(u"test"_s), taken);
    QVERIFY(program.installButtonsAre(!taken.isEmpty()));
    QVERIFY(!program.find<QLineEdit>(u"input"_s)->hasFocus());
}

void InstallIntakeTest::answersTheDragSource_data()
{
    QTest::addColumn<int>("allowed");
    QTest::addColumn<Qt::DropAction>("answer");
    for (int allowed = 0; allowed < 8; ++allowed) {
        const Qt::DropActions actions(allowed);
        QTest::addRow("%s+%s+%s", actions & Qt::CopyAction ? "copy" : "",
                      actions & Qt::MoveAction ? "move" : "",
                      actions & Qt::LinkAction ? "link" : "")
            << allowed
            << (actions & Qt::LinkAction   ? Qt::LinkAction
                : actions & Qt::CopyAction ? Qt::CopyAction
                                           : Qt::IgnoreAction);
    }
}

void InstallIntakeTest::answersTheDragSource()
{
    QFETCH(const int, allowed);
    QFETCH(const Qt::DropAction, answer);
    const TestHome home;
    const RunningProgram program;
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(home.makeFolder(u"Glow"_s))});
    QCOMPARE(program.drop(u"installHint"_s, files, Qt::DropActions(allowed)), answer);
    const QString taken = program.text(u"input"_s);
    QCOMPARE(taken.isEmpty(), answer == Qt::IgnoreAction);

    QMimeData noFile;
    noFile.setText(u"/Glow"_s);
    noFile.setUrls({QUrl(u"https://brimvale.example/Glow"_s)});
    QCOMPARE(program.drop(u"installHint"_s, noFile, Qt::DropActions(allowed)), Qt::IgnoreAction);
    QCOMPARE(program.text(u"input"_s), taken);
}

/// File managers offer the path as text too; the field must not take that for itself.
void InstallIntakeTest::takesDropsOnTheField()
{
    const TestHome home;
    const RunningProgram program;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(home.makeFolder(u"Glow"_s))});
    data.setText(data.urls().constFirst().toString());
    QCOMPARE(program.drop(u"input"_s, data), Qt::LinkAction);
    QCOMPARE(program.text(u"input"_s), home.path(u"Glow"_s));
    QVERIFY(program.installButtonsAre(true));
}

void InstallIntakeTest::emptiesTheFieldsBeforeTheAlert()
{
    const TestHome home;
    const RunningProgram program;
    program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
    bool wasEmpty = false;
    QTimer::singleShot(0, this, [&] {
        wasEmpty = program.text(u"input"_s).isEmpty() && program.text(u"test"_s).isEmpty() &&
                   program.installButtonsAre(false) && QApplication::activeModalWidget();
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
    });
    program.dropFiles(u"installHint"_s, {home.makeFile(u"Glow.motn"_s)});
    QVERIFY(wasEmpty);
    QVERIFY(!QApplication::activeModalWidget());
}

void InstallIntakeTest::takesATypedPath_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("buttons off") << false << u"/some/Glow"_s << u"Glow"_s;
    QTest::newRow("buttons on") << true << u"/some/Glow"_s << u"Glow"_s;
    QTest::newRow("trailing slashes") << true << u"~/Glow//"_s << u"Glow"_s;
    QTest::newRow("an extension is not looked at") << true << u"/some/Pack.v2"_s << u"Pack.v2"_s;
    QTest::newRow("the root") << false << u"/"_s << u"/"_s;
    QTest::newRow("nothing") << true << QString() << QString();
}

void InstallIntakeTest::takesATypedPath()
{
    QFETCH(const bool, enabled);
    QFETCH(const QString, typed);
    QFETCH(const QString, name);
    const TestHome home;
    const RunningProgram program;
    const AlertAnswerer alerts;
    if (enabled)
        program.dropFiles(u"installHint"_s, {home.makeFolder(u"First"_s)});
    program.type(u"input"_s, typed);
    QCOMPARE(program.text(u"test"_s), enabled ? u"First"_s : QString()); // not confirmed yet
    program.pressKey(u"input"_s, Qt::Key_Return);
    QCOMPARE(program.text(u"input"_s), typed);
    QCOMPARE(program.text(u"test"_s), name);
    QVERIFY(!program.find<QLineEdit>(u"input"_s)->hasFocus());
    QVERIFY(program.installButtonsAre(enabled));
    QCOMPARE(alerts.seen.size(), 0);
}

void InstallIntakeTest::choosesInTheFolderSelector_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("confirmed");
    QTest::newRow("a folder") << u"Glow"_s << true;
    QTest::newRow("a folder with an extension") << u"Pack.v2"_s << true;
    QTest::newRow("cancelled") << u"Glow"_s << false;
}

void InstallIntakeTest::choosesInTheFolderSelector()
{
    QFETCH(const QString, folder);
    QFETCH(const bool, confirmed);
    const TestHome home;
    home.makeFolder(u"Desktop/"_s + folder);
    const RunningProgram program;
    const AlertAnswerer alerts;
    program.click(u"addButton"_s);
    auto *selector = program.find<QWidget>(u"mWindow"_s)->findChild<QFileDialog *>();
    QVERIFY(selector && selector->isVisible());
    QCOMPARE(selector->windowModality(), Qt::WindowModal);
    QCOMPARE(selector->windowTitle(), u"Folder Selector"_s);
    QCOMPARE(selector->labelText(QFileDialog::Accept), u"Add"_s);
    QCOMPARE(selector->labelText(QFileDialog::LookIn), u"Select Motion Content Folder ..."_s);
    QCOMPARE(selector->directory().path(), home.path(u"Desktop"_s));
    QCOMPARE(selector->fileMode(), QFileDialog::Directory);

    auto *name = selector->findChild<QLineEdit *>(u"fileNameEdit"_s);
    QTest::keyClicks(name, folder);
    QTest::keyClick(name, confirmed ? Qt::Key_Return : Qt::Key_Escape);
    QTRY_VERIFY(!program.find<QWidget>(u"mWindow"_s)->findChild<QFileDialog *>());
    QCOMPARE(program.text(u"input"_s), confirmed ? home.path(u"Desktop/"_s + folder) : QString());
    QCOMPARE(program.text(u"test"_s), confirmed ? folder : QString());
    QVERIFY(program.installButtonsAre(confirmed));
    QCOMPARE(alerts.seen.size(), 0);
}

void InstallIntakeTest::clears()
{
    const TestHome home;
    const RunningProgram program;
    program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
    const auto before = home.snapshot();
    program.click(u"clearButton"_s);
    QCOMPARE(program.text(u"input"_s), QString());
    QCOMPARE(program.text(u"test"_s), QString());
    QVERIFY(program.installButtonsAre(false));
    QCOMPARE(home.changesSince(before), QStringList());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallIntakeTest>(argc, argv);
}

#include "InstallIntakeTest.moc"
