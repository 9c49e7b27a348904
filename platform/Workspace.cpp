#include "Workspace.h"

#include "FileTree.h"

#include <QDesktopServices>

bool openAddress(const QUrl &address)
{
    if (address.isLocalFile() && !FileTree::exists(address.toLocalFile()))
        return false;
    return QDesktopServices::openUrl(address);
}
