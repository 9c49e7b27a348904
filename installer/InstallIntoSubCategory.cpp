#include "app/BrimvaleAppDelegate.h"
#include "library/TemplateLibrary.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "widgets/Focus.h"

#include <QButtonGroup>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void BrimvaleAppDelegate::createCategory()
{
    setFocusRing(textField, FocusRing::Default);
    textField->clear();
    mirroredPath->setText(input->text());
    theReQueue->setText(test->text());
    if (const TemplateCategory *category = TemplateLibrary::category(theMatrix->checkedId()))
        sheetLabel->setText(category->name);
    makeFirstResponder(catSheet, textField);
    catSheet->open();
    theLastPathComponent->setText(test->text());
    if (input->text().isEmpty())
        theLastPathComponent->setText(tr("Please assign a Folder Path ..."));
}

void BrimvaleAppDelegate::closeSheet()
{
    catSheet->hide();
}

void BrimvaleAppDelegate::generateCustomFolder()
{
    catSheet->hide();
    enableInstallButtons(false);

    const TemplateCategory *category = TemplateLibrary::category(theMatrix->checkedId());
    if (!category)
        return;
    const QString subCategory =
        Path::expandingTilde(Path::joined(category->path + u'/', textField->text()));
    if (!FileTree::exists(subCategory))
        std::ignore = FileTree::createFolder(subCategory);
    setFocusRing(textField, FocusRing::None);
    makeFirstResponder(catSheet, nullptr);
    moveTemplate({Path::withoutLastComponent(mirroredPath->text()), theReQueue->text()},
                 subCategory);

    mirroredPath->clear();
    theReQueue->setText(tr("Done"));
    textField->clear();
    input->clear();
    test->clear();
    startAnimation(timer, 7ms, &BrimvaleAppDelegate::checkThem);
    announceInstall(category->customInstalledText);
    setFocusRing(input, FocusRing::Default);
    makeFirstResponder(mWindow, input);
}
