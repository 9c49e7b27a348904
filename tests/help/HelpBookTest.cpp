#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QAction>
#include <QPixmap>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

class HelpBookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsFivePagesWithAPicture();
};

void HelpBookTest::endsFivePagesWithAPicture()
{
    const TestHome home;
    const RunningProgram program;
    program.find<QAction>(u"runHelpBook"_s)->trigger();
    const auto *first = program.find<QTextBrowser>(u"textView"_s)->document();
    QVERIFY(!first->toRawText().contains(QChar::ObjectReplacementCharacter));
    for (int n = 1; n <= 5; ++n) {
        auto *browser = program.find<QTextBrowser>(u"textView%1"_s.arg(n + 1));
        QTest::keyClick(browser, Qt::Key_Tab); // to the link that shows the picture
        QTest::keyClick(browser, Qt::Key_Return);
        QTextDocument *page = browser->document();
        const QString text = page->toRawText();
        QCOMPARE(text.indexOf(QChar::ObjectReplacementCharacter), text.size() - 1);
        QTextCursor end(page);
        end.movePosition(QTextCursor::End);
        const QString picture = end.charFormat().toImageFormat().name();
        QCOMPARE(picture, u":/bv_%1.png"_s.arg(n));
        QVERIFY(!QPixmap(picture).isNull());
    }
}

QTEST_MAIN(HelpBookTest)

#include "HelpBookTest.moc"
