#include "app/BrimvaleAppDelegate.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/TextColour.h"

using namespace Qt::StringLiterals;

void BrimvaleAppDelegate::raiseRenameSheet()
{
    newNameWarning->clear();
    newTempplateName->clear();
    // Twice, because once it would be Qt's mark of a changed document.
    mWindow->setWindowTitle(display->text().replace("[*]"_L1, "[*][*]"_L1));
    makeFirstResponder(renameSheet, newTempplateName);
    renameSheet->open();
}

void BrimvaleAppDelegate::clearRenameTextField()
{
    newNameWarning->clear();
    newTempplateName->clear();
    makeFirstResponder(renameSheet, newTempplateName);
}

void BrimvaleAppDelegate::renameTemplate()
{
    const QString path = input1->text();
    const QString name = newTempplateName->text();
    const QString fileName = name + u'.' + Path::extension(path);
    if (name.isEmpty()) {
        // Brighter than blue can be, and shown as the bluest that there is.
        setTextColour(newNameWarning, calibratedColour(0.1723F, 0.2978F, 1.5459F));
        newNameWarning->setText(tr("Please append new name For Template or Cancel ..."));
        return;
    }
    mWindow->setWindowTitle(u"Brimvale"_s);
    const QString folder = Path::withoutLastComponent(path);
    std::ignore = FileTree::move({folder, Path::lastComponent(path)}, {folder, fileName});
    display->setText(Path::withoutExtension(fileName));
    input1->setText(folder + u'/' + fileName);
    renameSheet->hide();
}

void BrimvaleAppDelegate::cancelRenameTemplate()
{
    mWindow->setWindowTitle(u"Brimvale"_s);
    renameSheet->hide();
    newTempplateName->clear();
    newNameWarning->clear();
}
