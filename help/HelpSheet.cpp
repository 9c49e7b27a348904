#include "HelpSheet.h"

#include "widgets/WholeContents.h"

HelpSheet::HelpSheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    setMinimumWidth(90 * fontMetrics().averageCharWidth());
    keepContentsWhole(this);
    connect(Ui::HelpSheet::closeHelpSheet, &QAbstractButton::clicked, this,
            &HelpSheet::closeHelpSheet);
    connect(this, &QDialog::rejected, this, &HelpSheet::closeHelpSheet);
}

void HelpSheet::openHelpSheet(int mode)
{
    helpSheetPages->setCurrentIndex(mode);
    setWindowTitle(mode == 0 ? tr("The Install Module at a Glance")
                             : tr("The Edit Module at a Glance"));
    open();
}

void HelpSheet::closeHelpSheet()
{
    hide();
}
