#include "platform/WholeFile.h"

#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QFile>
#include <QIODevice>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const FileWriter writeNew = [](QIODevice &file) { return file.write("new") == 3; };

/// Owner, group and mode.
QList<uint> ownership(const QByteArray &path)
{
    struct stat status = {};
    ::stat(path.constData(), &status);
    return {status.st_uid, status.st_gid, status.st_mode & 07777};
}

} // namespace

class WholeFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void another_programsVersionStays_data();
    void another_programsVersionStays();
    void ownVersion_isReplacedAgain();
    void link_leadsToWhatIsReplaced();
    void ownerAndGroup_areKept();
};

void WholeFileTest::another_programsVersionStays_data()
{
    QTest::addColumn<std::function<void(const QString &)>>("interfere");
    QTest::newRow("written") << std::function([](const QString &path) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write("ALL") == 3);
    });
    QTest::newRow("replaced") << std::function([](const QString &path) {
        QVERIFY(QFile::remove(path) && QFile::copy(path + u"2"_s, path));
    });
    QTest::newRow("made") << std::function<void(const QString &)>();
}

void WholeFileTest::another_programsVersionStays()
{
    QFETCH(std::function<void(const QString &)>, interfere);
    const TestHome home;
    const QString path = home.makeFile(u"x/file"_s, "all");
    home.makeFile(u"x/file2"_s, "ALL");
    std::optional<FileVersion> version; // as if nothing had been there
    if (interfere)
        version = readWholeFile(path)->version;
    // Neither before it grows nor while it does.
    QVERIFY(!interfere || !writeWholeFile(path, version, [&](QIODevice &file) {
        interfere(path);
        return writeNew(file);
    }));
    QVERIFY(!writeWholeFile(path, version, writeNew));
    QCOMPARE(home.read(u"x/file"_s), interfere ? "ALL"_ba : "all"_ba);
    QCOMPARE(home.names(u"x"_s).size(), 2);
}

void WholeFileTest::ownVersion_isReplacedAgain()
{
    const TestHome home;
    const QString path = home.path(u"file"_s);
    std::optional<FileVersion> version = readWholeFile(path)->version;
    QVERIFY(!version);
    for (int time = 0; time < 3; ++time) {
        const Result<FileVersion> written = writeWholeFile(path, version, writeNew);
        QVERIFY2(written, qPrintable(written.reason()));
        version = *written;
        QCOMPARE(readWholeFile(path)->version, version);
    }
    QCOMPARE(home.names({}), QStringList(u"file"_s));
    QVERIFY(!writeWholeFile(path, version, [](QIODevice &file) { return file.write("x") == 2; }));
    QCOMPARE(home.read(u"file"_s), "new"_ba);
    QCOMPARE(home.names({}), QStringList(u"file"_s));
}

void WholeFileTest::link_leadsToWhatIsReplaced()
{
    const TestHome home;
    home.makeFolder(u"real"_s);
    const QString link = home.path(u"link"_s);
    QVERIFY(QFile::link(u"middle"_s, link) && QFile::link(u"real/file"_s, home.path(u"middle"_s)));
    for (int time = 0; time < 2; ++time) // the first leads nowhere yet
        QVERIFY(writeWholeFile(link, readWholeFile(link)->version, writeNew));
    QCOMPARE(home.read(u"real/file"_s), "new"_ba);
    QCOMPARE(QFile::symLinkTarget(link), home.path(u"middle"_s));
    QCOMPARE(home.names(u"real"_s), QStringList(u"file"_s));
}

void WholeFileTest::ownerAndGroup_areKept()
{
    if (::geteuid() != 0)
        QSKIP("only root gives files away");
    const TestHome home;
    const QString path = home.makeFile(u"shared/file"_s);
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(::chmod(qPrintable(home.path()), 0755), 0);
    QCOMPARE(::chmod(qPrintable(home.path(u"shared"_s)), 0777), 0);
    QCOMPARE(::chown(name.constData(), 4711, 4712) + ::chmod(name.constData(), 02674), 0);
    QVERIFY(writeWholeFile(path, readWholeFile(path)->version, writeNew));
    QCOMPARE(ownership(name), (QList<uint>{4711, 4712, 02674}));

    // By one who may give away neither: the new group gets no more than everybody.
    QCOMPARE(::chmod(name.constData(), 06674) + ::seteuid(4713), 0);
    const auto version = readWholeFile(path)->version;
    const Result<FileVersion> refused = writeWholeFile(path, version, writeNew);
    QCOMPARE(::seteuid(0) + ::chmod(name.constData(), 06676) + ::seteuid(4713), 0);
    const Result<FileVersion> written =
        writeWholeFile(path, readWholeFile(path)->version, writeNew);
    QCOMPARE(::seteuid(0), 0);
    QVERIFY(!refused);
    QVERIFY2(written, qPrintable(written.reason()));
    QCOMPARE(ownership(name), (QList<uint>{4713, ::getegid(), 0666}));
    // Marked read-only, it is not written by anybody.
    QCOMPARE(::chmod(name.constData(), 0444), 0);
    QVERIFY(!writeWholeFile(path, readWholeFile(path)->version, writeNew));
}

QTEST_GUILESS_MAIN(WholeFileTest)

#include "WholeFileTest.moc"
