#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSysInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

class InstallIntakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesDropsOnTheField();
    void takesOnlyWhatIsSelected();
    void waitsForTheEndOfTyping();
};

/// File managers offer the path as text too; the field must not take that for itself. Folders of
/// another machine are not taken, and none by a source that would remove what it moves.
void InstallIntakeTest::takesDropsOnTheField()
{
    const TestHome home;
    const QString folder = home.makeFolder(u"Glow"_s);
    const RunningProgram program;
    const auto drop = [&](const QString &host, Qt::DropActions allowed) {
        QUrl address = QUrl::fromLocalFile(folder + u'/');
        address.setHost(host);
        QMimeData data;
        data.setUrls({address});
        data.setText(address.toString());
        const Qt::DropAction answer = program.drop(u"input"_s, data, allowed);
        const QString taken = program.text(u"input"_s);
        program.click(u"clearButton"_s);
        return std::pair(answer, taken);
    };
    const std::pair declined{Qt::IgnoreAction, QString()};
    const Qt::DropActions any = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    QCOMPARE(drop({}, Qt::MoveAction), declined);
    QCOMPARE(drop(u"elsewhere.example"_s, any), declined);
    for (const QString &host : {u""_s, u"localhost"_s, QSysInfo::machineHostName().toUpper()})
        QCOMPARE(drop(host, any), std::pair(Qt::LinkAction, folder));
}

/// Nothing is selected as the panel opens.
void InstallIntakeTest::takesOnlyWhatIsSelected()
{
    const TestHome home;
    const QString desktop = home.makeFolder(u"Desktop"_s);
    const RunningProgram program;
    program.click(u"addButton"_s);
    auto *panel = program.find<QWidget>(u"mWindow"_s)->findChild<QFileDialog *>();
    const auto *buttons = panel->findChild<QDialogButtonBox *>();
    QVERIFY(!buttons->button(QDialogButtonBox::Open)->isEnabled());
    QTest::keyClick(panel->findChild<QLineEdit *>(u"fileNameEdit"_s), Qt::Key_Return);
    QVERIFY(panel->isVisible());
    QCOMPARE(panel->directory().path(), desktop);
    QCOMPARE(program.text(u"input"_s), QString());
}

/// Of a path that is being typed each half is wrong; one that is dropped is told of at once.
void InstallIntakeTest::waitsForTheEndOfTyping()
{
    const TestHome home;
    const RunningProgram program;
    const auto *delay =
        program.find<QWidget>(u"dropZone"_s)->findChild<QTimer *>({}, Qt::FindDirectChildrenOnly);
    program.type(u"input"_s, u"~/G"_s);
    QCOMPARE(delay->interval(), 300);
    program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
    QCOMPARE(delay->interval(), 0);
}

QTEST_MAIN(InstallIntakeTest)

#include "InstallIntakeTest.moc"
