#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

using namespace Qt::StringLiterals;

/// Stands in for the desktop: every folder that the program wants opened comes here.
class ShortcutsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void open(const QUrl &address) { m_opened << QDir::cleanPath(address.toLocalFile()); }

private Q_SLOTS:
    void opensItsFolder();

private:
    QStringList m_opened;
};

void ShortcutsTest::opensItsFolder()
{
    QDesktopServices::setUrlHandler(u"file"_s, this, "open");
    const TestHome home;
    const RunningProgram program;
    for (const QString &name :
         {u"Compositions"_s, u"Effects"_s, u"Generators"_s, u"Titles"_s, u"Transitions"_s}) {
        m_opened.clear();
        const QString button = u"open"_s + name + u"Folder"_s;
        program.click(button);
        QCOMPARE(m_opened, QStringList()); // it is not there yet
        const QString folder =
            home.makeFolder(u"Movies/Motion Templates.localized/"_s + name + u".localized"_s);
        program.click(button);
        program.find<QAction>(button + u"Item"_s)->trigger();
        QCOMPARE(m_opened, QStringList({folder, folder}));
    }
    QDesktopServices::unsetUrlHandler(u"file"_s);
}

int main(int argc, char *argv[])
{
    return runTest<QApplication, ShortcutsTest>(argc, argv);
}

#include "ShortcutsTest.moc"
