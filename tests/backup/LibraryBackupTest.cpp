#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"
#include "widgets/DateField.h"

#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class LibraryBackupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesWithoutOtherActions();
};

/// The windows stay alive meanwhile, but nothing else starts. The backup is of the time when it
/// began, as its name says.
void LibraryBackupTest::copiesWithoutOtherActions()
{
    const LibraryHome home;
    const QString backups = home.makeFolder(u"Backups"_s);
    QVERIFY(SettingsStore().setObject(backups, SettingsStore::theAppBackupPath));
    QDateTime copied;
    setWaitLength([&](auto) {
        copied = QDateTime::currentDateTime();
        return 1ms;
    });
    const auto restore = qScopeGuard([] { setWaitLength({}); });
    const RunningProgram program;
    program.click(u"runPrefsWindow"_s);
    bool isTried = false;
    QTimer attempts;
    connect(&attempts, &QTimer::timeout, program.find<QWidget>(u"mWindow"_s), [&] {
        if (!isTried && program.isShown(u"backupProgress"_s)) {
            isTried = true;
            program.chooseMode(1);
        }
    });
    attempts.start(0);
    // More and more, until a copy takes long enough.
    for (int files = 800; files < 50000 && !isTried; files *= 2) {
        QVERIFY(QDir(backups).removeRecursively()); // the name of this second may be taken
        home.makeFolder(u"Backups"_s);
        for (int file = 0; file < files; ++file)
            home.makeFile(home.titles() + u"/Big %1/%2"_s.arg(files).arg(file));
        program.click(u"theBackupButton"_s);
    }
    QVERIFY(isTried && program.isShown(u"addButton"_s));
    QVERIFY(program.find<DateField>(u"lastBackupDate"_s)->objectValue().toDateTime() < copied);
    program.chooseMode(1);
    QVERIFY(!program.isShown(u"addButton"_s));
}

QTEST_MAIN(LibraryBackupTest)

#include "LibraryBackupTest.moc"
