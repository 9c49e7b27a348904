#include "app/BrimvaleAppDelegate.h"
#include "library/TemplateLibrary.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/UserNotification.h"
#include "widgets/Focus.h"
#include "widgets/InputShield.h"

#include <QButtonGroup>

using namespace std::chrono_literals;

void BrimvaleAppDelegate::moveAndClose()
{
    makeFirstResponder(mWindow, input);
    setFocusRing(input, FocusRing::Default);
    enableInstallButtons(false);

    const TemplateCategory *category = TemplateLibrary::category(theMatrix->checkedId());
    if (!category)
        return;
    test->setText(Path::lastComponent(input->text()));
    moveTemplate({Path::withoutLastComponent(input->text()), test->text()},
                 Path::expandingTilde(category->path));
    startAnimation(timer, 7ms, &BrimvaleAppDelegate::checkThem);
    announceInstall(category->installedText);
    input->clear();
    test->clear();
}

/// A template of the same name goes to the trash first, so that it can be brought back.
void BrimvaleAppDelegate::moveTemplate(const FileTree::Item &source, const QString &folder)
{
    const FileTree::Item destination{folder, source.name};
    std::ignore = FileTree::trash(destination);
    // From another disk it takes its time, and the windows repaint meanwhile.
    InputShield shield(this);
    std::ignore = FileTree::move(source, destination,
                                 [&](const FileTree::CopyProgress &) { shield.refreshWindows(); });
}

void BrimvaleAppDelegate::announceInstall(const QString &informativeText)
{
    deliverUserNotification(tr("Operation Successful"), informativeText);
}
