#include "SubCategorySheet.h"

#include "library/TemplateLibrary.h"
#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/Legibility.h"

SubCategorySheet::SubCategorySheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    theLastPathComponent->setRoomFor(tr("Please assign a Folder Path ..."));
    textField->setMinimumWidth(fontMetrics().horizontalAdvance(textField->placeholderText()) +
                               2 * fontMetrics().height());
    connect(generateCustomFolder, &QAbstractButton::clicked, this, [this] {
        hide();
        Q_EMIT confirmed();
    });
    connect(Ui::SubCategorySheet::closeSheet, &QAbstractButton::clicked, this,
            &SubCategorySheet::closeSheet);
    connect(textField, &QLineEdit::textChanged, this, &SubCategorySheet::subCategoryChanged);
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
    adjustSize();
    open();
    theLastPathComponent->setText(name);
    if (path.isEmpty())
        theLastPathComponent->setText(tr("Please assign a Folder Path ..."));
    Q_EMIT subCategoryChanged();
}

void SubCategorySheet::closeSheet()
{
    hide();
}

FileTree::Item SubCategorySheet::source() const
{
    return {Path::withoutLastComponent(mirroredPath->text()), theReQueue->text()};
}

void SubCategorySheet::setWarnings(const QStringList &warnings)
{
    catWarnings->setText(warnings.join(u'\n'));
    showWarningIcon(catWarningIcon, !warnings.isEmpty());
    // A label that wraps asks for no more height than that of one line.
    resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
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
