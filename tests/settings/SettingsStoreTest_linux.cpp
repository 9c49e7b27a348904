#include "history/InstallationRecord.h"
#include "settings/IniText.h"
#include "settings/SettingsStore.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

QVariant record(const QString &line)
{
    return QVariantMap{{u"installations"_s, line}};
}

const QString file = u".config/Brimvale/Brimvale.conf"_s;

/// Read anew: under another name, which shares nothing with those before it.
QVariant asQSettingsReads(const QByteArray &text, QLatin1StringView key)
{
    static int number = 0;
    const TestHome home;
    const QString copy = home.makeFile(QString::number(++number), text);
    return QSettings(copy, QSettings::IniFormat).value(key);
}

QString randomText(QRandomGenerator &random)
{
    static const QString units = u"aF09 ,;=@\"\\\n\t\u0001%[]/é日\u007f()x"_s;
    QString text;
    for (int length = random.bounded(12); length > 0; --length)
        text += units[random.bounded(units.size())];
    return random.bounded(5) == 0 ? text + u"😀"_s : text;
}

/// Anything that the store keeps: a text, a date, an array of none to three records.
QVariant randomValue(QRandomGenerator &random)
{
    switch (random.bounded(3)) {
    case 0:
        return randomText(random);
    case 1:
        return QDateTime::fromMSecsSinceEpoch(qint64(random.bounded(4e12)));
    default:
        QVariantList records;
        for (int count = random.bounded(4); count > 0; --count)
            records << record(randomText(random));
        return records;
    }
}

} // namespace

class LinuxSettingsStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values_areThoseOfQSettings();
    void otherLines_stay();
    void records_ofTwoPrograms_areAllKept();
    void unreadableStore_isNotWritten();
};

/// In both directions, whatever stood there before.
void LinuxSettingsStoreTest::values_areThoseOfQSettings()
{
    QRandomGenerator random(20120229);
    const TestHome home;
    IniText text({});
    for (int round = 0; round < 2000; ++round) {
        const QByteArray key = QByteArrayList{"d", "b", "c", "a"}[random.bounded(4)];
        QVariant value = randomValue(random);
        const QVariant before = text.value(key);
        if (round % 200 == 0) {
            home.makeFile(file, text.text());
            QSettings(home.path(file), QSettings::IniFormat)
                .setValue(QString::fromLatin1(key), value);
            text = IniText(home.read(file));
        } else if (random.bounded(4) == 0) {
            text.remove(key);
            value = QVariant();
        } else if (before.typeId() == QMetaType::QVariantList) {
            text.appendItem(key, record(u"a, b"_s));
            value = before.toList() << record(u"a, b"_s);
        } else {
            text.setValue(key, value);
        }
        if (value == QVariant(QVariantList()))
            value = QVariant(); // to QSettings an empty array and none are one
        QCOMPARE(text.value(key), value);
        QCOMPARE(text.value(key).typeId(), value.typeId());
        QCOMPARE(asQSettingsReads(text.text(), QLatin1StringView(key)), value);
    }
}

void LinuxSettingsStoreTest::otherLines_stay()
{
    const QByteArray other = "\n[Other]\ntheFolder8899=1\n; mine\nx=\"a,\\x62\"\n";
    const TestHome home;
    home.makeFile(file, "[General]\nzoo = 1, 2\n" + other);
    QVERIFY(SettingsStore().setObject(u"2024"_s, SettingsStore::theFolder8899));
    QCOMPARE(home.read(file), "[General]\ntheFolder8899=2024\nzoo = 1, 2\n" + other);
    QVERIFY(SettingsStore().removeObject(SettingsStore::theFolder8899));
    QVERIFY(SettingsStore().removeObject(SettingsStore::installations));
    QCOMPARE(home.read(file), "[General]\nzoo = 1, 2\n" + other);
}

/// One with a lock of QSettings that a killed program left behind.
void LinuxSettingsStoreTest::records_ofTwoPrograms_areAllKept()
{
    constexpr int each = 30;
    const TestHome home;
    home.makeFile(file + u".lock"_s, "1\nbrimvale\nhost\n\n\n");
    const QStringList arguments = {u"append"_s, QString::number(each), home.path(u".config"_s)};
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), arguments);
    for (int number = 0; number < each; ++number)
        QVERIFY(appendInstallation({u"mine %1"_s.arg(number)}));
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitCode(), 0);
    const auto records = installationRecords(SettingsStore().object(SettingsStore::installations));
    QCOMPARE(records.size(), 2 * each);
    QCOMPARE(asQSettingsReads(home.read(file), SettingsStore::installations).toList().size(),
             2 * each);
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

int main(int argc, char *argv[])
{
    if (argc != 4)
        return runTest<QCoreApplication, LinuxSettingsStoreTest>(argc, argv);
    // The other program.
    keepSettingsIn(QString::fromLocal8Bit(argv[3]));
    for (int number = 0; number < QByteArray(argv[2]).toInt(); ++number) {
        if (!appendInstallation({u"other %1"_s.arg(number)}))
            return 1;
    }
    return 0;
}

#include "SettingsStoreTest_linux.moc"
