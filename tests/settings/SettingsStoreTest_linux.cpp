#include "history/InstallationRecord.h"
#include "settings/SettingsStore.h"
#include "tests/faults/Shim.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QSettings>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QVariant record(const QString &line)
{
    return QVariantMap{{u"installations"_s, line}};
}

const QString file = u".config/Brimvale/Brimvale.conf"_s;

/// Another process reads it: what this one has in memory does not count.
QVariant asQSettingsReads(const TestHome &home, QLatin1StringView key)
{
    static int number = 0;
    const QString copy = home.makeFile(QString::number(++number), home.read(file));
    return QSettings(copy, QSettings::IniFormat).value(key);
}

} // namespace

class LinuxSettingsStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values_areThoseOfQSettings();
    void records_ofTwoPrograms_areAllKept_data();
    void records_ofTwoPrograms_areAllKept();
    void unreadableStore_isNotWritten();
};

void LinuxSettingsStoreTest::values_areThoseOfQSettings()
{
    const TestHome home;
    const QDateTime date(QDate(2024, 2, 29), QTime(13, 5, 7));
    home.makeFile(file, "[Other]\ninstallations=1, 2\n");
    QVERIFY(SettingsStore().setObject(date, SettingsStore::theLastBackupDate));
    QVariantList records;
    for (const QString &line :
         {u"plain"_s, u"a, b=\"é\" 😀;\n[x]"_s, u""_s, u"@Invalid()"_s, u"\\"_s}) {
        QVERIFY(SettingsStore().appendObject(record(line), SettingsStore::installations));
        records << record(line);
        QCOMPARE(asQSettingsReads(home, SettingsStore::installations).toList(), records);
        QCOMPARE(SettingsStore().object(SettingsStore::installations).toList(), records);
    }
    home.makeFile(file, home.read(file).split('\n').mid(0, 3).join('\n')); // up to their line's end
    QVERIFY(SettingsStore().appendObject(record(u"last"_s), SettingsStore::installations));
    records << record(u"last"_s);
    QCOMPARE(asQSettingsReads(home, SettingsStore::installations).toList(), records);
    QVERIFY(SettingsStore().setObject(u"/a, b"_s, SettingsStore::theAppBackupPath));
    QVERIFY(SettingsStore().removeObject(SettingsStore::installations));
    QCOMPARE(asQSettingsReads(home, SettingsStore::installations), QVariant());
    QCOMPARE(asQSettingsReads(home, SettingsStore::theLastBackupDate), QVariant(date));
    QCOMPARE(asQSettingsReads(home, SettingsStore::theAppBackupPath), QVariant(u"/a, b"_s));
    QVERIFY(home.read(file).startsWith("[General]\n"));
    QVERIFY(!home.read(file).contains("End"));
}

void LinuxSettingsStoreTest::records_ofTwoPrograms_areAllKept_data()
{
    QTest::addColumn<QString>("system");
    QTest::newRow("a disk") << QString();
    QTest::newRow("a disk without locks") << u"no locks"_s;
}

/// One with a lock of QSettings that a killed program left behind.
void LinuxSettingsStoreTest::records_ofTwoPrograms_areAllKept()
{
    QFETCH(const QString, system);
    Shim::Report report;
    Shim::arm({}, &report, system);
    const auto restore = qScopeGuard([] { Shim::disarm(); });
    constexpr int each = 30;
    const TestHome home;
    home.makeFile(file + u".lock"_s, "1\nbrimvale\nhost\n\n\n");
    const pid_t other = ::fork();
    bool areKept = true;
    for (int number = 0; number < each; ++number) {
        const QString line = (other == 0 ? u"other %1"_s : u"mine %1"_s).arg(number);
        areKept = appendInstallation({line}) && areKept;
    }
    if (other == 0)
        std::_Exit(areKept ? 0 : 1);
    int status = 0;
    QCOMPARE(::waitpid(other, &status, 0), other);
    QVERIFY(areKept && status == 0);
    const auto records = installationRecords(SettingsStore().object(SettingsStore::installations));
    QCOMPARE(records.size(), 2 * each);
    QCOMPARE(asQSettingsReads(home, SettingsStore::installations).toList().size(), 2 * each);
    int mine = 0;
    for (const InstallationRecord &record : records)
        mine += record.line == u"mine %1"_s.arg(mine) ? 1 : 0;
    QCOMPARE(mine, each);
}

void LinuxSettingsStoreTest::unreadableStore_isNotWritten()
{
    const TestHome home;
    home.makeFolder(file); // open works, read does not
    QVERIFY(!appendInstallation({u"a line"_s}));
    QVERIFY(!SettingsStore().setObject(u"2024"_s, SettingsStore::theFolder8899));
    QVERIFY(!SettingsStore().object(SettingsStore::installations).isValid());
    QCOMPARE(home.names(file), QStringList());
}

QTEST_GUILESS_MAIN(LinuxSettingsStoreTest)

#include "SettingsStoreTest_linux.moc"
