#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QAction>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QUrl>

#include <array>

using namespace Qt::StringLiterals;

/// Stands in for the desktop: every address that the program wants opened comes here.
class ShortcutsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void open(const QUrl &address) { m_opened << address.toString(QUrl::FullyEncoded); }

private Q_SLOTS:
    void init();
    void cleanup();
    void opensItsFolder_data();
    void opensItsFolder();
    void opensItsPage_data();
    void opensItsPage();

private:
    static constexpr std::array schemes{"file", "http", "https"};
    QStringList m_opened;
};

void ShortcutsTest::init()
{
    m_opened.clear();
    for (const char *scheme : schemes)
        QDesktopServices::setUrlHandler(QLatin1StringView(scheme), this, "open");
}

void ShortcutsTest::cleanup()
{
    for (const char *scheme : schemes)
        QDesktopServices::unsetUrlHandler(QLatin1StringView(scheme));
}

void ShortcutsTest::opensItsFolder_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("folder");
    const QString root = u"Movies/Motion Templates.localized/"_s;
    QTest::newRow("root") << u"openTemplatesRootFolder"_s << root;
    QTest::newRow("Compositions") << u"openCompositionsFolder"_s
                                  << root + u"Compositions.localized"_s;
    QTest::newRow("Effects") << u"openEffectsFolder"_s << root + u"Effects.localized/"_s;
    QTest::newRow("Generators") << u"openGeneratorsFolder"_s << root + u"Generators.localized/"_s;
    QTest::newRow("Titles") << u"openTitlesFolder"_s << root + u"Titles.localized"_s;
    QTest::newRow("Transitions") << u"openTransitionsFolder"_s << root + u"Transitions.localized"_s;
}

void ShortcutsTest::opensItsFolder()
{
    QFETCH(const QString, control);
    QFETCH(const QString, folder);
    const TestHome home;
    const RunningProgram program;
    auto *menuItem = program.find<QAction>(control + u"Item"_s);
    program.click(control);
    menuItem->trigger();
    QCOMPARE(m_opened, QStringList()); // it is not there yet

    home.makeFolder(folder);
    const auto before = home.snapshot();
    program.click(control);
    menuItem->trigger();
    const QString address =
        QString::fromLatin1(QUrl::fromLocalFile(home.path() + u'/' + folder).toEncoded());
    QCOMPARE(m_opened, QStringList({address, address}));
    QCOMPARE(home.changesSince(before), QStringList());
}

void ShortcutsTest::opensItsPage_data()
{
    // The host and the button are the builder's.
    QTest::addColumn<QString>("menuItem");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("help") << u"runHelpWebView"_s
                          << u"http://[^/]+/Brimvale/help/Brimvale-help\\.html"_s;
    QTest::newRow("donation") << u"linkToPayPal"_s
                              << u"https://[^/]+/cgi-bin/webscr"
                                 "\\?cmd=_s-xclick&hosted_button_id=\\w+"_s;
}

void ShortcutsTest::opensItsPage()
{
    QFETCH(const QString, menuItem);
    QFETCH(const QString, pattern);
    const TestHome home;
    const RunningProgram program;
    program.find<QAction>(menuItem)->trigger();
    QCOMPARE(m_opened.size(), 1);
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    QVERIFY2(whole.match(m_opened.at(0)).hasMatch(), qUtf8Printable(m_opened.at(0)));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, ShortcutsTest>(argc, argv);
}

#include "ShortcutsTest.moc"
