#include "tests/support/LogLines.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"
#include "widgets/SegmentedControl.h"

#include <QAction>
#include <QPixmap>
#include <QStackedWidget>
#include <QTextBlock>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

class HelpBookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsFivePagesWithAPicture();
    void navigates();
};

namespace {

int page(const RunningProgram &program)
{
    return program.find<QStackedWidget>(u"tabView"_s)->currentIndex();
}

void press(const RunningProgram &program, int segment)
{
    QTest::mouseClick(program.find<SegmentedControl>(u"modeSegController"_s)->button(segment),
                      Qt::LeftButton);
}

/// Where each picture of a page stands, counted from its end, and which it is.
QList<std::pair<int, QString>> pictures(const QTextDocument &document)
{
    QList<std::pair<int, QString>> found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); part != block.end(); ++part) {
            const QTextFragment fragment = part.fragment();
            if (fragment.charFormat().isImageFormat()) {
                // The document's own last character is the end of its last block.
                const int end = fragment.position() + fragment.length() + 1;
                found.emplaceBack(document.characterCount() - end,
                                  fragment.charFormat().toImageFormat().name());
            }
        }
    }
    return found;
}

} // namespace

void HelpBookTest::endsFivePagesWithAPicture()
{
    const TestHome home;
    const RunningProgram program;
    program.find<QAction>(u"runHelpBook"_s)->trigger();
    const auto picturesOf = [&](const QString &view) {
        return pictures(*program.find<QTextBrowser>(view)->document());
    };
    QVERIFY(picturesOf(u"textView"_s).isEmpty());
    for (int n = 1; n <= 5; ++n) {
        const auto found = picturesOf(u"textView%1"_s.arg(n + 1));
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().first, 0);
        QCOMPARE(found.first().second, u":/bv_%1.png"_s.arg(n));
        QVERIFY(!QPixmap(found.first().second).isNull());
    }
}

void HelpBookTest::navigates()
{
    const TestHome home;
    const RunningProgram program;
    const LogLines log;
    program.find<QAction>(u"runHelpBook"_s)->trigger();
    press(program, 0);
    QCOMPARE(page(program), 0);
    QCOMPARE(log.take(), QStringList{u"controlOne selected."_s});
    const QStringList buttons = {u"navigateHOME"_s, u"pageA"_s, u"pageB"_s,
                                 u"pageC"_s,        u"pageD"_s, u"pageE"_s};
    for (int index = 0; index < buttons.size(); ++index) {
        program.click(buttons.at(index));
        QCOMPARE(page(program), index);
        press(program, 1);
        QCOMPARE(page(program), qMin(index + 1, 5));
    }
    QCOMPARE(log.take(), QStringList(6, u"controlTwo selected."_s));
    press(program, 0);
    press(program, 0);
    QCOMPARE(page(program), 3);
    program.click(u"navigateHOME"_s);
    QCOMPARE(page(program), 0);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, HelpBookTest>(argc, argv);
}

#include "HelpBookTest.moc"
