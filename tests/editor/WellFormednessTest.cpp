#include "editor/WellFormedness.h"

#include "ConformingParsers.h"
#include "MotionFixtures.h"
#include "editor/XmlEncoding.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRegularExpression>

#include <random>

using namespace Qt::StringLiterals;

namespace {

const QList<QByteArray> tokens = {"<",
                                  ">",
                                  "&",
                                  "/",
                                  "=",
                                  "\"",
                                  "'",
                                  ";",
                                  "#",
                                  "!",
                                  "?",
                                  "-",
                                  "]",
                                  "[",
                                  " ",
                                  "\t",
                                  "\r\n",
                                  "x",
                                  ":",
                                  ".",
                                  "1",
                                  "\xC2\xB7",
                                  "é",
                                  "\xF0\x9F\x98\x80",
                                  "</",
                                  "/>",
                                  "<!--",
                                  "-->",
                                  "--",
                                  "<?",
                                  "?>",
                                  "<![CDATA[",
                                  "]]>",
                                  "&#",
                                  "&#x",
                                  "&#0;",
                                  "&#xD800;",
                                  "&#x1F600;",
                                  "&#1114112;",
                                  "&amp;",
                                  "&lt",
                                  "&foo;",
                                  "<a>",
                                  "</a>",
                                  "<a b='c'/>",
                                  "</ozml>",
                                  " x='1'",
                                  " x=\"1\"",
                                  "<?xml ?>",
                                  "<?xml version='1.0'?>",
                                  "<?xMl x?>",
                                  "<!DOCTYPE a>",
                                  "<!DOCTYPE a PUBLIC 'p' 's'>",
                                  "xml",
                                  "PUBLIC",
                                  "SYSTEM 's'",
                                  " standalone=\"yes\"",
                                  "version='1.0'",
                                  "\xC3",
                                  "\xA9",
                                  "\xC0\xAF",
                                  "\xED\xA0\x80",
                                  "\xEF\xBF\xBE",
                                  "\xEF\xBF\xBD",
                                  "\xEF\xBB\xBF",
                                  "\xF4\x90\x80\x80",
                                  "\x01",
                                  "\x0B",
                                  "\x7F",
                                  "\xC2\x85",
                                  "\xE2\x80\xA8",
                                  "\xCD\xBE",
                                  "\xE0\xB9\x9C",
                                  QByteArray(1, '\0')};

/// Documents that differ from the original in a few places, the same ones in every run.
class Mutations
{
public:
    explicit Mutations(QByteArray original) : m_original(std::move(original)) {}

    QByteArray next()
    {
        QByteArray text = m_original;
        for (qsizetype changes = 1 + random(3); changes > 0; --changes)
            change(text);
        return text;
    }

private:
    void change(QByteArray &text)
    {
        const qsizetype place = random(text.size());
        const qsizetype length = std::min(random(12), text.size() - place);
        switch (random(5)) {
        case 0:
            text.remove(place, length);
            break;
        case 1:
            text.insert(random(text.size()), text.mid(place, length));
            break;
        case 2:
            text[place] = static_cast<char>(random(256));
            break;
        case 3:
            text.replace(place, random(3), tokens[random(tokens.size())]);
            break;
        default:
            text.insert(place, tokens[random(tokens.size())]);
        }
    }

    qsizetype random(qsizetype below)
    {
        // The standard's own distributions differ from one library to the next.
        return static_cast<qsizetype>(m_engine() %
                                      static_cast<unsigned long>(std::max<qsizetype>(below, 1)));
    }

    QByteArray m_original;
    std::mt19937 m_engine{20120229};
};

Result<XmlOutline> check(const QByteArray &text)
{
    return checkWellFormed({text.constData(), static_cast<std::size_t>(text.size())});
}

QByteArray manyAttributes(int count)
{
    QByteArray attributes;
    for (int index = 0; index < count; ++index)
        attributes += " a" + QByteArray::number(index) + "=''";
    return attributes;
}

/// What is refused here though others accept it, on purpose.
bool isRefusedOnPurpose(const QByteArray &text, const QString &reason)
{
    return reason.contains("internal subset"_L1) || reason.contains("levels"_L1) ||
           (reason.contains("entity"_L1) && text.contains("<!DOCTYPE"));
}

bool isInAnotherEncoding(const QByteArray &text)
{
    if (XmlEncoding::of(text).byteOrderMark)
        return true;
    static const QRegularExpression declared(u"^<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']*)"_s);
    const auto match = declared.match(QString::fromLatin1(text));
    return match.hasMatch() && match.captured(1).compare("utf-8"_L1, Qt::CaseInsensitive) != 0;
}

} // namespace

class WellFormednessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void document_isToldFromWhatIsNone_data();
    void document_isToldFromWhatIsNone();
    void mutations_areJudgedAsOtherParsersDo();
    void mixedContent_isReported_data();
    void mixedContent_isReported();
    void hugeDocument_isCheckedAtOnce_data();
    void hugeDocument_isCheckedAtOnce();
};

void WellFormednessTest::document_isToldFromWhatIsNone_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("good");
    const auto good = [](const char *name, const QByteArray &text) {
        QTest::newRow(name) << text << true;
    };
    const auto bad = [](const char *name, const QByteArray &text) {
        QTest::newRow(name) << text << false;
    };
    good("everything", everythingInOne());
    good("names of other scripts", "<größe·1 日本='1'/>");
    good("every kind of quote", R"(<a b='"' c="'">'"</a>)");
    good("the last characters of each range", "<a>&#x10FFFF;\xEF\xBF\xBD\xED\x9F\xBF\t\r\n</a>");
    good("an end of data that is none", "<a>]] ]&gt; ]]&gt;<![CDATA[]]]]></a>");
    bad("nothing", "");
    bad("a text", "Motion");
    bad("two roots", "<a/><b/>");
    bad("text behind the root", "<a/>b");
    bad("an element that does not end", "<a><b></b>");
    bad("elements that cross", "<a><b></a></b>");
    bad("an attribute twice", "<a b='1' c='2' b='1'/>");
    bad("an attribute twice among many", QByteArray("<a" + manyAttributes(40) + " a7=''/>"));
    bad("an attribute without quotes", "<a b=1/>");
    bad("attributes without a blank", "<a b='1'c='2'/>");
    bad("markup in an attribute", "<a b='<'/>");
    bad("an entity that is not defined", "<a>&nbsp;</a>");
    bad("an entity that is not defined, in an attribute", "<a b='&nbsp;'/>");
    bad("a lone ampersand", "<a>Bench & Co</a>");
    bad("a reference to no character", "<a>&#0;</a>");
    bad("a reference to half a character", "<a>&#xD800;</a>");
    bad("a reference beyond all characters", "<a>&#x100000041;</a>");
    bad("an end of data in a text", "<a>]]></a>");
    bad("a control character", "<a>\x01</a>");
    bad("a zero byte", QByteArray("<a>\0</a>", 8));
    bad("a zero byte at the end", QByteArray("<a/>\0", 5));
    bad("broken UTF-8", "<a>\xC3</a>");
    bad("overlong UTF-8", "<a>\xC0\xAF</a>");
    bad("overlong UTF-8 in a name", "<a\xC0\xAF/>");
    bad("a surrogate in UTF-8", "<a>\xED\xA0\x80</a>");
    bad("a name that is none", "<1a/>");
    bad("a name with a pictogram", "<a\xF0\x9F\x98\x80/>");
    bad("two hyphens in a comment", "<a><!-- -- --></a>");
    bad("a comment that ends with three hyphens", "<a><!-- ---></a>");
    bad("a declaration that is not at the start", " <?xml version='1.0'?><a/>");
    bad("a declaration without a version", "<?xml encoding='UTF-8'?><a/>");
    bad("a reserved target", "<a><?XML x?></a>");
    bad("a document type behind the root", "<a/><!DOCTYPE a>");
    bad("two document types", "<!DOCTYPE a><!DOCTYPE a><a/>");
}

void WellFormednessTest::document_isToldFromWhatIsNone()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, good);
    QCOMPARE(static_cast<bool>(check(text)), good);
    QCOMPARE(expatAccepts(text) && libxml2Accepts(text), good);
}

void WellFormednessTest::mutations_areJudgedAsOtherParsersDo()
{
    constexpr int rounds = 20000;
    Mutations mutations(everythingInOne());
    int accepted = 0;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray text = mutations.next();
        if (isInAnotherEncoding(text))
            continue;
        const Result<XmlOutline> outline = check(text);
        const bool good = expatAccepts(text) && libxml2Accepts(text);
        if (static_cast<bool>(outline) != good && !isRefusedOnPurpose(text, outline.reason()))
            QFAIL(QByteArray("judged \"" + outline.reason().toUtf8() + "\": " + text).constData());
        accepted += outline ? 1 : 0;
    }
    // Neither verdict is rare, or little was tried.
    QVERIFY(accepted > rounds / 20 && accepted < rounds / 2);
}

void WellFormednessTest::mixedContent_isReported_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("mixed");
    QTest::newRow("blanks between elements") << "<a>\n<b> </b>\n<!-- --><c>x</c> </a>"_ba << false;
    QTest::newRow("text before an element") << "<a>x<b/></a>"_ba << true;
    QTest::newRow("text behind an element") << "<a><b/>\n x</a>"_ba << true;
    QTest::newRow("a reference beside a comment") << "<a><b><!-- --> &#32;</b></a>"_ba << true;
    QTest::newRow("a section") << "<a> <![CDATA[]]></a>"_ba << true;
}

void WellFormednessTest::mixedContent_isReported()
{
    QFETCH(QByteArray, text);
    const Result<XmlOutline> outline = check(text);
    QVERIFY(outline);
    QTEST(outline->mixedContent, "mixed");
}

void WellFormednessTest::hugeDocument_isCheckedAtOnce_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("good");
    const auto nested = [](int levels) {
        return QByteArray("<a>"_ba.repeated(levels) + "</a>"_ba.repeated(levels));
    };
    QTest::newRow("as deep as may be") << nested(1024) << true;
    QTest::newRow("deeper") << nested(1025) << false;
    QTest::newRow("200,000 levels") << nested(200000) << false;
    QTest::newRow("deeper by an empty element")
        << nested(1024).replace("<a></a>", "<a><a/></a>") << false;
    QTest::newRow("a million attributes") << "<a" + manyAttributes(1000000) + "/>" << true;
}

void WellFormednessTest::hugeDocument_isCheckedAtOnce()
{
    QFETCH(QByteArray, text);
    QElapsedTimer timer;
    timer.start();
    const Result<XmlOutline> outline = check(text);
    QVERIFY(timer.elapsed() < 10000);
    QTEST(static_cast<bool>(outline), "good");
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, WellFormednessTest>(argc, argv);
}

#include "WellFormednessTest.moc"
