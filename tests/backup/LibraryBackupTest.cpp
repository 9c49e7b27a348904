#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"
#include "widgets/Spinner.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString library = u"Movies/Motion Templates.localized"_s;
const QString name = u"Motion Templates.localized"_s;

QString datedName(const QDateTime &date)
{
    return date.toString(u"yyyy-MM-dd HH-mm-ss "_s) + name;
}

QVariant stored(QLatin1StringView key)
{
    return SettingsStore().object(key);
}

/// Everything but the settings, which a backup changes.
QMap<QString, QByteArray> files(const TestHome &home)
{
    auto items = home.snapshot();
    items.removeIf([](auto item) { return item.key().startsWith(u".config"_s); });
    return items;
}

/// Those items, had the library been copied there.
QMap<QString, QByteArray> withCopy(QMap<QString, QByteArray> items, const QString &copy)
{
    const auto before = items;
    for (auto item = before.begin(); item != before.end(); ++item) {
        if (item.key().startsWith(library))
            items.insert(copy + item.key().mid(library.size()), item.value());
    }
    return items;
}

/// Presses the button; the answer is given to the chooser, for which the button's action waits.
void choose(const RunningProgram &program, const std::function<void(QFileDialog *)> &answer)
{
    bool isAnswered = false;
    QTimer::singleShot(0, program.find<QWidget>(u"prefWindow"_s), [&] {
        auto *chooser = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(chooser);
        answer(chooser);
        isAnswered = true;
    });
    program.click(u"setBackupPath1"_s);
    QVERIFY(isAnswered);
}

} // namespace

class LibraryBackupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remembersTheChosenFolder();
    void copiesTheWholeLibrary();
    void leavesEverythingElseAlone_data();
    void leavesEverythingElseAlone();
};

void LibraryBackupTest::remembersTheChosenFolder()
{
    const LibraryHome home;
    const QString folder = home.makeFolder(u"My Backups"_s);
    {
        const RunningProgram program;
        program.click(u"runPrefsWindow"_s);
        choose(program, [](QFileDialog *chooser) { QTest::keyClick(chooser, Qt::Key_Escape); });
        QCOMPARE(program.text(u"backupPath"_s) + program.text(u"theFolderImage"_s), QString());
        QVERIFY(!program.isShown(u"theBackupButton"_s));
        QVERIFY(!stored(SettingsStore::theAppBackupPath).isValid());

        choose(program, [&](QFileDialog *chooser) {
            QCOMPARE(chooser->windowTitle(), u"Backup Folder Selector"_s);
            QCOMPARE(chooser->labelText(QFileDialog::Accept), u"Set"_s);
            QCOMPARE(chooser->labelText(QFileDialog::LookIn),
                     u"Select a Backup Folder or create a New Backup Folder ..."_s);
            QCOMPARE(chooser->fileMode(), QFileDialog::Directory);
            auto *path = chooser->findChild<QLineEdit *>(u"fileNameEdit"_s);
            path->setText(folder);
            QTest::keyClick(path, Qt::Key_Return);
        });
        QVERIFY(program.isShown(u"theBackupButton"_s));
        QCOMPARE(stored(SettingsStore::theAppBackupPath), folder);
        QCOMPARE(stored(SettingsStore::theFolder8899), u"My Backups"_s);
    }
    const RunningProgram program;
    QCOMPARE(program.text(u"backupPath"_s), folder);
    QCOMPARE(program.text(u"theFolderImage"_s), u"My Backups"_s);
    QVERIFY(!program.isShown(u"theBackupButton"_s));
    program.click(u"runPrefsWindow"_s);
    QVERIFY(program.isShown(u"theBackupButton"_s));
}

void LibraryBackupTest::copiesTheWholeLibrary()
{
    const LibraryHome home;
    home.makeFile(u"Backups/"_s + datedName(QDateTime(QDate(2020, 2, 2), QTime(2, 2))) + u"/old"_s);
    std::ignore = SettingsStore().setObject(u"~/Backups"_s, SettingsStore::theAppBackupPath);
    const auto before = files(home);
    QString shownDate;
    {
        const RunningProgram program;
        program.click(u"runPrefsWindow"_s);
        const auto *spinner = program.find<Spinner>(u"backupSpinner"_s);
        QString waitText;
        QTimer::singleShot(1s, spinner, [&] {
            waitText = program.text(u"pleaseWait"_s) + (spinner->isAnimating() ? u" turning" : u"");
            program.chooseMode(1); // other actions run
        });
        program.click(u"theBackupButton"_s);
        QCOMPARE(waitText, u"Please Wait ... turning"_s);
        QVERIFY(!program.isShown(u"addButton"_s));
        QVERIFY(!spinner->isAnimating() && !program.isShown(u"backupProgress"_s));
        QCOMPARE(program.text(u"pleaseWait"_s), QString());
        shownDate = program.text(u"lastBackupDate"_s);
        program.click(u"createFolderStructure"_s); // buttons trigger again
        QVERIFY(program.isShown(u"mCancel"_s));
    }
    const QDateTime date = stored(SettingsStore::theLastBackupDate).toDateTime();
    QVERIFY(qAbs(date.msecsTo(QDateTime::currentDateTime()) - 3000) < 2000);
    QCOMPARE(files(home), withCopy(before, u"Backups/"_s + datedName(date)));
    QVERIFY(!shownDate.isEmpty());
    QCOMPARE(RunningProgram().text(u"lastBackupDate"_s), shownDate);
}

void LibraryBackupTest::leavesEverythingElseAlone_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("made"); // in the folder
    const QString none;                // nothing
    const QString dated = u"dated"_s;
    QTest::newRow("the user's own folder of that name") << u"Own"_s << dated;
    QTest::newRow("a link of that name to nowhere") << u"Dangling"_s << dated;
    QTest::newRow("beside the library") << u"Movies"_s << dated;
    QTest::newRow("inside the library") << QString(library + u"/Titles.localized"_s) << none;
    QTest::newRow("a link to the library") << u"Link"_s << none;
    QTest::newRow("missing") << u"Nowhere"_s << none;
    QTest::newRow("no folder") << QString() << none;
    QTest::newRow("the same date twice") << u"Taken"_s << name;
}

void LibraryBackupTest::leavesEverythingElseAlone()
{
    QFETCH(QString, folder);
    QFETCH(QString, made);
    const LibraryHome home;
    home.makeFile(u"Own/"_s + name + u"/mine"_s);
    QVERIFY(QFile::link(home.path(library), home.path(u"Link"_s)));
    home.makeFolder(u"Dangling"_s);
    QVERIFY(QFile::link(home.path(u"Nowhere"_s), home.path(u"Dangling/"_s + name)));
    for (int second = 0; second < 10; ++second)
        home.makeFile(u"Taken/"_s + datedName(QDateTime::currentDateTime().addSecs(second)));
    if (!folder.isEmpty())
        std::ignore =
            SettingsStore().setObject(QString(u"~/"_s + folder), SettingsStore::theAppBackupPath);
    const RunningProgram program;
    program.click(u"runPrefsWindow"_s);
    program.find<QWidget>(u"theBackupButton"_s)->show();
    const auto before = files(home);
    setWaitLength([](auto) { return 0ms; });
    program.click(u"theBackupButton"_s);
    setWaitLength({});

    const QDateTime date = stored(SettingsStore::theLastBackupDate).toDateTime();
    QVERIFY(date.isValid() && !program.text(u"lastBackupDate"_s).isEmpty());
    if (made == u"dated")
        made = datedName(date);
    const QString said = program.text(u"backupResult"_s);
    QCOMPARE(said.startsWith(u"Nothing was written"), made.isEmpty());
    QVERIFY2(said.contains(made), qPrintable(said));
    QCOMPARE(program.isShown(u"showBackup"_s), !made.isEmpty());
    const QString copy = folder + u'/' + made;
    QCOMPARE(files(home), made.isEmpty() ? before : withCopy(before, copy));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, LibraryBackupTest>(argc, argv);
}

#include "LibraryBackupTest.moc"
