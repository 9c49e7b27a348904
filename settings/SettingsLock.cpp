#include "SettingsLock.h"

#include "platform/Leftovers.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>

#include <tuple>

SettingsLock::SettingsLock(const QString &folder)
    : m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_folder)
        std::ignore = FileTree::removeOldPartials(m_folder.get()); // it takes a lock of its own
    const QDeadlineTimer patience(1000);
    while (m_folder && ::flock(m_folder.get(), LOCK_EX | LOCK_NB) != 0 &&
           (errno == EWOULDBLOCK || errno == EINTR) && !patience.hasExpired())
        QThread::msleep(2);
}
