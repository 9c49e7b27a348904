#include "HelpSheet.h"

HelpSheet::HelpSheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    connect(Ui::HelpSheet::closeHelpSheet, &QAbstractButton::clicked, this,
            &HelpSheet::closeHelpSheet);
    connect(this, &QDialog::rejected, this, &HelpSheet::closeHelpSheet);
}

void HelpSheet::openHelpSheet()
{
    open();
}

void HelpSheet::closeHelpSheet()
{
    hide();
}
