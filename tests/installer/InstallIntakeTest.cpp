#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QSysInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

class InstallIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesDropsOnTheField();
    void takesFilesOfThisMachineOnly_data();
    void takesFilesOfThisMachineOnly();
    void cleansWhatIsPasted_data();
    void cleansWhatIsPasted();
    void bringsNothingBackByUndo();
    void takesOnlyWhatIsSelected();
};

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

void InstallIntakeTest::takesFilesOfThisMachineOnly_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("localhost") << u"localhost"_s << true;
    QTest::newRow("its name") << QSysInfo::machineHostName().toUpper() << true;
    QTest::newRow("another machine") << u"elsewhere.example"_s << false;
}

void InstallIntakeTest::takesFilesOfThisMachineOnly()
{
    QFETCH(const QString, host);
    QFETCH(const bool, isTaken);
    const TestHome home;
    const RunningProgram program;
    QUrl address = QUrl::fromLocalFile(home.makeFolder(u"Glow"_s) + u'/');
    address.setHost(host);
    QMimeData data;
    data.setUrls({address});
    QCOMPARE(program.drop(u"installHint"_s, data), isTaken ? Qt::LinkAction : Qt::IgnoreAction);
    QCOMPARE(program.text(u"input"_s), isTaken ? home.path(u"Glow"_s) : QString());
}

void InstallIntakeTest::cleansWhatIsPasted_data()
{
    QTest::addColumn<QString>("pasted"); // "HOME" stands for the full path of the home
    QTest::addColumn<QString>("taken");
    QTest::newRow("quotes and a line end") << u" \"HOME/My Glow\"\n"_s << u"HOME/My Glow"_s;
    QTest::newRow("single quotes") << u"'~/My Glow'"_s << u"~/My Glow"_s;
    QTest::newRow("an address") << u"file://localhostHOME/My%20Glow/"_s << u"HOME/My Glow"_s;
    QTest::newRow("of another machine") << u"file://elsewhere/a"_s << u"file://elsewhere/a"_s;
    QTest::newRow("a part of a path") << u" copy "_s << u" copy "_s;
}

/// By keyboard and by menu; then the name follows when the field is left without Return.
void InstallIntakeTest::cleansWhatIsPasted()
{
    QFETCH(QString, pasted);
    QFETCH(QString, taken);
    const TestHome home;
    const RunningProgram program;
    taken.replace(u"HOME"_s, home.path());
    QApplication::clipboard()->setText(pasted.replace(u"HOME"_s, home.path()));
    program.click(u"input"_s);
    program.find<QAction>(u"pasteItem"_s)->trigger();
    QCOMPARE(program.text(u"input"_s), taken);
    program.type(u"input"_s, QString());
    QTest::keySequence(program.find<QWidget>(u"input"_s), QKeySequence::Paste);
    QCOMPARE(program.text(u"input"_s), taken);
    program.pressKey(u"input"_s, Qt::Key_Tab);
    QCOMPARE(program.text(u"test"_s), taken.mid(taken.lastIndexOf(u'/') + 1));
    QVERIFY(!program.find<QWidget>(u"input"_s)->hasFocus());
}

void InstallIntakeTest::bringsNothingBackByUndo()
{
    const TestHome home;
    const RunningProgram program;
    for (const QString &button : {u"clearButton"_s, u"mSendButton"_s}) {
        program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
        program.type(u"input"_s, u"~/Glimmer"_s);
        program.click(button);
        QTest::keySequence(program.find<QWidget>(u"input"_s), QKeySequence::Undo);
        QCOMPARE(program.text(u"input"_s), QString());
    }
}

void InstallIntakeTest::takesOnlyWhatIsSelected()
{
    const TestHome home;
    home.makeFolder(u"Desktop/Glow"_s);
    const RunningProgram program;
    program.click(u"addButton"_s);
    auto *selector = program.find<QWidget>(u"mWindow"_s)->findChild<QFileDialog *>();
    QCOMPARE(selector->labelText(QFileDialog::LookIn), u"Select Motion Content Folder ..."_s);
    auto *name = selector->findChild<QLineEdit *>(u"fileNameEdit"_s);
    for (const QString &each : {QString(), u"Glow"_s}) {
        QCOMPARE(program.text(u"input"_s), QString());
        name->setText(each);
        QTest::keyClick(name, Qt::Key_Return);
    }
    QCOMPARE(program.text(u"input"_s), home.path(u"Desktop/Glow"_s));
    QVERIFY(program.find<QWidget>(u"mSendButton"_s)->isEnabled());
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, InstallIntakeTest>(argc, argv);
}

#include "InstallIntakeTest.moc"
