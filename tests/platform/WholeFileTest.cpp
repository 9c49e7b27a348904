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
    void ownVersion_isReplacedAgain();
    void ownerAndGroup_areKept();
};

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
    QVERIFY(!writeWholeFile(path, {}, writeNew)); // as if nothing had been there
    QCOMPARE(home.read(u"file"_s), "new"_ba);
    QCOMPARE(home.names({}), QStringList(u"file"_s));
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
    const FileWriter writeInPrivate = [](QIODevice &file) {
        constexpr auto others = QFile::ReadGroup | QFile::ReadOther;
        return (static_cast<QFile &>(file).permissions() & others) == 0 && writeNew(file);
    };
    for (const uint owner : {0U, 4711U}) {
        QCOMPARE(::chown(name.constData(), owner, 4712) + ::chmod(name.constData(), 02674), 0);
        QVERIFY(writeWholeFile(path, readWholeFile(path)->version, writeInPrivate));
        QCOMPARE(ownership(name), (QList<uint>{owner, 4712, 02674}));
    }

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
}

QTEST_GUILESS_MAIN(WholeFileTest)

#include "WholeFileTest.moc"
