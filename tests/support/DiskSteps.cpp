#include "DiskSteps.h"

#include <QFile>
#include <QUrl>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

void prepare(const TestHome &home, const QStringList &step)
{
    const QString verb = step[0];
    const QString value = step.value(2);
    const std::string name = home.path(step[1]).toStdString();
    const char *path = name.c_str();
    int error = 0;
    if (verb == u"file")
        home.makeFile(step[1], (step.size() > 2 ? value : step[1]).toUtf8());
    else if (verb == u"folder")
        home.makeFolder(step[1]);
    else if (verb == u"link")
        error = ::symlink(qPrintable(value), path);
    else if (verb == u"twin")
        error = ::link(qPrintable(home.path(value)), path);
    else if (verb == u"size")
        error = ::truncate(path, value.toLongLong());
    else if (verb == u"mode")
        error = ::chmod(path, value.toUInt(nullptr, 8));
    else if (verb == u"owner")
        error = ::chown(path, value.toUInt(), value.toUInt());
    else if (verb == u"lock") // for as long as this process lives
        error = ::flock(::open(path, O_RDONLY | O_CLOEXEC), LOCK_SH);
    else if (verb == u"env")
        qputenv(qPrintable(step[1]), value.toUtf8());
    else if (verb == u"old") {
        const timespec then = {std::time(nullptr) - value.toInt() * 3600, 0};
        const timespec times[] = {then, then};
        error = ::utimensat(AT_FDCWD, path, times, AT_SYMLINK_NOFOLLOW);
    } else
        QFAIL(qPrintable(u"no such step: "_s + verb));
    QCOMPARE(error, 0);
}

} // namespace

QStringList words(const QByteArray &step)
{
    QStringList words;
    for (const QByteArray &word : step.trimmed().split(' '))
        words << (word == "\"\"" ? QString() : QUrl::fromPercentEncoding(word));
    return words;
}

void prepareDisk(const TestHome &home, const QByteArray &steps)
{
    for (const QByteArray &step : steps.split(','))
        prepare(home, words(step));
}
