#include "ChildProcess.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

ChildResult runChild(const QString &role, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{u"--child"_s, role} + arguments);
    ChildResult result;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    return result;
}
