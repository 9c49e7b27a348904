#include "SettingsLock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>

SettingsLock::SettingsLock(const QString &folder)
    : m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    const QDeadlineTimer patience(1000);
    while (m_folder && ::flock(m_folder.get(), LOCK_EX | LOCK_NB) != 0 &&
           (errno == EWOULDBLOCK || errno == EINTR) && !patience.hasExpired())
        QThread::msleep(2);
}
