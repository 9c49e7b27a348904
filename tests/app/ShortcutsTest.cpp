#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QAction>
#include <QDesktopServices>
#include <QUrl>

using namespace Qt::StringLiterals;

/// Stands in for the desktop: every address that the program wants opened comes here.
class ShortcutsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void open(const QUrl &address) { m_opened << address.toString(); }

private Q_SLOTS:
    void initTestCase();
    void opensItsFolder();
    void opensItsPages();

private:
    QStringList m_opened;
};

void ShortcutsTest::initTestCase()
{
    for (const QString &scheme : {u"file"_s, u"http"_s, u"https"_s})
        QDesktopServices::setUrlHandler(scheme, this, "open");
}

void ShortcutsTest::opensItsFolder()
{
    const TestHome home;
    const RunningProgram program;
    const QString root = u"Movies/Motion Templates.localized/"_s;
    const QList<std::pair<QString, QString>> folders = {
        {u"TemplatesRoot"_s, root},
        {u"Compositions"_s, root + u"Compositions.localized"_s},
        {u"Effects"_s, root + u"Effects.localized/"_s},
        {u"Generators"_s, root + u"Generators.localized/"_s},
        {u"Titles"_s, root + u"Titles.localized"_s},
        {u"Transitions"_s, root + u"Transitions.localized"_s}};
    for (const auto &[name, folder] : folders) {
        m_opened.clear();
        const QString button = u"open"_s + name + u"Folder"_s;
        program.click(button);
        QCOMPARE(m_opened, QStringList()); // it is not there yet
        const QString address = u"file://"_s + home.makeFolder(folder);
        program.click(button);
        program.find<QAction>(button + u"Item"_s)->trigger();
        QCOMPARE(m_opened, QStringList({address, address}));
    }
}

void ShortcutsTest::opensItsPages()
{
    const TestHome home;
    const RunningProgram program;
    m_opened.clear();
    program.find<QAction>(u"runHelpWebView"_s)->trigger();
    program.find<QAction>(u"linkToPayPal"_s)->trigger();
    QCOMPARE(m_opened.size(), 2);
    QVERIFY(m_opened.at(0).startsWith(u"http://"_s));
    QVERIFY(m_opened.at(0).endsWith(u"/Brimvale/help/Brimvale-help.html"_s));
    QVERIFY(m_opened.at(1).startsWith(u"https://"_s));
    QVERIFY(m_opened.at(1).contains(u"/cgi-bin/webscr?cmd=_s-xclick&hosted_button_id="_s));
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, ShortcutsTest>(argc, argv);
}

#include "ShortcutsTest.moc"
