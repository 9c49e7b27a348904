#include "DocumentTrial.h"
#include "SecondParser.h"
#include "motion/InspectionValues.h"
#include "motion/NumberText.h"
#include "motion/ProjectChanges.h"
#include "motion/WellFormedness.h"
#include "tests/support/TableRows.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>
#include <QDirIterator>

#include <sys/stat.h>

#include <clocale>
#include <random>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral(BRIMVALE_TESTS_FOLDER "/fuzz/");

/// What the file holds after it was opened, changed and saved.
QByteArray rewritten(const QByteArray &file,
                     const std::function<void(ProjectDocument &)> &change = {})
{
    const TestHome home;
    const QString path = home.makeFile(u"x.motn"_s, file);
    Result<ProjectDocument> document = openProjectDocument(path);
    if (document && change)
        change(*document);
    return document && saveProjectDocument(*document, path) ? home.read(u"x.motn"_s) : "refused";
}

QByteArray changed(const QByteArray &verb, const QByteArray &file)
{
    bool isMore = false;
    const QByteArray content = canonicalContent(rewritten(file, [&](ProjectDocument &document) {
        if (verb == "insert")
            std::ignore = insertTheme(document);
        else if (verb == "conform")
            isMore = conformFirstTriple(document, ConformedRate{u"25"_s, u"250"_s}).moreTriples;
        else // with what XML cannot hold
            std::ignore = setTheme(document, u"<b> & \"c\" ]]> 😀\r\n \u0001"_s + QChar(0xD83D) +
                                                 QChar(0xFFFE));
    }));
    return isMore ? content + " and more" : content;
}

/// The same as the file when what was written is the same document and begins with the same mark.
QByteArray kept(const QByteArray &file)
{
    const QByteArray once = rewritten(file);
    const bool isSame = libxmlAccepts(once) && canonicalContent(once) == canonicalContent(file);
    return isSame && once.left(2) == file.left(2) ? file : once;
}

QByteArray values(const QByteArray &file, std::initializer_list<std::string_view> names)
{
    const TestHome home;
    QStringList lists;
    for (const QStringList &list :
         nodeValues(openProjectDocument(home.makeFile(u"x.motn"_s, file)), names))
        lists << list.join(u',');
    return lists.join(u';').toUtf8();
}

/// What a row's last cell foretells.
QByteArray result(const QByteArray &verb, const QByteArray &first, const QByteArray &second)
{
    const QString text = QString::fromUtf8(first);
    if (verb == "kept")
        return kept(first);
    if (verb == "written")
        return rewritten(first);
    if (verb == "size")
        return rewritten(first).size() < 70 * first.size() ? "small" : "large";
    if (verb == "themes")
        return values(first, {"theme"});
    if (verb == "values")
        return values(first, {"a", "b", "c"});
    if (verb == "number")
        return QByteArray::number(double(leadingNumber(text)));
    if (verb == "seconds")
        return secondsText(text, QString::fromUtf8(second)).toUtf8();
    if (verb == "aspect")
        return pixelAspectRatioLabel(text).toUtf8();
    if (verb != "rate")
        return changed(verb, first);
    const auto rate = conformedRate(text.section(u' ', 0, 0).toInt(), text.section(u' ', 1));
    return rate ? (rate->frameRate + u' ' + rate->frames).toUtf8() : "none";
}

/// The text with a few changes, the same ones in every run.
QByteArray mutated(QByteArray text, const QByteArrayList &tokens, std::mt19937 &engine)
{
    // The standard's own distributions differ from one library to the next.
    const auto random = [&](qsizetype below) {
        return static_cast<qsizetype>(engine() % static_cast<unsigned long>(below));
    };
    for (qsizetype changes = 1 + random(3); changes > 0; --changes) {
        const QByteArray put =
            random(3) == 0 ? QByteArray(1, char(random(256))) : tokens[random(tokens.size())];
        text.replace(random(text.size()), random(8), put);
    }
    return text;
}

} // namespace

class ProjectDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data();
    void rows();
    void mutations_areTakenOnlyWhereTheOtherParserTakesThem();
    void whatIsNoFile_isRefused();
};

void ProjectDocumentTest::rows_data()
{
    // Where there is one with a decimal comma, it must not matter.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    addTableRows({u"motion/Document.table"_s});
    for (QDirIterator seed(folder + u"seeds"_s, QDir::Files); seed.hasNext();) {
        const QByteArray file = readWholeFile(seed.next())->content;
        QTest::newRow(qPrintable(seed.fileName())) << QByteArrayList{"kept", file, file};
    }
}

void ProjectDocumentTest::rows()
{
    QFETCH(const QByteArrayList, row);
    QCOMPARE(result(row[0], row[1], row.value(2)), row.last());
    QCOMPARE(problemWith(row[1]), nullptr);
}

void ProjectDocumentTest::mutations_areTakenOnlyWhereTheOtherParserTakesThem()
{
    constexpr int rounds = 20000;
    QByteArrayList tokens;
    QByteArray dictionary = readWholeFile(folder + u"xml.dict")->content;
    for (const QByteArray &line : dictionary.trimmed().replace("\\x", "%").split('\n'))
        tokens << QByteArray::fromPercentEncoding(line.sliced(1).chopped(1));
    const QByteArray original = readWholeFile(folder + u"seeds/everything.motn")->content;
    std::mt19937 engine(20120229);
    int accepted = 0;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray text = mutated(original, tokens, engine);
        if (!checkWellFormed({text.constData(), static_cast<std::size_t>(text.size())}))
            continue;
        QVERIFY2(libxmlAccepts(text), text.constData());
        if (++accepted % 50 == 0)
            QCOMPARE(problemWith(text), nullptr);
    }
    // Neither verdict is rare, or little was tried.
    QVERIFY(accepted > rounds / 20 && accepted < rounds / 2);
}

void ProjectDocumentTest::whatIsNoFile_isRefused()
{
    const TestHome home;
    const QString fifo = home.path(u"fifo"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    for (const QString &path : {fifo, home.path(), u"/dev/zero"_s})
        QVERIFY2(!openProjectDocument(path), qPrintable(path));
}

QTEST_GUILESS_MAIN(ProjectDocumentTest)

#include "ProjectDocumentTest.moc"
