#include "editor/ProjectChanges.h"

#include "ConformingParsers.h"
#include "MotionFixtures.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

const ConformedRate at25 = {u"25"_s, u"250"_s};

Result<ProjectDocument> documentOf(const QByteArray &file)
{
    const TestHome home;
    return openProjectDocument(home.makeFile(u"x.motn"_s, file));
}

QByteArray saved(const ProjectDocument &document)
{
    const TestHome home;
    const QString path = home.makeFile(u"x.motn"_s);
    return saveProjectDocument(document, path) ? home.read(u"x.motn"_s) : "not saved"_ba;
}

} // namespace

class ProjectChangesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theme_isInsertedAsTheFourthChild_data();
    void theme_isInsertedAsTheFourthChild();
    void theme_isNotInsertedAmongTooFewChildren();
    void theme_replacesAllContent_data();
    void theme_replacesAllContent();
    void conform_changesTheFirstTripleOnly_data();
    void conform_changesTheFirstTripleOnly();
    void conform_leavesEverythingElse();
};

void ProjectChangesTest::theme_isInsertedAsTheFourthChild_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("behind three elements")
        << "<x v='1'><a/>\n<b/>\n<c/>\n</x>"_ba
        << "<ozml v='1'><a/><b/><c/><template><theme/></template></ozml>"_ba;
    QTest::newRow("between the third and the fourth, comments counted, blanks not")
        << "<ozml>\n<a/>\n<!-- b -->\n<c> </c>\n<d/>\n</ozml>"_ba
        << "<ozml><a/><!-- b --><c> </c><template><theme/></template><d/></ozml>"_ba;
}

void ProjectChangesTest::theme_isInsertedAsTheFourthChild()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, content);
    Result<ProjectDocument> document = documentOf(file);
    QVERIFY(document);
    QVERIFY(insertTheme(*document));
    QCOMPARE(canonicalContent(saved(*document)), canonicalContent(content));
}

void ProjectChangesTest::theme_isNotInsertedAmongTooFewChildren()
{
    const QByteArray file = "<root>\n\t<a/>\n\t<b/>\n</root>\n";
    Result<ProjectDocument> document = documentOf(file);
    QVERIFY(document);
    QVERIFY(!insertTheme(*document));
    QCOMPARE(saved(*document), file);
}

void ProjectChangesTest::theme_replacesAllContent_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("none") << "<a/>"_ba << u"New"_s << 0 << "<a/>"_ba;
    QTest::newRow("two, with other content")
        << "<a><theme n='1'>Old<b/><!-- c --></theme><theme/></a>"_ba << u"New"_s << 2
        << "<a><theme n='1'>New</theme><theme>New</theme></a>"_ba;
    QTest::newRow("one inside another and one behind")
        << "<a><theme>x<b><theme>y</theme></b></theme><theme/></a>"_ba << u"New"_s << 3
        << "<a><theme>New</theme><theme>New</theme></a>"_ba;
    QTest::newRow("an empty name")
        << "<a><theme>Old</theme></a>"_ba << u""_s << 1 << "<a><theme/></a>"_ba;
    QTest::newRow("blanks") << "<a><theme/></a>"_ba << u"  "_s << 1
                            << "<a><theme>  </theme></a>"_ba;
    QTest::newRow("markup") << "<a><theme/></a>"_ba << u"<b> & \"c\" ]]>"_s << 1
                            << "<a><theme>&lt;b> &amp; \"c\" ]]&gt;</theme></a>"_ba;
    QTest::newRow("a pictogram and a carriage return")
        << "<a><theme/></a>"_ba << u"😀\r\n"_s << 1 << "<a><theme>😀&#13;\n</theme></a>"_ba;
    QTest::newRow("characters that XML cannot hold")
        << "<a><theme/></a>"_ba
        << u"A\u0001"_s + QChar(0) + QChar(0xD83D) + u"B"_s + QChar(0xDE00) + QChar(0xFFFE) + u"C"_s
        << 1 << "<a><theme>ABC</theme></a>"_ba;
}

void ProjectChangesTest::theme_replacesAllContent()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, text);
    QFETCH(QByteArray, content);
    Result<ProjectDocument> document = documentOf(file);
    QVERIFY(document);
    QTEST(setTheme(*document, text), "count");
    QCOMPARE(canonicalContent(saved(*document)), canonicalContent(content));
}

void ProjectChangesTest::conform_changesTheFirstTripleOnly_data()
{
    QTest::addColumn<QByteArray>("inside");
    QTest::addColumn<bool>("anyPair");
    QTest::addColumn<bool>("anyTriple");
    QTest::addColumn<bool>("moreTriples");
    QTest::addColumn<QByteArray>("changed");
    const auto row = [](const char *name, const QByteArray &inside, const QByteArray &matches,
                        const QByteArray &changed) {
        QTest::newRow(name) << inside << matches.contains('p') << matches.contains('t')
                            << matches.contains('m') << changed;
    };
    // p: a pair, t: a triple, m: more triples than one.
    row("one of each", "<frameRate>30</frameRate><duration>9</duration><NTSC>1</NTSC>", "pt",
        "<frameRate>25</frameRate><duration>250</duration><NTSC>0</NTSC>");
    row("no NTSC", "<frameRate>30</frameRate><duration>9</duration>", "p",
        "<frameRate>30</frameRate><duration>9</duration>");
    row("no duration", "<frameRate>30</frameRate><NTSC>1</NTSC>", "",
        "<frameRate>30</frameRate><NTSC>1</NTSC>");
    row("two NTSC", "<frameRate/><duration/><NTSC>1</NTSC><NTSC>1</NTSC>", "ptm",
        "<frameRate>25</frameRate><duration>250</duration><NTSC>0</NTSC><NTSC>1</NTSC>");
    row("two durations", "<duration/><duration>9</duration><frameRate/><NTSC/>", "ptm",
        "<duration>250</duration><duration>9</duration><frameRate>25</frameRate><NTSC>0</NTSC>");
    row("two rates", "<frameRate/><frameRate>30</frameRate><duration/><NTSC/>", "ptm",
        "<frameRate>25</frameRate><frameRate>30</frameRate><duration>250</duration><NTSC>0</NTSC>");
    row("duration and NTSC inside the rate", "<frameRate><duration/><NTSC/></frameRate>", "pt",
        "<frameRate>25</frameRate>");
    row("the rate inside the duration", "<duration><frameRate/></duration><NTSC/>", "pt",
        "<duration>250</duration><NTSC>0</NTSC>");
    row("all durations go with the first rate",
        "<frameRate><duration/></frameRate><frameRate/><NTSC/>", "pt",
        "<frameRate>25</frameRate><frameRate/><NTSC>0</NTSC>");
    row("a later duration goes with the first one",
        "<frameRate/><duration><duration/></duration><NTSC/>", "ptm",
        "<frameRate>25</frameRate><duration>250</duration><NTSC>0</NTSC>");
}

void ProjectChangesTest::conform_changesTheFirstTripleOnly()
{
    QFETCH(QByteArray, inside);
    QFETCH(QByteArray, changed);
    Result<ProjectDocument> document = documentOf("<ozml>" + inside + "</ozml>");
    QVERIFY(document);
    const ConformMatches matches = conformFirstTriple(*document, at25);
    QTEST(matches.anyPair, "anyPair");
    QTEST(matches.anyTriple, "anyTriple");
    QTEST(matches.moreTriples, "moreTriples");
    QCOMPARE(canonicalContent(saved(*document)), canonicalContent("<ozml>" + changed + "</ozml>"));
}

void ProjectChangesTest::conform_leavesEverythingElse()
{
    Result<ProjectDocument> document = documentOf(motionFile());
    QVERIFY(document);
    QVERIFY(conformFirstTriple(*document, std::nullopt).anyTriple);
    QCOMPARE(canonicalContent(saved(*document)), canonicalContent(motionFile()));
    conformFirstTriple(*document, at25);
    const QByteArray expected = motionFile()
                                    .replace(">29.97<", ">25<")
                                    .replace(">300<", ">250<")
                                    .replace("<NTSC>1<", "<NTSC>0<");
    QCOMPARE(canonicalContent(saved(*document)), canonicalContent(expected));
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, ProjectChangesTest>(argc, argv);
}

#include "ProjectChangesTest.moc"
