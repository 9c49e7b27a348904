#include "SubCategorySheet.h"

#include "library/TemplateLibrary.h"
#include "platform/Path.h"
#include "widgets/Focus.h"

SubCategorySheet::SubCategorySheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    connect(generateCustomFolder, &QAbstractButton::clicked, this, [this] {
        hide();
        Q_EMIT confirmed();
    });
    connect(Ui::SubCategorySheet::closeSheet, &QAbstractButton::clicked, this,
            &SubCategorySheet::closeSheet);
    connect(this, &QDialog::rejected, this, &SubCategorySheet::closeSheet);
}

void SubCategorySheet::createCategory(const QString &path, const QString &name,
                                      const TemplateCategory *category)
{
    setFocusRing(textField, FocusRing::Default);
    forget(textField);
    mirroredPath->setText(path);
    theReQueue->setText(name);
    if (category)
        sheetLabel->setText(category->name);
    makeFirstResponder(this, textField);
    open();
    theLastPathComponent->setText(name);
    if (path.isEmpty())
        theLastPathComponent->setText(tr("Please assign a Folder Path ..."));
}

void SubCategorySheet::closeSheet()
{
    hide();
}

FileTree::Item SubCategorySheet::source() const
{
    return {Path::withoutLastComponent(mirroredPath->text()), theReQueue->text()};
}

void SubCategorySheet::endEditing()
{
    setFocusRing(textField, FocusRing::None);
    makeFirstResponder(this, nullptr);
}

void SubCategorySheet::setDone()
{
    mirroredPath->clear();
    theReQueue->setText(tr("Done"));
    forget(textField);
}
