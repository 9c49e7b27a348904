#include "BrimvaleAppDelegate.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    qSetMessagePattern(u"%{message}"_s);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Brimvale"_s);
    QApplication::setApplicationVersion(QStringLiteral(BRIMVALE_VERSION));
    QApplication::setDesktopFileName(u"brimvale"_s);

    BrimvaleAppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
