#include "Editor.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString archive = u"Documents/Brimvale"_s;

/// The editor of a user who has a folder for documents.
class ArchivingEditor : public Editor
{
public:
    ArchivingEditor() { makeFolder(archive); }

    /// Whatever happened, the user reads that it worked.
    [[nodiscard]] bool isReported() const
    {
        return !isShown(u"orgButton"_s) && text(u"wasArchived"_s) == u"Original Archived";
    }
};

} // namespace

class OriginalArchiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void archivesUnderADatedName();
    void leavesTheSecondCopyOfASecondBesideTheOriginal();
    void failsInSilence_data();
    void failsInSilence();
};

void OriginalArchiveTest::archivesUnderADatedName()
{
    const ArchivingEditor editor;
    const QString original = u"Glow/a.b.motn"_s;
    QFile file(editor.makeFile(original, motionFile()));
    QVERIFY(file.open(QIODevice::Append));
    QVERIFY(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1'000'000'000'123),
                             QFile::FileModificationTime));
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    file.close();
    editor.dropFiles({file.fileName()});
    auto expected = editor.snapshot();
    const qint64 earliest = QDateTime::currentSecsSinceEpoch();
    editor.click(u"orgButton"_s);

    QVERIFY(editor.isReported());
    const QString date = editor.text(u"dateTextField"_s);
    const auto shown = QDateTime::fromString(date.left(22), u"MM-dd-yyyy '||' HH_mm_ss"_s);
    QVERIFY(earliest <= shown.toSecsSinceEpoch() && shown <= QDateTime::currentDateTime());
    QCOMPARE(date.mid(22), u' ' + shown.timeZoneAbbreviation());
    // The copy has the mode and the time of the original, which is untouched.
    expected.insert(archive + u"/a.b-"_s + date + u".motn"_s, expected.value(original));
    QCOMPARE(editor.snapshot(), expected);
    QVERIFY(editor.waitForAnimation());
}

void OriginalArchiveTest::leavesTheSecondCopyOfASecondBesideTheOriginal()
{
    const ArchivingEditor editor;
    QVERIFY(QTest::qWaitFor([] { return QTime::currentTime().msec() < 100; }));
    for (int time = 0; time < 2; ++time) {
        editor.load(motionFile(), u"Glow/Intro.motn"_s);
        editor.click(u"orgButton"_s);
        QVERIFY(editor.isReported());
    }
    const QString copy = u"Intro-"_s + editor.text(u"dateTextField"_s) + u".motn"_s;
    QCOMPARE(editor.names(archive), QStringList{copy});
    QCOMPARE(editor.names(u"Glow"_s), (QStringList{copy, u"Intro.motn"_s}));
}

void OriginalArchiveTest::failsInSilence_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<int>("copiesBeside");
    QTest::newRow("archive folder") << archive << 1;
    QTest::newRow("original") << u"Glow/Intro.motn"_s << 0;
    QTest::newRow("path") << QString() << 0;
}

void OriginalArchiveTest::failsInSilence()
{
    QFETCH(QString, missing);
    QFETCH(int, copiesBeside);
    const ArchivingEditor editor;
    editor.load(motionFile(), u"Glow/Intro.motn"_s);
    if (missing.isEmpty()) {
        editor.click(u"tClearButton"_s);
        editor.find<QWidget>(u"orgButton"_s)->show();
    } else {
        QVERIFY(QFile::remove(editor.path(missing)) || QDir().rmdir(editor.path(missing)));
    }
    const qsizetype before = editor.snapshot().size();
    editor.click(u"orgButton"_s);
    QVERIFY(editor.isReported());
    QCOMPARE(editor.snapshot().size(), before + copiesBeside);
    QCOMPARE(editor.names(u"Glow"_s).filter(u" || "_s).size(), copiesBeside);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, OriginalArchiveTest>(argc, argv);
}

#include "OriginalArchiveTest.moc"
