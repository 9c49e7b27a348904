#include "TemplateLibrary.h"
#include "app/BrimvaleAppDelegate.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/RunLoop.h"

using namespace std::chrono_literals;

void BrimvaleAppDelegate::createFolderStructure()
{
    const QString root = Path::expandingTilde(TemplateLibrary::root());
    if (FileTree::exists(root)) {
        existsTextField->show();
        mCancel->show();
        existsTextField->setText(tr("Folder Structure already exists - ! ..."));
    }
    if (!FileTree::exists(root)) {
        spinner->startAnimation();
        if (!runEventLoopFor(1500ms)) // so that the user sees work happen
            return;
        spinner->stopAnimation();
        existsTextField->show();
        mCancel->show();
        existsTextField->setText(tr("Folder Structure Created"));
        std::ignore = FileTree::createFolder(root);
    }
    for (const TemplateCategory &category : TemplateLibrary::categories()) {
        const QString folder = Path::expandingTilde(category.path);
        if (!FileTree::exists(folder))
            std::ignore = FileTree::createFolder(folder);
    }
}
