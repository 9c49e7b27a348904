#include "FileTree_p.h"

#include <QFile>

#include <fcntl.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace FileTree::Native {

Outcome trash(const Place &item, const QString &folder)
{
    const QString path = folder + u'/' + QFile::decodeName(item.name);
    QString inTrash;
    const bool moved = QFile::moveToTrash(path, &inTrash);
    // Held against the disk: the answer alone is not enough.
    struct stat status = {};
    const bool isGone =
        ::fstatat(item.folder, item.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
        errno == ENOENT;
    if (!moved || !isGone)
        return Failure{u"cannot trash "_s + path};
    if (::lstat(QFile::encodeName(inTrash).constData(), &status) != 0)
        return Failure{u"trashed, but cannot be found in the trash: "_s + path};
    return {};
}

} // namespace FileTree::Native
