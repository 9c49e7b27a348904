#include "editor/ProjectDocument.h"

#include "ConformingParsers.h"
#include "MotionFixtures.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringEncoder>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray encoded(const QByteArray &text, QStringConverter::Encoding encoding, bool mark)
{
    QStringEncoder encoder(encoding,
                           mark ? QStringEncoder::Flag::WriteBom : QStringEncoder::Flag::Default);
    QString characters = QString::fromUtf8(text);
    if (encoding != QStringConverter::Utf8)
        characters.replace(u"encoding=\"UTF-8\""_s, u"encoding=\"UTF-16\""_s);
    return encoder(characters);
}

/// What the file holds after it was opened and saved.
QByteArray rewritten(const TestHome &home)
{
    const QString path = home.path(u"x.motn"_s);
    const Result<ProjectDocument> document = openProjectDocument(path);
    if (!document || !saveProjectDocument(*document, path))
        return "not rewritten: " + document.reason().toUtf8();
    return home.read(u"x.motn"_s);
}

} // namespace

class ProjectDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rewriting_keepsTheContent_data();
    void rewriting_keepsTheContent();
    void rewriting_laysTheFileOut_data();
    void rewriting_laysTheFileOut();
    void opening_whatIsNoDocument_isRefused_data();
    void opening_whatIsNoDocument_isRefused();
    void opening_aFifoOrADevice_doesNotWait();
    void queries_findValuesInDocumentOrder_data();
    void queries_findValuesInDocumentOrder();
    void saving_keepsLinksAndPermissions();
    void saving_whatIsReadOnly_changesNothing_data();
    void saving_whatIsReadOnly_changesNothing();
};

void ProjectDocumentTest::rewriting_keepsTheContent_data()
{
    using Encoding = QStringConverter::Encoding;
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("Motion's own") << motionFile();
    QTest::newRow("everything") << everythingInOne();
    QTest::newRow("line ends of another system") << motionFile().replace('\n', "\r\n");
    QTest::newRow("a byte order mark") << encoded(motionFile(), Encoding::Utf8, true);
    QTest::newRow("UTF-16") << encoded(motionFile(), Encoding::Utf16LE, true);
    QTest::newRow("UTF-16 the other way round")
        << encoded(everythingInOne(), Encoding::Utf16BE, true);
    QTest::newRow("UTF-16 without a mark") << encoded(motionFile(), Encoding::Utf16LE, false);
    QTest::newRow("UTF-16 without a mark, the other way round")
        << encoded(motionFile(), Encoding::Utf16BE, false);
    QTest::newRow("more than one buffer of UTF-16")
        << encoded("<a>" + QByteArray("é😀 x日").repeated(40000) + "</a>", Encoding::Utf16LE, true);
    QTest::newRow("no declaration") << "<ozml><a/></ozml>"_ba;
    QTest::newRow("a declaration in single quotes")
        << "<?xml version='1.0'  standalone='yes' ?>\n<ozml><a/></ozml>"_ba;
    QTest::newRow("blanks that are references")
        << "<a b='&#13;&#10;&#9; x' c=\"&quot;'&lt;>\">&#13; x&#13;&#10;<![CDATA[\n\t]]></a>"_ba;
    QTest::newRow("an end of data in a text") << "<a>]]&gt;</a>"_ba;
    QTest::newRow("blanks that are all") << "<a><b> \n\t</b><b>\n</b><b></b></a>"_ba;
    QTest::newRow("text beside elements")
        << "<a>\n<b>one <i>two</i> <i>three\n <u/> </i>\n</b>\n<c/>\n</a>"_ba;
    QTest::newRow("a section between elements") << "<a><b/>\n<![CDATA[ ]]>\n<b> <c/> </b></a>"_ba;
    QTest::newRow("comments and instructions everywhere")
        << "<!-- a --><?b?><!DOCTYPE a PUBLIC \"p\" 's\"'><?c d ?><a><!-- \n e --><?f  g?></a><!---->"_ba;
}

void ProjectDocumentTest::rewriting_keepsTheContent()
{
    QFETCH(QByteArray, file);
    const TestHome home;
    home.makeFile(u"x.motn"_s, file);
    const QByteArray once = rewritten(home);
    const QByteArray content = canonicalContent(file);
    QVERIFY(!content.isEmpty());
    QCOMPARE(canonicalContent(once), content);
    QVERIFY(expatAccepts(once));
    QCOMPARE(once.left(2), file.left(2)); // of a byte order mark, or of what is there without
    QCOMPARE(once.contains("<?xml"), file.contains("<?xml"));
    QCOMPARE(rewritten(home), once);
}

void ProjectDocumentTest::rewriting_laysTheFileOut_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("laidOut");
    QTest::newRow("one tab a level")
        << "<?xml version='1.0'?><!-- x --><ozml a='1'  b='2'><c><d> e </d>\n\n<f></f></c></ozml>"_ba
        << "<?xml version='1.0'?>\n<!-- x -->\n<ozml a=\"1\" b=\"2\">\n\t<c>\n\t\t<d> e "
           "</d>\n\t\t<f/>\n"
           "\t</c>\n</ozml>\n"_ba;
    QTest::newRow("nothing is moved beside text")
        << "<a><b>x<c> <d/> </c></b> <e/></a>"_ba
        << "<a>\n\t<b>x<c> <d/> </c></b>\n\t<e/>\n</a>\n"_ba;
}

void ProjectDocumentTest::rewriting_laysTheFileOut()
{
    QFETCH(QByteArray, file);
    const TestHome home;
    home.makeFile(u"x.motn"_s, file);
    QTEST(rewritten(home), "laidOut");
}

void ProjectDocumentTest::opening_whatIsNoDocument_isRefused_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("no XML") << "Motion"_ba;
    QTest::newRow("two roots") << "<a/><b/>"_ba;
    QTest::newRow("another encoding") << "<?xml version='1.0' encoding='ISO-8859-1'?><a/>"_ba;
    QTest::newRow("not the declared encoding") << "<?xml version='1.0' encoding='UTF-16'?><a/>"_ba;
    QTest::newRow("half a character")
        << encoded("<a/>", QStringConverter::Utf16LE, true).chopped(1);
    QTest::newRow("half a surrogate pair")
        << "\xFF\xFE"_ba + QByteArray::fromHex("3C0061003E003DD83C002F0061003E00");
    QTest::newRow("UTF-32") << encoded("<a/>", QStringConverter::Utf32LE, true);
    QTest::newRow("entities of its own") << "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"_ba;
    QTest::newRow("an external entity")
        << "<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/passwd'>]><a>&b;</a>"_ba;
}

void ProjectDocumentTest::opening_whatIsNoDocument_isRefused()
{
    QFETCH(QByteArray, file);
    const TestHome home;
    const Result<ProjectDocument> document = openProjectDocument(home.makeFile(u"x.motn"_s, file));
    QVERIFY(!document);
    QVERIFY(!document.reason().isEmpty());
    QVERIFY(nodeValues(document, u"//frameRate"_s).isEmpty());
}

void ProjectDocumentTest::opening_aFifoOrADevice_doesNotWait()
{
    const TestHome home;
    const QString fifo = home.path(u"x.motn"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QStringList paths = {fifo, home.makeFolder(u"y.motn"_s), u"/dev/zero"_s, QString(),
                               home.path(u"missing.motn"_s)};
    for (const QString &path : paths)
        QVERIFY2(!openProjectDocument(path), qPrintable(path));
}

void ProjectDocumentTest::queries_findValuesInDocumentOrder_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("nested elements and what is in them")
        << u"//a"_s << QStringList{u"1 2<3"_s, u"2<3"_s, u""_s, u"4"_s};
    QTest::newRow("the root itself") << u"//ozml"_s << QStringList{u"1 2<34"_s};
    QTest::newRow("the root is the context") << u"b/a/@n"_s << QStringList{u"&"_s};
    QTest::newRow("a predicate") << u"//a[@n='&']"_s << QStringList{u"4"_s};
    QTest::newRow("a union in document order")
        << u"//b|//a[1]"_s << QStringList{u"1 2<3"_s, u"2<3"_s, u"4"_s, u"4"_s};
    QTest::newRow("texts") << u"//b//text()"_s << QStringList{u"4"_s};
    QTest::newRow("nothing found") << u"//theme"_s << QStringList{};
    QTest::newRow("no query") << u"//["_s << QStringList{};
    QTest::newRow("a number") << u"count(//a)"_s << QStringList{};
}

void ProjectDocumentTest::queries_findValuesInDocumentOrder()
{
    QFETCH(QString, query);
    const TestHome home;
    const auto document = openProjectDocument(home.makeFile(
        u"x.motn"_s, "<ozml><a>1 <a>2<![CDATA[<]]>3</a><a/></a><b><a n='&amp;'>4</a></b></ozml>"));
    QTEST(nodeValues(document, query), "values");
}

void ProjectDocumentTest::saving_keepsLinksAndPermissions()
{
    const TestHome home;
    const QString target = home.makeFile(u"real/x.motn"_s, "<a><b/></a>");
    const QString link = home.path(u"link.motn"_s);
    QVERIFY(QFile::link(target, link));
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(target, permissions));
    const Result<ProjectDocument> document = openProjectDocument(link);
    QVERIFY(document);
    QVERIFY(saveProjectDocument(*document, link));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(home.read(u"real/x.motn"_s), "<a>\n\t<b/>\n</a>\n"_ba);
    constexpr auto userBits = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    QCOMPARE(QFile::permissions(target) & ~userBits, permissions);
    QCOMPARE(home.names(u"real"_s), QStringList{u"x.motn"_s});
}

void ProjectDocumentTest::saving_whatIsReadOnly_changesNothing_data()
{
    QTest::addColumn<QString>("readOnly");
    QTest::newRow("the file") << u"folder/x.motn"_s;
    QTest::newRow("its folder") << u"folder"_s;
}

void ProjectDocumentTest::saving_whatIsReadOnly_changesNothing()
{
    QFETCH(QString, readOnly);
    const TestHome home;
    const QString path = home.makeFile(u"folder/x.motn"_s, "<a><b/></a>");
    const Result<ProjectDocument> document = openProjectDocument(path);
    QVERIFY(document);
    const QFile::Permissions before = QFile::permissions(home.path(readOnly));
    QVERIFY(QFile::setPermissions(home.path(readOnly), QFile::ReadOwner | QFile::ExeOwner));
    const auto untouched = home.snapshot();
    const Outcome outcome = saveProjectDocument(*document, path);
    QCOMPARE(home.snapshot(), untouched);
    QVERIFY(QFile::setPermissions(home.path(readOnly), before));
    QVERIFY(!outcome);
    QVERIFY(!outcome.reason().isEmpty());
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, ProjectDocumentTest>(argc, argv);
}

#include "ProjectDocumentTest.moc"
