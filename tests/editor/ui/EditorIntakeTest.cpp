#include "Editor.h"

#include <QFileDialog>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>

#include <array>

using namespace Qt::StringLiterals;

namespace {

const QString noTheme = u"Template does not include Theme reference ..."_s;
const AlertAnswerer::Alert wrongKind{u"Project File Error!"_s,
                                     u"This Edit module only accepts Motion Project files ..."_s,
                                     QMessageBox::Warning,
                                     {u"OK"_s}};

QStringList shown(const Editor &editor, const QStringList &fields)
{
    QStringList values;
    for (const QString &field : fields)
        values << editor.text(field);
    return values;
}

const QStringList names = {u"display"_s, u"typeText"_s};
const QStringList facts = {u"theFrameRate"_s, u"theFrames"_s, u"secFloat"_s,
                           u"theDuration"_s,  u"resOutput"_s, u"parText"_s};
const QStringList changes = {u"frPopup"_s, u"conformButton"_s, u"setButton"_s, u"element"_s,
                             u"tClearButton"_s};

bool areEnabled(const Editor &editor, const QStringList &controls, bool enabled)
{
    return std::all_of(controls.begin(), controls.end(), [&](const QString &control) {
        return editor.isEnabled(control) == enabled;
    });
}

QImage icon(const Editor &editor)
{
    return editor.find<QLabel>(u"statusImage"_s)->pixmap(Qt::ReturnByValue).toImage();
}

QImage resource(const QString &name)
{
    return QIcon(u":/"_s + name).pixmap(64).toImage();
}

QFileDialog *openPanel(const Editor &editor)
{
    editor.click(u"oFile"_s);
    return editor.find<QMainWindow>(u"mWindow"_s)->findChild<QFileDialog *>();
}

void choose(QFileDialog *panel, const QString &path)
{
    auto *name = panel->findChild<QLineEdit *>(u"fileNameEdit"_s);
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

/// The two ways into the module are tested alike where they do the same.
constexpr std::array<std::pair<const char *, bool>, 2> ways = {{{"drop", true}, {"panel", false}}};

/// As the row's column "dropped" says: by a drop, or in the panel.
void take(const Editor &editor, const QString &path)
{
    QFETCH(bool, dropped);
    if (dropped)
        editor.drop({path});
    else
        choose(openPanel(editor), path);
}

} // namespace

class EditorIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsTheModule_data();
    void fillsTheModule();
    void showsTheTheme_data();
    void showsTheTheme();
    void endsAtTheFirstMissingFact_data();
    void endsAtTheFirstMissingFact();
    void clears();
    void dropBringsTheWindowForward();
    void answersTheDragSource_data();
    void answersTheDragSource();
    void rejectsOtherFiles();
    void takesSeveralFiles_data();
    void takesSeveralFiles();
    void cancelledPanelEnablesRenaming();
};

void EditorIntakeTest::fillsTheModule_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("iconName");
    for (const auto &[way, dropped] : ways) {
        const auto row = [&](const QString &name, const QString &iconName) {
            QTest::addRow("%s of %s", way, qPrintable(name)) << dropped << name << iconName;
        };
        row(u"Intro.moef"_s, u"mEffect.png"_s);
        row(u"Ein Büro.v2.motn"_s, u"mDocument.png"_s);
        row(u"Intro.moti"_s, u"mTitle.png"_s);
        row(u"Intro.motr"_s, u"mTransition.png"_s);
    }
}

void EditorIntakeTest::fillsTheModule()
{
    QFETCH(bool, dropped);
    QFETCH(QString, name);
    QFETCH(QString, iconName);
    TestHome home;
    const QString path = home.makeFile(name, themedFile("Glow"));
    const Editor editor;
    const LogLines log;
    take(editor, path);

    const QStringList values = {u"(Glow)"_s, u"(29.97)"_s, u"(300)"_s};
    QCOMPARE(log.take(),
             (dropped ? QStringList{u"Dragged files"_s, path} : QStringList()) + values);
    QCOMPARE(editor.text(u"input1"_s), path);
    QCOMPARE(shown(editor, names), (QStringList{name.chopped(5), name.right(4)}));
    QCOMPARE(shown(editor, facts), (QStringList{u"29.97"_s, u"300"_s, u"10.0"_s, u"10.0 seconds"_s,
                                                u"1920x1080"_s, u"Square"_s}));
    QCOMPARE(icon(editor), resource(iconName));
    QVERIFY(areEnabled(editor, changes + QStringList{u"renameButton"_s}, true));
    QVERIFY(!editor.isEnabled(u"oFile"_s));
    QVERIFY(editor.isShown(u"orgButton"_s));
    QTRY_COMPARE(QApplication::focusWidget(), editor.find<QWidget>(u"element"_s));
    QCOMPARE(QApplication::focusWidget()->property("focusRing"), true);
}

void EditorIntakeTest::showsTheTheme_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("colour");
    for (const auto &[way, dropped] : ways) {
        const auto row = [&](const char *name) -> QTestData & {
            return QTest::addRow("%s: %s", way, name) << dropped;
        };
        row("none") << motionFile() << noTheme << QColor(Qt::blue);
        row("empty") << themedFile("") << QString() << QColor(Qt::black);
        row("two") << themedFile("One</theme><theme>Two") << u"One"_s << QColor(Qt::black);
        row("nested") << themedFile("a<b>&lt;c</b>d") << u"a<cd"_s << QColor(Qt::black);
    }
}

void EditorIntakeTest::showsTheTheme()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, text);
    QFETCH(QColor, colour);
    TestHome home;
    const Editor editor;
    take(editor, home.makeFile(u"Intro.moti"_s, file));
    QCOMPARE(editor.text(u"textField1"_s), text);
    QCOMPARE(editor.colour(u"textField1"_s), colour);
    editor.click(u"tClearButton"_s);
    QCOMPARE(editor.text(u"textField1"_s), QString());
    QCOMPARE(editor.colour(u"textField1"_s), colour);
}

void EditorIntakeTest::endsAtTheFirstMissingFact_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("newFacts");
    const QStringList timing = {u"25"_s, u"50"_s, u"2.0"_s, u"2.0 seconds"_s};
    const QByteArray whole = motionFile({{"29.97", "25"}, {"300", "50"}, {"1080", "8"}});
    const auto without = [&](const char *line) { return QByteArray(whole).replace(line, {}); };
    for (const auto &[way, dropped] : ways) {
        const auto row = [&](const char *name) -> QTestData & {
            return QTest::addRow("%s: %s", way, name) << dropped;
        };
        row("no XML") << QByteArray("Intro") << QStringList();
        row("frame rate") << without("<frameRate>25</frameRate>") << QStringList();
        row("duration") << without("<duration>50</duration>") << timing.first(1);
        row("width") << without("<width>1920</width>") << timing;
        row("height") << without("<height>8</height>") << timing;
        row("ratio") << without("<pixelAspectRatio>1</pixelAspectRatio>")
                     << timing + QStringList{u"1920x8"_s};
    }
}

void EditorIntakeTest::endsAtTheFirstMissingFact()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, newFacts);
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Whole.motn"_s, motionFile({{"Ratio>1<", "Ratio>1.5<"}}))});
    const QStringList before = shown(editor, facts);
    editor.find<QWidget>(u"oFile"_s)->setEnabled(true); // to choose another without a clearing
    take(editor, home.makeFile(u"Less.moti"_s, file));
    QCOMPARE(shown(editor, facts), newFacts + before.sliced(newFacts.size()));
    QCOMPARE(shown(editor, names), (QStringList{u"Less"_s, u"moti"_s}));
    QCOMPARE(editor.text(u"textField1"_s), noTheme);
    QVERIFY(areEnabled(editor, changes, true));
}

void EditorIntakeTest::clears()
{
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.motn"_s, themedFile("Glow"))});
    editor.type(u"element"_s, u"typed"_s);
    editor.click(u"orgButton"_s);
    QVERIFY(!editor.text(u"dateTextField"_s).isEmpty());
    editor.click(u"tClearButton"_s);

    const QStringList emptied = names + facts +
                                QStringList{u"input1"_s, u"textField1"_s, u"element"_s,
                                            u"dateTextField"_s, u"wasArchived"_s};
    QVERIFY(shown(editor, emptied).join(QString()).isEmpty());
    QVERIFY(icon(editor).isNull());
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(areEnabled(editor, changes + QStringList{u"renameButton"_s}, false));
    QVERIFY(editor.isEnabled(u"oFile"_s));
    QCOMPARE(editor.find<QWidget>(u"element"_s)->property("focusRing"), false);
}

void EditorIntakeTest::dropBringsTheWindowForward()
{
    TestHome home;
    const Editor editor;
    editor.click(u"openLogsWindow"_s);
    QTRY_COMPARE(QApplication::activeWindow(), editor.find<QWidget>(u"logWindow"_s));
    editor.drop({home.makeFile(u"Intro.motn"_s, motionFile())});
    QTRY_COMPARE(QApplication::activeWindow(), editor.find<QWidget>(u"mWindow"_s));
    QVERIFY(editor.find<QWidget>(u"element"_s)->hasFocus());
}

void EditorIntakeTest::answersTheDragSource_data()
{
    QTest::addColumn<bool>("files");
    QTest::addColumn<Qt::DropActions>("allowed");
    QTest::addColumn<Qt::DropAction>("answer");
    using Actions = Qt::DropActions;
    QTest::newRow("any") << true << Actions(Qt::CopyAction | Qt::LinkAction) << Qt::LinkAction;
    QTest::newRow("no link") << true << Actions(Qt::CopyAction | Qt::MoveAction) << Qt::CopyAction;
    QTest::newRow("move only") << true << Actions(Qt::MoveAction) << Qt::IgnoreAction;
    QTest::newRow("no files") << false << Actions(Qt::CopyAction) << Qt::IgnoreAction;
}

void EditorIntakeTest::answersTheDragSource()
{
    QFETCH(bool, files);
    QFETCH(Qt::DropActions, allowed);
    QFETCH(Qt::DropAction, answer);
    TestHome home;
    const Editor editor;
    QMimeData data;
    if (files)
        data.setUrls({QUrl::fromLocalFile(home.makeFile(u"Intro.motn"_s, motionFile()))});
    else
        data.setText(u"/Intro.motn"_s);
    QCOMPARE(static_cast<const RunningProgram &>(editor).drop(u"editHint"_s, data, allowed),
             answer);
    QCOMPARE(editor.text(u"display"_s), answer == Qt::IgnoreAction ? QString() : u"Intro"_s);
}

void EditorIntakeTest::rejectsOtherFiles()
{
    TestHome home;
    const Editor editor;
    editor.drop({home.makeFile(u"Intro.moti"_s, themedFile("Glow"))});
    const QStringList before = shown(editor, facts);
    AlertAnswerer alerts;
    const QString path = home.makeFile(u"Movie.mov"_s, "no XML");
    editor.drop({path});

    QCOMPARE(alerts.seen, QList{wrongKind});
    QCOMPARE(shown(editor, names + QStringList{u"textField1"_s}), QStringList(3, u""_s));
    QCOMPARE(editor.text(u"input1"_s), path);
    QCOMPARE(shown(editor, facts), before);
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::blue));
    QCOMPARE(icon(editor), resource(u"mTitle.png"_s));
    QVERIFY(areEnabled(editor, changes, false));
    QVERIFY(areEnabled(editor, {u"oFile"_s, u"renameButton"_s}, true));
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(!editor.find<QWidget>(u"element"_s)->hasFocus());
    QCOMPARE(editor.find<QWidget>(u"element"_s)->property("focusRing"), true);
}

void EditorIntakeTest::takesSeveralFiles_data()
{
    QTest::addColumn<QStringList>("dropped");
    QTest::addColumn<int>("alertCount");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("frameRate");
    const auto row = [](const char *name, const QStringList &dropped) -> QTestData & {
        return QTest::newRow(name) << dropped;
    };
    const QString one = u"One.motn"_s;
    const QString two = u"Two.moti"_s;
    row("two", {one, two}) << 0 << two << u"Two"_s << u"25"_s;
    row("text last", {one, u"Notes.txt"_s}) << 1 << u"Notes.txt"_s << u""_s << u"29.97"_s;
    row("text first", {u"Notes.txt"_s, two}) << 1 << u"Notes.txt"_s << u""_s << u""_s;
    row("a folder first", {u"Folder"_s, two}) << 1 << u"Folder"_s << u""_s << u""_s;
    row("Motion's XML by another name", {u"Loud.MOTN"_s})
        << 1 << u"Loud.MOTN"_s << u""_s << u"60"_s;
    row("and behind it", {u"Loud.MOTN"_s, two}) << 1 << two << u"Two"_s << u"25"_s;
    row("one that fails", {one, u"Short.motr"_s, two})
        << 0 << u"Short.motr"_s << u"Short"_s << u"24"_s;
}

void EditorIntakeTest::takesSeveralFiles()
{
    QFETCH(QStringList, dropped);
    TestHome home;
    home.makeFile(u"One.motn"_s, motionFile());
    home.makeFile(u"Two.moti"_s, motionFile({{"29.97", "25"}}));
    home.makeFile(u"Loud.MOTN"_s, motionFile({{"29.97", "60"}}));
    home.makeFile(u"Short.motr"_s, motionFile({{"29.97", "24"}, {"<width>1920</width>", {}}}));
    home.makeFile(u"Notes.txt"_s, "Notes");
    home.makeFolder(u"Folder"_s);
    const Editor editor;
    AlertAnswerer alerts;
    for (QString &each : dropped)
        each = home.path(each);
    editor.drop(dropped);

    QFETCH(int, alertCount);
    QFETCH(QString, last);
    QCOMPARE(alerts.seen, QList<AlertAnswerer::Alert>(alertCount, wrongKind));
    QCOMPARE(editor.text(u"input1"_s), home.path(last));
    QTEST(editor.text(u"display"_s), "display");
    QTEST(editor.text(u"theFrameRate"_s), "frameRate");
}

void EditorIntakeTest::cancelledPanelEnablesRenaming()
{
    TestHome home;
    const QString library = home.makeFolder(u"Movies/Motion Templates.localized"_s);
    const Editor editor;
    QFileDialog *panel = openPanel(editor);
    QVERIFY(panel && panel->isVisible());
    QCOMPARE(panel->windowModality(), Qt::WindowModal);
    QCOMPARE(panel->directory().path(), library);
    QCOMPARE(panel->nameFilters(), QStringList{u"Motion files (*.moef *.motn *.moti *.motr)"_s});
    QCOMPARE(panel->fileMode(), QFileDialog::ExistingFile);
    QVERIFY(editor.isEnabled(u"renameButton"_s));
    QTest::keyClick(panel, Qt::Key_Escape);

    QVERIFY(editor.isEnabled(u"renameButton"_s));
    QVERIFY(editor.isEnabled(u"oFile"_s));
    QVERIFY(areEnabled(editor, changes, false));
    QVERIFY(shown(editor, names + facts + QStringList{u"input1"_s}).join(QString()).isEmpty());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, EditorIntakeTest>(argc, argv);
}

#include "EditorIntakeTest.moc"
