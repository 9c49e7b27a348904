#pragma once

#include "ui_HelpSheet.h"

#include <QDialog>

/// A summary of the Edit mode on one sheet.
class HelpSheet : public QDialog, private Ui::HelpSheet
{
    Q_OBJECT

public:
    explicit HelpSheet(QWidget *window);

    void openHelpSheet();
    void closeHelpSheet();
};
