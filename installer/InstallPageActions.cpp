#include "InstallPage.h"
#include "SubCategorySheet.h"
#include "library/TemplateLibrary.h"
#include "platform/Path.h"
#include "platform/UserNotification.h"
#include "widgets/Focus.h"
#include "widgets/InputShield.h"
#include "widgets/ProgressAnimation.h"

#include <QButtonGroup>

using namespace std::chrono_literals;

void InstallPage::moveAndClose()
{
    makeFirstResponder(window(), input);
    setFocusRing(input, FocusRing::Default);
    enableInstallButtons(false);

    const TemplateCategory *category = selectedCategory();
    if (!category)
        return;
    test->setText(Path::lastComponent(input->text()));
    moveTemplate({Path::withoutLastComponent(input->text()), test->text()}, {});
    timer->start(7ms);
    deliverUserNotification(tr("Operation Successful"), category->installedText);
    forget(input);
    test->clear();
}

void InstallPage::createCategory()
{
    leaveInput(); // a shortcut opens the sheet without taking the keyboard from the field
    catSheet->createCategory(input->text(), test->text(), selectedCategory());
    refreshCard();
}

void InstallPage::generateCustomFolder()
{
    enableInstallButtons(false);

    const TemplateCategory *category = selectedCategory();
    if (!category)
        return;
    const QString subCategory = catSheet->subCategory();
    const QString folder = TemplateLibrary::folder(*category, subCategory);
    if (!FileTree::exists(folder))
        std::ignore = FileTree::createFolder(folder);
    catSheet->endEditing();
    moveTemplate(catSheet->source(), subCategory);

    catSheet->setDone();
    forget(input);
    test->clear();
    timer->start(7ms);
    deliverUserNotification(tr("Operation Successful"), category->customInstalledText);
    setFocusRing(input, FocusRing::Default);
    makeFirstResponder(window(), input);
}

void InstallPage::checkThem()
{
    if (!timer->advance())
        return;
    if (const TemplateCategory *category = selectedCategory())
        Q_EMIT installed(category->name, catSheet->templateName());
    refreshCard();
}

const TemplateCategory *InstallPage::selectedCategory() const
{
    return TemplateLibrary::category(theMatrix->checkedId());
}

/// A template of the same name goes to the trash first, so that it can be brought back.
void InstallPage::moveTemplate(const FileTree::Item &source, const QString &subCategory)
{
    const TemplateCategory &category = *selectedCategory();
    const FileTree::Item destination{TemplateLibrary::folder(category, subCategory), source.name};
    std::ignore = FileTree::trash(destination);
    const QString place = Path::joined(destination.folder, destination.name);
    const bool wasThere = FileTree::exists(place);
    // From another disk it takes its time, and the windows repaint meanwhile.
    InputShield shield;
    const Outcome outcome = FileTree::move(
        source, destination, [&](const FileTree::CopyProgress &) { shield.refreshWindows(); });
    const bool isMoved = static_cast<bool>(outcome);
    justInstalled = {};
    // A disk that is only read, a disk image above all, lets nothing go: the copy is installed.
    if (isMoved || (!wasThere && FileTree::exists(place)))
        justInstalled = {source.name, TemplateLibrary::placeName(category, subCategory), isMoved};
}
