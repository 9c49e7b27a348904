#include "tests/motion/MotionFixtures.h"
#include "tests/support/ChangeList.h"
#include "tests/support/RunningProgram.h"

#include <QAccessible>
#include <QComboBox>
#include <QFileDialog>
#include <QFocusFrame>
#include <QLabel>
#include <QLineEdit>
#include <QVariantAnimation>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

const QStringList factNames = {u"textField1"_s,  u"theFrameRate"_s, u"theFrames"_s,
                               u"theDuration"_s, u"resOutput"_s,    u"parText"_s};

/// The program on its Edit side.
class Editor : public TestHome, public RunningProgram
{
public:
    Editor() { chooseMode(1); }

    void drop(const QString &name, const QByteArray &content) const
    {
        const ChangeList answersAlerts(*this);
        dropFiles(u"editHint"_s, {makeFile(name, content)});
    }

    /// To whatever has the focus, as the keyboard does.
    void press(Qt::Key key) const
    {
        QTest::keyClick(find<QWidget>(u"mWindow"_s)->windowHandle(), key);
    }

    void conform(int index) const
    {
        find<QComboBox>(u"frPopup"_s)->setCurrentIndex(index);
        click(u"conformButton"_s);
    }

    /// As a screen reader reads the facts.
    [[nodiscard]] QStringList spoken() const
    {
        QStringList names;
        for (const QString &each : factNames)
            names << QAccessible::queryAccessibleInterface(find<QLabel>(each))
                         ->text(QAccessible::Name);
        return names;
    }

    /// The facts that draw the eye.
    [[nodiscard]] QStringList tinted() const
    {
        QStringList names;
        for (const QString &each : factNames) {
            if (find<QLabel>(each)->findChild<QVariantAnimation *>()->state() ==
                QAbstractAnimation::Running)
                names << each;
        }
        return names;
    }

    [[nodiscard]] bool asksForRate() const { return find<QFocusFrame>({})->isVisible(); }
};

} // namespace

/// What the Edit side tells beside its texts, and what the keyboard does there.
class EditPageLookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void secondSpace_pressesNothing_data();
    void secondSpace_pressesNothing();
    void emptyTheme_isWrittenByTheButtonAlone();
    void facts_tellWhoseTheyAre();
    void changedFacts_areTinted();
    void rateList_isMarkedWhileItIsAskedFor();
    void pickedFileOfAnotherName_isDeclined();
    void renameSheet_showsBothNamesAndOneOrder();
    void nothingIsCut_data();
    void nothingIsCut();
};

void EditPageLookTest::secondSpace_pressesNothing_data()
{
    QTest::addColumn<QString>("button"); // none: a refused file
    for (const char *button : {"tClearButton", "orgButton", ""})
        QTest::newRow(button) << QString::fromLatin1(button);
}

void EditPageLookTest::secondSpace_pressesNothing()
{
    QFETCH(QString, button);
    const Editor editor;
    editor.drop(u"Intro.motn"_s, motionFile());
    if (button.isEmpty()) {
        editor.drop(u"movie.mov"_s, "movie");
    } else {
        editor.find<QWidget>(button)->setFocus();
        editor.press(Qt::Key_Space);
        QVERIFY(!editor.isShown(u"orgButton"_s));
    }
    // Coming back from another window chooses nothing either.
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    other.close();
    editor.find<QWidget>(u"mWindow"_s)->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(editor.find<QWidget>(u"mWindow"_s)));
    ChangeList changes(editor);
    editor.press(Qt::Key_Space);
    QStringList seen = changes.take();
    seen.removeIf([](const QString &each) { return each.endsWith(u" progressBarT"_s); });
    QCOMPARE(seen, QStringList());
}

void EditPageLookTest::emptyTheme_isWrittenByTheButtonAlone()
{
    const Editor editor;
    const QByteArray file = motionFile().replace("<scene>", "<theme>Old</theme><scene>");
    editor.drop(u"Intro.motn"_s, file);
    editor.press(Qt::Key_Return);
    QCOMPARE(editor.read(u"Intro.motn"_s), file);
    editor.click(u"setButton"_s);
    QVERIFY(!editor.read(u"Intro.motn"_s).contains("Old"));
}

void EditPageLookTest::facts_tellWhoseTheyAre()
{
    const QStringList none(factNames.size(), u"no value"_s);
    const Editor editor;
    auto *frames = editor.find<QLabel>(u"theFrames"_s);
    const QImage dash = frames->grab().toImage();
    QCOMPARE(editor.spoken(), none);
    editor.drop(u"Intro.motn"_s, motionFile());
    QCOMPARE(editor.spoken().mid(1),
             (QStringList{u"29.97"_s, u"300"_s, u"10.0 seconds"_s, u"1920x1080"_s, u"Square"_s}));
    const QImage present = frames->grab().toImage();
    editor.drop(u"Broken.motn"_s, "<ozml"); // its fields keep what they showed
    QCOMPARE(editor.spoken().at(2), u"300"_s);
    QVERIFY(frames->grab().toImage() != present && frames->grab().toImage() != dash);
    editor.drop(u"movie.mov"_s, "movie");
    QCOMPARE(editor.spoken(), none);
    QCOMPARE(frames->text(), u"300"_s);
    QCOMPARE(frames->grab().toImage(), dash);
    editor.drop(u"Loud.MOTN"_s, motionFile()); // refused by its name, and read all the same
    QCOMPARE(editor.spoken().at(2), u"300"_s);
    editor.drop(u"Intro.motn"_s, motionFile());
    editor.find<QAction>(u"writeToFileItem"_s)->trigger();
    QCOMPARE(editor.spoken(), none);
}

void EditPageLookTest::changedFacts_areTinted()
{
    const Editor editor;
    editor.drop(u"Intro.motn"_s, motionFile());
    QCOMPARE(editor.tinted(), QStringList());
    editor.conform(4);
    QCOMPARE(editor.tinted(), (QStringList{u"theFrameRate"_s, u"theFrames"_s}));
    editor.drop(u"Intro.motn"_s, motionFile());
    editor.type(u"element"_s, u"New"_s);
    editor.press(Qt::Key_Return);
    QCOMPARE(editor.tinted(), QStringList{u"textField1"_s});
    editor.drop(u"Locked.motn"_s, motionFile());
    QFile::setPermissions(editor.path(u"Locked.motn"_s), QFile::ReadOwner);
    editor.conform(4); // shows the new rate, which is not in the file
    QCOMPARE(editor.tinted(), QStringList());
}

void EditPageLookTest::rateList_isMarkedWhileItIsAskedFor()
{
    const Editor editor;
    QVERIFY(!editor.asksForRate());
    for (const bool drops : {false, true}) {
        editor.drop(u"Intro.motn"_s, motionFile());
        editor.conform(0);
        QVERIFY(editor.asksForRate());
        if (drops)
            editor.drop(u"Other.motn"_s, motionFile());
        else
            editor.pressKey(u"frPopup"_s, Qt::Key_Down);
        QVERIFY(!editor.asksForRate());
    }
}

void EditPageLookTest::pickedFileOfAnotherName_isDeclined()
{
    const Editor editor;
    const QString loud = editor.makeFile(u"B.MOTN"_s, motionFile());
    editor.click(u"oFile"_s);
    auto *panel = editor.find<QWidget>(u"mWindow"_s)->findChild<QFileDialog *>();
    panel->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(loud);
    QTest::keyClick(panel, Qt::Key_Return);
    QCOMPARE(editor.text(u"emptyHeading"_s), u"That file was not opened"_s);
    QCOMPARE(editor.text(u"input1"_s), QString());
}

void EditPageLookTest::renameSheet_showsBothNamesAndOneOrder()
{
    const Editor editor;
    editor.drop(u"a.b.motn"_s, motionFile());
    editor.click(u"renameButton"_s);
    QCOMPARE(editor.text(u"presentName"_s) + editor.text(u"presentExtension"_s), u"a.b.motn"_s);
    QCOMPARE(editor.text(u"keptExtension"_s), u".motn"_s);
    QTRY_COMPARE(QApplication::activeWindow(), editor.find<QWidget>(u"renameSheet"_s));
    int left = -1;
    for (const char *button : {"clearRenameTextField", "cancelRenameTemplate", "renameTemplate"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(button));
        QVERIFY(QApplication::focusWidget()->x() > left);
        left = QApplication::focusWidget()->x();
    }
}

void EditPageLookTest::nothingIsCut_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("usual") << 10;
    QTest::newRow("large") << 16;
    QTest::newRow("huge") << 28;
}

void EditPageLookTest::nothingIsCut()
{
    QFETCH(int, points);
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    const Editor editor;
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font); // while it runs, as a desktop does
    editor.find<QWidget>(u"mWindow"_s)->resize(1, 1);
    editor.drop(u"Intro.motn"_s, motionFile());
    editor.click(u"orgButton"_s);
    editor.click(u"renameButton"_s);
    editor.pressKey(u"newTempplateName"_s, Qt::Key_Return);
    const auto isWhole = [&](const QString &name) {
        const auto *label = editor.find<QLabel>(name);
        const QSize lines =
            label->fontMetrics()
                .boundingRect(label->contentsRect(), label->wordWrap() ? Qt::TextWordWrap : 0,
                              label->text())
                .size();
        return !label->text().isEmpty() && lines == lines.boundedTo(label->size());
    };
    for (const QString &each :
         {u"typeText"_s, u"wasArchived"_s, u"dateTextField"_s, u"newNameWarning"_s})
        QTRY_VERIFY2(isWhole(each), qPrintable(each));
    QVERIFY(editor.find<QLabel>(u"display"_s)->fontMetrics().height() >
            editor.find<QLabel>(u"theFrames"_s)->fontMetrics().height());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, EditPageLookTest>(argc, argv);
}

#include "EditPageLookTest.moc"
