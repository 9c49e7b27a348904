#include "BrimvaleAppDelegate.h"

#include <QApplication>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    qSetMessagePattern(u"%{message}"_s);
    // A template's picture may be broken: the card shows that, and the log is about other things.
    QLoggingCategory::setFilterRules(u"qt.gui.imageio.warning=false"_s);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Brimvale"_s);
    QApplication::setApplicationVersion(QStringLiteral(BRIMVALE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral(BRIMVALE_APPLICATION_ID));

    BrimvaleAppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
