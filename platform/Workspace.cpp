#include "Workspace.h"

#include "FileTree.h"
#include "Path.h"

#include <QDesktopServices>

bool openAddress(const QUrl &address)
{
    return QDesktopServices::openUrl(address);
}

bool openFolder(const QString &path)
{
    return FileTree::exists(path) && openAddress(QUrl::fromLocalFile(Path::expandingTilde(path)));
}
