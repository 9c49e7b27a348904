#include "tests/motion/MotionFixtures.h"
#include "tests/support/ChangeList.h"
#include "tests/support/RunningProgram.h"

#include <QAccessible>
#include <QComboBox>
#include <QFocusFrame>
#include <QLabel>
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
    void secondSpace_pressesNothing();
    void facts_tellWhoseTheyAre();
    void changedFacts_areTinted();
    void rateList_isMarkedWhileItIsAskedFor();
};

void EditPageLookTest::secondSpace_pressesNothing()
{
    for (const QString &button : {u"tClearButton"_s, u"orgButton"_s, u"none, a refused file"_s}) {
        const Editor editor;
        editor.drop(u"Intro.motn"_s, motionFile());
        if (button.startsWith(u"none")) {
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
        QVERIFY2(seen.isEmpty(), qPrintable(button + u": "_s + seen.join(u"; "_s)));
    }
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

QTEST_MAIN(EditPageLookTest)

#include "EditPageLookTest.moc"
