#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QProcess>

using namespace Qt::StringLiterals;

/// The desktop's notification service, as far as the program uses it.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QList<QStringList> received; // title and text

public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &title, const QString &text,
                const QStringList &, const QVariantMap &, int)
    {
        received << QStringList{title, text};
        return static_cast<uint>(received.size());
    }
};

class NotificationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { QDBusConnection::disconnectFromBus(u"service"_s); }
    void cleanupTestCase();
    void announcesEveryInstall_data();
    void announcesEveryInstall();
    void doesNotWaitForAService();

private:
    bool startService();

    QProcess m_bus;
    NotificationService m_service;
};

/// A bus of the test's own, on which nothing can be started.
void NotificationTest::initTestCase()
{
    const TestHome home;
    const QString configuration = home.makeFile(u"bus.conf"_s, R"(<busconfig>
        <type>session</type>
        <listen>unix:tmpdir=/tmp</listen>
        <policy context="default">
          <allow send_destination="*" eavesdrop="true"/>
          <allow eavesdrop="true"/>
          <allow own="*"/>
        </policy>
        </busconfig>)");
    m_bus.start(u"dbus-daemon"_s,
                {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration});
    QVERIFY2(m_bus.waitForReadyRead(), qUtf8Printable(m_bus.errorString()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void NotificationTest::cleanupTestCase()
{
    m_bus.kill();
    m_bus.waitForFinished();
}

/// On a connection of its own, as another program is.
bool NotificationTest::startService()
{
    QDBusConnection connection = QDBusConnection::connectToBus(
        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"service"_s);
    return connection.registerObject(u"/org/freedesktop/Notifications"_s, &m_service,
                                     QDBusConnection::ExportAllSlots) &&
           connection.registerService(u"org.freedesktop.Notifications"_s);
}

void NotificationTest::announcesEveryInstall_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<bool>("isSubCategory");
    QTest::addColumn<QString>("text");
    for (const auto &category : LibraryHome::categories()) {
        QTest::newRow(qUtf8Printable(category.name))
            << category.choice << false << category.installedText;
        QTest::newRow(qUtf8Printable(category.name + u", sub-category"_s))
            << category.choice << true << category.customInstalledText;
    }
}

void NotificationTest::announcesEveryInstall()
{
    QFETCH(const QString, choice);
    QFETCH(const bool, isSubCategory);
    QFETCH(const QString, text);
    QVERIFY(startService());
    m_service.received.clear();
    const LibraryHome home;
    const RunningProgram program;
    program.click(choice);
    for (int install = 1; install <= 2; ++install) { // the second one has nothing to move
        program.dropFiles(u"installHint"_s, {home.path(u"Desktop/Glow"_s)});
        program.click(isSubCategory ? u"mNewCatButton"_s : u"mSendButton"_s);
        if (isSubCategory)
            program.click(u"generateCustomFolder"_s);
        QTRY_COMPARE(m_service.received.size(), install);
        QCOMPARE(m_service.received.last(), QStringList({u"Operation Successful"_s, text}));
    }
}

/// One that does not run, and one whose bus is gone.
void NotificationTest::doesNotWaitForAService()
{
    const LibraryHome home;
    const RunningProgram program;
    for (const bool busRuns : {true, false}) {
        if (!busRuns) {
            m_bus.kill();
            QVERIFY(m_bus.waitForFinished());
        }
        program.dropFiles(u"installHint"_s, {home.makeFolder(u"Glow"_s)});
        QElapsedTimer clock;
        clock.start();
        program.click(u"mSendButton"_s);
        QVERIFY(clock.elapsed() < 500);
        QVERIFY(!home.exists(u"Glow"_s));
    }
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, NotificationTest>(argc, argv);
}

#include "NotificationTest_linux.moc"
