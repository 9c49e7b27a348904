#include "tests/support/LibraryHome.h"
#include "tests/support/RunningProgram.h"

#include <QImage>
#include <QLabel>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

class InstallCardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatIsInHand();
    void leadsToTheLibrary();
    void showsThePicture();
};

namespace {

QString told(const RunningProgram &program)
{
    QStringList parts;
    if (program.find<QStackedWidget>(u"cardPages"_s)->currentIndex() == 0) {
        parts = {program.text(u"installHintTitle"_s), program.text(u"installHintText"_s)};
    } else {
        for (const char *part : {"cardName", "cardFacts", "cardPlace", "cardWarnings"})
            parts << program.text(QLatin1StringView(part)).split(u'\n');
        if (program.isShown(u"libraryButton"_s))
            parts << program.text(u"libraryButton"_s);
    }
    return parts.join(u'|');
}

const QString invitation =
    u"Drop a template folder here|It moves into Motion's library, into the category on the right."_s;

} // namespace

void InstallCardTest::tellsWhatIsInHand()
{
    const LibraryHome home;
    home.makeFile(u"Desktop/Old/Old.moef"_s);
    home.makeFile(u"Desktop/Old/Old.motn"_s);
    const RunningProgram program;
    QTRY_COMPARE(told(program), invitation);
    const QString facts = u"Old|1 Effect, 1 Composition or Generator, 14 bytes|"_s;
    const QString replaces = u"|Replaces the installed one; the old one goes to the Trash."_s;
    program.chooseTitle(home.path(u"Desktop/Old"_s));
    const QString otherKind = u"|It holds .moef, .motn files; Titles are .moti files."_s;
    QTRY_COMPARE(told(program), QString(facts + u"Titles" + replaces + otherKind));
    program.click(u"effectsChoice"_s);
    QTRY_COMPARE(told(program), QString(facts + u"Effects" + replaces));

    program.click(u"mNewCatButton"_s);
    QTRY_COMPARE(program.text(u"catWarnings"_s), replaces.mid(1));
    program.type(u"textField"_s, u"New"_s);
    QTRY_COMPARE(told(program), QString(facts + u"Effects › New|"));
    QCOMPARE(program.text(u"catWarnings"_s), QString());
    program.click(u"generateCustomFolder"_s);
    QTRY_COMPARE(told(program), u"Old is installed|You find it in Effects › New."_s);

    const QString typed = u"|A typed path must be dropped or chosen to be installed."_s;
    program.type(u"input"_s, u"~/Gone"_s);
    QTRY_COMPARE(told(program), u"Gone||Effects|There is no folder at this path."_s + typed);
    program.type(u"input"_s, u"~/Desktop/Glow/Glow.moti"_s);
    QTRY_COMPARE(told(program),
                 u"Glow.moti||Effects|This is a file; a template is a folder."_s + typed);
    program.type(u"input"_s, QString());
    QTRY_COMPARE(told(program), invitation);

    // An install that fails is not claimed.
    program.chooseTitle(home.path(u"Desktop/Gone"_s));
    QTRY_VERIFY(told(program).startsWith(u"Gone|"));
    program.install();
    QTRY_COMPARE(told(program), invitation);
}

void InstallCardTest::leadsToTheLibrary()
{
    const TestHome home;
    const RunningProgram program;
    program.chooseTitle(home.makeFolder(u"Glow"_s));
    QTRY_COMPARE(told(program), u"Glow|No Motion file, 0 bytes|Titles|Motion's library is not "
                                "there yet.|Create It…"_s);
    program.click(u"libraryButton"_s);
    auto *backup = program.find<QWidget>(u"prefWindow"_s);
    QTRY_VERIFY(backup->isActiveWindow());
    home.makeFolder(LibraryHome::titles());
    home.makeFile(u"Glow/Glow.moti"_s);
    backup->close();
    program.find<QWidget>(u"mWindow"_s)->activateWindow();
    QTRY_COMPARE(told(program), u"Glow|1 Title, 7 bytes|Titles|"_s);
}

/// Drawn smaller; but nothing of a picture that is huge, though its file is small.
void InstallCardTest::showsThePicture()
{
    const auto shown = [](const QSize &large) {
        const LibraryHome home;
        home.makeFile(u"Desktop/Glow/small.png"_s, "\x89PNG\r\n");
        QImage picture(large, QImage::Format_Mono);
        picture.fill(0);
        if (!large.isEmpty() && !picture.save(home.path(u"Desktop/Glow/large.png"_s)))
            qFatal("cannot make a picture for the test");
        const RunningProgram program;
        program.chooseTitle(home.path(u"Desktop/Glow"_s));
        if (!QTest::qWaitFor([&] { return told(program).contains(u"1 Title"); }))
            qFatal("the card tells nothing");
        return program.find<QLabel>(u"cardPicture"_s)->pixmap(Qt::ReturnByValue).size();
    };
    const QSize icon = shown({}); // stands in for a broken one
    QCOMPARE(icon.width(), icon.height());
    const QSize smaller = shown({2000, 1000});
    QCOMPARE(smaller.width(), 2 * smaller.height());
    QVERIFY(smaller.width() < 300);
    QCOMPARE(shown({30000, 3000}), icon);
}

QTEST_MAIN(InstallCardTest)

#include "InstallCardTest.moc"
