#include "BrimvaleAppDelegate.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    qSetMessagePattern(u"%{message}"_s);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Brimvale"_s);
    QApplication::setApplicationVersion(QStringLiteral(BRIMVALE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral(BRIMVALE_APPLICATION_ID));

    BrimvaleAppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
