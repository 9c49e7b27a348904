#pragma once

#include "platform/FileTree.h"

#include "ui_SubCategorySheet.h"

#include <QDialog>

struct TemplateCategory;

/// Asks for the sub-category of an install. It keeps the template that was chosen when it opened,
/// whatever is chosen behind it meanwhile.
class SubCategorySheet : public QDialog, private Ui::SubCategorySheet
{
    Q_OBJECT

public:
    explicit SubCategorySheet(QWidget *window);

    /// Opens for the template at this path. Without a category the last one stays shown.
    void createCategory(const QString &path, const QString &name, const TemplateCategory *category);
    void closeSheet();

    [[nodiscard]] QString subCategory() const { return textField->text(); }
    /// The template as it was when the sheet opened.
    [[nodiscard]] FileTree::Item source() const;
    /// Its name, or the warning that stood in its place. Empty until the sheet was opened once.
    [[nodiscard]] QString templateName() const { return theLastPathComponent->text(); }

    /// Says what is to be thought of before the install.
    void setWarnings(const QStringList &warnings);

    void endEditing();
    /// The template is installed: forgets it, but for its name.
    void setDone();

Q_SIGNALS:
    /// The user has confirmed the name, and the sheet is closed.
    void confirmed();
    /// Also when the sheet opens.
    void subCategoryChanged();
};
