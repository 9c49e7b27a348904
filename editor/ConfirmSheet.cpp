#include "ConfirmSheet.h"

ConfirmSheet::ConfirmSheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    connect(writeToFile, &QAbstractButton::clicked, this, &ConfirmSheet::confirmed);
    connect(Ui::ConfirmSheet::closeConfirmSheet, &QAbstractButton::clicked, this,
            &ConfirmSheet::closeConfirmSheet);
    connect(this, &QDialog::rejected, this, &ConfirmSheet::closeConfirmSheet);
}

void ConfirmSheet::closeConfirmSheet()
{
    hide();
    theIndicator->stopAnimation();
}
