#include "tests/support/ChangeTable.h"

#include <QAction>
#include <QPixmap>
#include <QTextBlock>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

class HelpBookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsFivePagesWithAPicture();
    void changes_data();
    void changes();
};

namespace {

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

void HelpBookTest::changes_data()
{
    ChangeTable::addRows(u"help/HelpBook.table"_s);
}

void HelpBookTest::changes()
{
    const TestHome home;
    ChangeTable::run(home);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, HelpBookTest>(argc, argv);
}

#include "HelpBookTest.moc"
