#include "RenameSheet.h"

#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/TextColour.h"

using namespace Qt::StringLiterals;

RenameSheet::RenameSheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    newTempplateName->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    connect(Ui::RenameSheet::renameTemplate, &QAbstractButton::clicked, this,
            &RenameSheet::renameTemplate);
    connect(Ui::RenameSheet::clearRenameTextField, &QAbstractButton::clicked, this,
            &RenameSheet::clearRenameTextField);
    connect(Ui::RenameSheet::cancelRenameTemplate, &QAbstractButton::clicked, this,
            &RenameSheet::cancelRenameTemplate);
    connect(this, &QDialog::rejected, this, &RenameSheet::cancelRenameTemplate);
}

void RenameSheet::raiseRenameSheet(const QString &title, const QString &fileName)
{
    const QString extension = Path::extension(fileName);
    newNameWarning->clear();
    newTempplateName->clear();
    presentName->setText(Path::withoutExtension(fileName));
    presentExtension->setText(extension.isEmpty() ? QString() : u'.' + extension);
    keptExtension->setText(u'.' + extension); // the dot also where no extension follows
    // Twice, because once it would be Qt's mark of a changed document.
    parentWidget()->setWindowTitle(QString(title).replace("[*]"_L1, "[*][*]"_L1));
    makeFirstResponder(this, newTempplateName);
    open();
}

void RenameSheet::clearRenameTextField()
{
    newNameWarning->clear();
    newTempplateName->clear();
    makeFirstResponder(this, newTempplateName);
}

void RenameSheet::renameTemplate()
{
    const QString name = newTempplateName->text();
    if (name.isEmpty()) {
        // Brighter than blue can be, and shown as the bluest that there is.
        setTextColour(newNameWarning, calibratedColour(0.1723F, 0.2978F, 1.5459F));
        newNameWarning->setText(tr("Please append new name For Template or Cancel ..."));
        return;
    }
    parentWidget()->setWindowTitle(u"Brimvale"_s);
    Q_EMIT nameChosen(name);
    hide();
}

void RenameSheet::cancelRenameTemplate()
{
    parentWidget()->setWindowTitle(u"Brimvale"_s);
    hide();
    newTempplateName->clear();
    newNameWarning->clear();
}
