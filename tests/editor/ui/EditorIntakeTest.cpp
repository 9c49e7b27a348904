#include "Editor.h"

#include <QFileDialog>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

const QString noTheme = u"Template does not include Theme reference ..."_s;
const AlertAnswerer::Alert wrongKind{u"Project File Error!"_s,
                                     u"This Edit module only accepts Motion Project files ..."_s,
                                     QMessageBox::Warning,
                                     {u"OK"_s}};

const QStringList names = {u"display"_s, u"typeText"_s};
const QStringList facts = {u"theFrameRate"_s, u"theFrames"_s, u"secFloat"_s,
                           u"theDuration"_s,  u"resOutput"_s, u"parText"_s};
const QStringList changes = {u"frPopup"_s, u"conformButton"_s, u"setButton"_s, u"element"_s,
                             u"tClearButton"_s};

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

/// One row for each of the two ways into the module, which "take" goes.
void addRows(const QString &name, const std::function<void(QTestData &)> &addValues)
{
    for (const bool dropped : {true, false})
        addValues(QTest::addRow("%s %s", dropped ? "drop" : "panel", qPrintable(name)) << dropped);
}

void take(const Editor &editor, const QString &path)
{
    QFETCH(bool, dropped);
    if (dropped)
        return editor.dropFiles({path});
    auto *name = openPanel(editor)->findChild<QLineEdit *>(u"fileNameEdit"_s);
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

} // namespace

class EditorIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsTheModule_data();
    void fillsTheModule();
    void endsAtTheFirstMissingFact_data();
    void endsAtTheFirstMissingFact();
    void clears();
    void onlyADropBringsTheWindowForward();
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
    const QList<std::pair<QString, QString>> kinds = {{u"Intro.moef"_s, u"mEffect.png"_s},
                                                      {u"Büro.v2.motn"_s, u"mDocument.png"_s},
                                                      {u"Intro.moti"_s, u"mTitle.png"_s},
                                                      {u"Intro.motr"_s, u"mTransition.png"_s}};
    for (const auto &[name, iconName] : kinds)
        addRows(name, [&](QTestData &row) { row << name << iconName; });
}

void EditorIntakeTest::fillsTheModule()
{
    QFETCH(bool, dropped);
    QFETCH(QString, name);
    QFETCH(QString, iconName);
    const Editor editor;
    const QString path = editor.makeFile(name, themedFile("Glow</theme><theme>Other"));
    const LogLines log;
    take(editor, path);

    QStringList lines = {u"(Glow, Other)"_s, u"(29.97)"_s, u"(300)"_s};
    if (dropped)
        lines = QStringList{u"Dragged files"_s, path} + lines;
    QCOMPARE(log.take(), lines);
    QCOMPARE(editor.texts({u"input1"_s, u"display"_s, u"typeText"_s, u"textField1"_s}),
             (QStringList{path, name.chopped(5), name.right(4), u"Glow"_s}));
    QCOMPARE(editor.texts(facts), (QStringList{u"29.97"_s, u"300"_s, u"10.0"_s, u"10.0 seconds"_s,
                                               u"1920x1080"_s, u"Square"_s}));
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::black));
    QCOMPARE(icon(editor), resource(iconName));
    QVERIFY(editor.areEnabled(changes + QStringList{u"renameButton"_s}));
    QVERIFY(!editor.isEnabled(u"oFile"_s));
    QVERIFY(editor.isShown(u"orgButton"_s));
    QTRY_VERIFY(editor.find<QWidget>(u"element"_s)->hasFocus());
    QCOMPARE(editor.find<QWidget>(u"element"_s)->property("focusRing"), true);
}

void EditorIntakeTest::endsAtTheFirstMissingFact_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("newFacts");
    const QByteArray whole = motionFile({{"29.97", "25"}, {"300", "50"}, {"1080", "8"}});
    const QStringList all = {u"25"_s, u"50"_s, u"2.0"_s, u"2.0 seconds"_s, u"1920x8"_s};
    const auto add = [&](const QByteArray &missing, int factCount) {
        addRows(QString::fromUtf8(missing), [&](QTestData &row) {
            row << QByteArray(whole).replace(missing, {}) << all.first(factCount);
        });
    };
    add("<ozml", 0); // no XML any more
    add("<frameRate>25</frameRate>", 0);
    add("<duration>50</duration>", 1);
    add("<width>1920</width>", 4);
    add("<height>8</height>", 4);
    add("<pixelAspectRatio>1</pixelAspectRatio>", 5);
}

void EditorIntakeTest::endsAtTheFirstMissingFact()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, newFacts);
    const Editor editor;
    editor.load(motionFile({{"Ratio>1<", "Ratio>1.5<"}}));
    const QStringList before = editor.texts(facts);
    editor.find<QWidget>(u"oFile"_s)->setEnabled(true); // to choose another without a clearing
    take(editor, editor.makeFile(u"Less.moti"_s, file));
    QCOMPARE(editor.texts(facts), newFacts + before.sliced(newFacts.size()));
    QCOMPARE(editor.texts(names), (QStringList{u"Less"_s, u"moti"_s}));
    QCOMPARE(editor.text(u"textField1"_s), noTheme);
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::blue));
    QVERIFY(editor.areEnabled(changes));
}

void EditorIntakeTest::clears()
{
    const Editor editor;
    editor.load(motionFile());
    editor.type(u"element"_s, u"typed"_s);
    editor.click(u"orgButton"_s);
    editor.click(u"tClearButton"_s);
    const QStringList others = {u"input1"_s, u"textField1"_s, u"element"_s, u"dateTextField"_s,
                                u"wasArchived"_s};
    QCOMPARE(editor.texts(names + facts + others).join(QString()), QString());
    QVERIFY(icon(editor).isNull());
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(editor.areEnabled(changes + QStringList{u"renameButton"_s}, false));
    QVERIFY(editor.isEnabled(u"oFile"_s));
    QCOMPARE(editor.find<QWidget>(u"element"_s)->property("focusRing"), false);
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::blue)); // as the file left it
}

void EditorIntakeTest::onlyADropBringsTheWindowForward()
{
    const Editor editor;
    editor.click(u"openLogsWindow"_s);
    QVERIFY(editor.waitUntilActive(u"logWindow"_s));
    editor.load(motionFile());
    QVERIFY(editor.waitUntilActive(u"mWindow"_s));
    QVERIFY(editor.find<QWidget>(u"element"_s)->hasFocus());
}

void EditorIntakeTest::rejectsOtherFiles()
{
    const Editor editor;
    editor.load(themedFile("Glow"), u"Intro.moti"_s);
    const QStringList before = editor.texts(facts);
    const AlertAnswerer alerts;
    editor.load("no XML", u"Movie.mov"_s);

    QCOMPARE(alerts.seen, QList{wrongKind});
    QCOMPARE(editor.texts(names).join(editor.text(u"textField1"_s)), QString());
    QCOMPARE(editor.text(u"input1"_s), editor.path(u"Movie.mov"_s));
    QCOMPARE(editor.texts(facts), before);
    QCOMPARE(editor.colour(u"textField1"_s), QColor(Qt::blue));
    QCOMPARE(icon(editor), resource(u"mTitle.png"_s));
    QVERIFY(editor.areEnabled(changes, false));
    QVERIFY(editor.areEnabled({u"oFile"_s, u"renameButton"_s}));
    QVERIFY(!editor.isShown(u"orgButton"_s));
    QVERIFY(!editor.find<QWidget>(u"mWindow"_s)->focusWidget());
    QCOMPARE(editor.find<QWidget>(u"element"_s)->property("focusRing"), true);
}

void EditorIntakeTest::takesSeveralFiles_data()
{
    QTest::addColumn<QStringList>("dropped");
    QTest::addColumn<int>("alertCount");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("frameRate");
    const auto row = [](const QStringList &dropped) -> QTestData & {
        return QTest::addRow("%s", qPrintable(dropped.join(u", "))) << dropped;
    };
    const QString one = u"One.motn"_s;
    const QString two = u"Two.moti"_s;
    const QString text = u"Notes.txt"_s;
    const QString loud = u"Loud.MOTN"_s; // Motion's XML, but not by its name
    const QString cut = u"Short.motr"_s; // ends the drop without a word
    row({one, two}) << 0 << two << u"Two"_s << u"25"_s;
    row({one, text}) << 1 << text << u""_s << u"29.97"_s;
    row({text, two}) << 1 << text << u""_s << u""_s;
    row({u"Folder"_s, two}) << 1 << u"Folder"_s << u""_s << u""_s;
    row({loud}) << 1 << loud << u""_s << u"60"_s;
    row({loud, two}) << 1 << two << u"Two"_s << u"25"_s;
    row({one, cut, two}) << 0 << cut << u"Short"_s << u"24"_s;
}

void EditorIntakeTest::takesSeveralFiles()
{
    QFETCH(QStringList, dropped);
    QFETCH(int, alertCount);
    QFETCH(QString, last);
    const Editor editor;
    editor.makeFile(u"One.motn"_s, motionFile());
    editor.makeFile(u"Two.moti"_s, motionFile({{"29.97", "25"}}));
    editor.makeFile(u"Loud.MOTN"_s, motionFile({{"29.97", "60"}}));
    editor.makeFile(u"Short.motr"_s, motionFile({{"29.97", "24"}, {"<width>1920</width>", {}}}));
    editor.makeFile(u"Notes.txt"_s);
    editor.makeFolder(u"Folder"_s);
    for (QString &each : dropped)
        each = editor.path(each);
    const AlertAnswerer alerts;
    editor.dropFiles(dropped);
    QCOMPARE(alerts.seen, QList<AlertAnswerer::Alert>(alertCount, wrongKind));
    QCOMPARE(editor.text(u"input1"_s), editor.path(last));
    QTEST(editor.text(u"display"_s), "display");
    QTEST(editor.text(u"theFrameRate"_s), "frameRate");
}

void EditorIntakeTest::cancelledPanelEnablesRenaming()
{
    const Editor editor;
    const QString library = editor.makeFolder(u"Movies/Motion Templates.localized"_s);
    QFileDialog *panel = openPanel(editor);
    QVERIFY(panel && panel->windowModality() == Qt::WindowModal);
    QCOMPARE(panel->directory().path(), library);
    QCOMPARE(panel->nameFilters(), QStringList{u"Motion files (*.moef *.motn *.moti *.motr)"_s});
    QCOMPARE(panel->fileMode(), QFileDialog::ExistingFile);
    QVERIFY(editor.isEnabled(u"renameButton"_s));
    QTest::keyClick(panel, Qt::Key_Escape);
    QVERIFY(editor.areEnabled({u"renameButton"_s, u"oFile"_s}));
    QVERIFY(editor.areEnabled(changes, false));
    QCOMPARE(editor.texts(names + facts + QStringList{u"input1"_s}).join(QString()), QString());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, EditorIntakeTest>(argc, argv);
}

#include "EditorIntakeTest.moc"
