#include "MotionFixtures.h"
#include "SecondParser.h"
#include "motion/ProjectChanges.h"
#include "motion/WellFormedness.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QStringEncoder>

#include <sys/stat.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

/// A document that has something of all that XML allows, in one.
QByteArray everythingInOne()
{
    return R"(<?xml version="1.0" encoding="UTF-8" standalone='no' ?>
<!-- before - the type --><!DOCTYPE ozxmlscene SYSTEM "motion.dtd" >
<?keep this one?>
<ozml version="5.8" name='"Glow" &amp; more'>

<displayversion>5.3.2</displayversion>
<build></build><description  />
<canvas:view id="&#49;&#x3A;" height='é &lt; 日本'>
	<größe·1>A &gt; B ]] &#13;&#10; "quoted" 😀 it's</größe·1>
	<![CDATA[ <not> & markup ]] ]]>
	<?empty?><!----><layer.1_a-b x = "1"
		y="2	3" />text</canvas:view >
</ozml>
<!-- behind --><?and this?>
)";
}

QByteArray inUtf16(const QByteArray &text, QStringConverter::Encoding encoding, bool mark)
{
    QStringEncoder encoder(encoding,
                           mark ? QStringEncoder::Flag::WriteBom : QStringEncoder::Flag::Default);
    return encoder(QString::fromUtf8(text).replace(u"\"UTF-8\""_s, u"\"UTF-16\""_s));
}

/// What the file holds after it was opened, changed and saved.
QByteArray rewritten(const QByteArray &file,
                     const std::function<void(ProjectDocument &)> &change = {})
{
    const TestHome home;
    const QString path = home.makeFile(u"x.motn"_s, file);
    Result<ProjectDocument> document = openProjectDocument(path);
    if (document && change)
        change(*document);
    if (!document || !saveProjectDocument(*document, path))
        return "not rewritten: " + document.reason().toUtf8();
    return home.read(u"x.motn"_s);
}

/// What XML is made of, and what comes close to it.
const QByteArrayList tokens =
    QByteArray("< > & / = \" ' ; # ! ? - ] [ \t \r\n x : . 1 \xC2\xB7 é \xF0\x9F\x98\x80 "
               "</ /> <!-- --> -- <? ?> <![CDATA[ ]]> <a> </a> <a\tb='c'/> </ozml> \tx='1' "
               "&# &#x &#0; &#xD800; &#x1F600; &#1114112; &amp; &lt &foo; "
               "<?xml\t?> <?xml\tversion='1.0'?> <?xMl\tx?> xml \tstandalone=\"yes\" "
               "<!DOCTYPE\ta> <!DOCTYPE\ta\tPUBLIC\t'p'\t's'> PUBLIC SYSTEM\t's' "
               "\xC3 \xA9 \xC0\xAF \xED\xA0\x80 \xEF\xBF\xBE \xEF\xBF\xBD \xF4\x90\x80\x80 "
               "\x01 \x0B \x7F \xC2\x85 \xE2\x80\xA8 \xCD\xBE \xE0\xB9\x9C")
        .split(' ');

/// The text with a few changes, the same ones in every run.
QByteArray mutated(QByteArray text, std::mt19937 &engine)
{
    // The standard's own distributions differ from one library to the next.
    const auto random = [&](qsizetype below) {
        return static_cast<qsizetype>(engine() % static_cast<unsigned long>(below));
    };
    for (qsizetype changes = 1 + random(3); changes > 0; --changes) {
        const qsizetype place = random(text.size());
        switch (random(3)) {
        case 0:
            text.remove(place, random(12));
            break;
        case 1:
            text[place] = static_cast<char>(random(256));
            break;
        default:
            text.replace(place, random(3), tokens[random(tokens.size())]);
        }
    }
    return text;
}

Result<XmlOutline> checked(const QByteArray &text)
{
    return checkWellFormed({text.constData(), static_cast<std::size_t>(text.size())});
}

} // namespace

class ProjectDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mutations_areTakenOnlyWhereTheOtherParserTakesThem();
    void deepDocument_isRefused();
    void rewriting_keepsTheContent_data();
    void rewriting_keepsTheContent();
    void rewriting_writes_data();
    void rewriting_writes();
    void hostileDocument_costsLittle();
    void opening_whatIsNoDocument_isRefused();
    void value_isAllTextInAnElement();
    void changes_write_data();
    void changes_write();
};

void ProjectDocumentTest::mutations_areTakenOnlyWhereTheOtherParserTakesThem()
{
    constexpr int rounds = 20000;
    // Without an encoding, of which the other one knows more.
    const QByteArray original = everythingInOne().replace(" encoding=\"UTF-8\"", {});
    std::mt19937 engine(20120229);
    int accepted = 0;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray text = mutated(original, engine);
        if (!checked(text))
            continue;
        ++accepted;
        QVERIFY2(libxmlAccepts(text), text.constData());
    }
    // Neither verdict is rare, or little was tried.
    QVERIFY(accepted > rounds / 20 && accepted < rounds / 2);
}

void ProjectDocumentTest::deepDocument_isRefused()
{
    for (const int levels : {1024, 1025, 200000}) {
        const QByteArray text = "<a>"_ba.repeated(levels) + "</a>"_ba.repeated(levels);
        QCOMPARE(static_cast<bool>(checked(text)), levels <= 1024);
    }
}

void ProjectDocumentTest::rewriting_keepsTheContent_data()
{
    using Encoding = QStringConverter::Encoding;
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("everything") << everythingInOne();
    QTest::newRow("line ends of another system") << motionFile().replace('\n', "\r\n");
    QTest::newRow("a byte order mark") << "\xEF\xBB\xBF" + motionFile();
    QTest::newRow("UTF-16") << inUtf16(everythingInOne(), Encoding::Utf16BE, true);
    QTest::newRow("UTF-16 without a mark") << inUtf16(motionFile(), Encoding::Utf16LE, false);
    QTest::newRow("blanks that are references")
        << "<a b='&#13;&#10;&#9; x' c=\"&quot;'&lt;>\">&#13; x&#13;&#10;<![CDATA[\n\t]]></a>"_ba;
    QTest::newRow("text beside elements")
        << "<a>\n<b>]]&gt; <i>two</i> <i>three\n <u/> </i>\n</b>\n<c> \n\t</c><d><u/>x</d></a>"_ba;
    QTest::newRow("blanks beside CDATA") << "<a> <![CDATA[]]>\n<b/></a>"_ba;
    QTest::newRow("beyond all buffers") << "<a><b>" + "x<é/>"_ba.repeated(100000) + "</b></a>";
}

void ProjectDocumentTest::rewriting_keepsTheContent()
{
    QFETCH(QByteArray, file);
    const QByteArray once = rewritten(file);
    QVERIFY(libxmlAccepts(once));
    QCOMPARE(canonicalContent(once), canonicalContent(file));
    QCOMPARE(once.left(2), file.left(2)); // of a byte order mark, or of what is there without
    QCOMPARE(rewritten(once), once);
}

void ProjectDocumentTest::rewriting_writes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("written");
    const auto file = [](const QByteArray &encoding, const QByteArray &text) {
        return QByteArray("<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n<a>" + text +
                          "</a>\n");
    };
    QTest::newRow("Latin 1") << file("iso-8859-1", "\xE9\x80") << file("UTF-8", "é\xC2\x80");
    QTest::newRow("ASCII") << file("US-ASCII", "e") << file("UTF-8", "e");
    QTest::newRow("another name of UTF-8") << file("utf8", "é") << file("UTF-8", "é");
    QTest::newRow("UTF-8") << file("utf-8", "é") << file("utf-8", "é");
    QTest::newRow("lines")
        << "<?xml version='1.0'?><!-- x --><!DOCTYPE a PUBLIC \"p\" 's\"'>"
           "<a b='1'  c='2'><d><e> f </e>\n\n<g></g><h  /></d><b>x<c> <d/> </c></b> <e/></a>"_ba
        << "<?xml version='1.0'?>\n<!-- x -->\n<!DOCTYPE a PUBLIC \"p\" 's\"'>\n"
           "<a b=\"1\" c=\"2\">\n\t<d>\n\t\t<e> f </e>\n\t\t<g></g>\n\t\t<h/>\n\t</d>\n"
           "\t<b>x<c> <d/> </c></b>\n\t<e/>\n</a>\n"_ba;
}

void ProjectDocumentTest::rewriting_writes()
{
    QFETCH(QByteArray, file);
    QTEST(rewritten(file), "written");
}

void ProjectDocumentTest::hostileDocument_costsLittle()
{
    // Each value would be all of the text, and every line as long as its level.
    const QByteArray text(1000000, 'x');
    const TestHome home;
    const QString path = home.makeFile(u"x.motn"_s, "<theme>"_ba.repeated(1000) + text +
                                                        "</theme>"_ba.repeated(1000));
    const QStringList themes = nodeValues(openProjectDocument(path), {"theme"}).front();
    QCOMPARE(themes, QStringList{QString::fromLatin1(text)});
    const QByteArray deep =
        "<a>"_ba.repeated(1000) + "<b/>"_ba.repeated(1000) + "</a>"_ba.repeated(1000);
    QVERIFY(rewritten(deep).size() < 70 * deep.size());
}

void ProjectDocumentTest::opening_whatIsNoDocument_isRefused()
{
    const TestHome home;
    const QString fifo = home.path(u"x.motn"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QStringList paths = {fifo, home.makeFolder(u"y.motn"_s), u"/dev/zero"_s};
    const QByteArray external = "<!DOCTYPE a SYSTEM 'file:///etc/passwd'>";
    const QByteArrayList files = {
        QByteArray(),
        "<?xml version='1.0' encoding='windows-1252'?><a/>",
        "<?xml version='1.0' encoding='US-ASCII'?><a>é</a>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
        "\xEF\xBB\xBF\xEF\xBB\xBF<a/>",
        "\xEF\xBB\xBF" + inUtf16("<a/>", QStringConverter::Utf16LE, true),
        "\xEF\xBB\xBF" + inUtf16("<a/>", QStringConverter::Utf16LE, false),
        inUtf16("<a/>", QStringConverter::Utf16LE, true).chopped(1),
        inUtf16("<a/>", QStringConverter::Utf16BE, false) + "\n",
        inUtf16("<a>x</a>", QStringConverter::Utf16LE, true).replace("x\0"_ba, "\0\xD8"_ba),
        "<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/passwd'>]><a>&b;</a>",
        external + "<a>&b;</a>",
        external + "<a b='&lt;&b;'/>"};
    for (const QByteArray &file : files)
        paths << home.makeFile(QString::number(paths.size()), file);
    for (const QString &path : std::as_const(paths))
        QVERIFY2(!openProjectDocument(path), qPrintable(path));
}

void ProjectDocumentTest::value_isAllTextInAnElement()
{
    const TestHome home;
    const QString path =
        home.makeFile(u"x.motn"_s, "<b>x<a> <b>y</b><!-- z --><![CDATA[<]]>&amp;</a></b>");
    const auto values = nodeValues(openProjectDocument(path), {"a", "b", "c"});
    QCOMPARE(values[0], QStringList{u" y<&"_s});
    QCOMPARE(values[1], (QStringList{u"x y<&"_s, u"y"_s}));
    QVERIFY(values[2].isEmpty());
}

void ProjectDocumentTest::changes_write_data()
{
    using Change = std::function<void(ProjectDocument &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("content");
    const Change insert = [](auto &document) { std::ignore = insertTheme(document); };
    const Change set = [](auto &document) {
        const QString text = u"<b> & \"c\" ]]> 😀\r\n \u0001"_s + QChar(0xD83D) + QChar(0xFFFE);
        QCOMPARE(setTheme(document, text), 3);
    };
    const Change conform = [](auto &document) {
        conformFirstTriple(document, ConformedRate{u"25"_s, u"250"_s});
    };
    // Comments are counted, blanks are not.
    QTest::newRow("a theme as the fourth child")
        << insert << "<x>\n<a/>\n<!-- b -->\n<c> </c>\n<d/>\n</x>"_ba
        << "<ozml><a></a><!-- b --><c> </c><template><theme></theme></template><d></d></ozml>"_ba;
    QTest::newRow("none without a third") << insert << "<x><a/><b/></x>"_ba
                                          << "<x><a></a><b></b></x>"_ba;
    const QByteArray text = ">&lt;b&gt; &amp; \"c\" ]]&gt; 😀&#xD;\n </theme>";
    QTest::newRow("a theme replaces all content")
        << set << "<a><theme n='1'>x<b><theme>y</theme></b><!-- z --></theme><theme/></a>"_ba
        << QByteArray("<a><theme n=\"1\"" + text + "<theme" + text + "</a>");
    QTest::newRow("the first rate, duration and flag")
        << conform << "<a><duration/><duration>9</duration><frameRate/><NTSC/></a>"_ba
        << "<a><duration>250</duration><duration>9</duration><frameRate>25</frameRate>"
           "<NTSC>0</NTSC></a>"_ba;
    QTest::newRow("what stands in the rate goes")
        << conform << "<a><frameRate><duration/><NTSC/></frameRate></a>"_ba
        << "<a><frameRate>25</frameRate></a>"_ba;
    QTest::newRow("the duration goes with the first rate")
        << conform << "<a><frameRate><duration/></frameRate><frameRate/><NTSC/></a>"_ba
        << "<a><frameRate>25</frameRate><frameRate></frameRate><NTSC>0</NTSC></a>"_ba;
}

void ProjectDocumentTest::changes_write()
{
    QFETCH(std::function<void(ProjectDocument &)>, change);
    QFETCH(QByteArray, file);
    QTEST(canonicalContent(rewritten(file, change)), "content");
}

QTEST_GUILESS_MAIN(ProjectDocumentTest)

#include "ProjectDocumentTest.moc"
