#pragma once

#include "ui_HelpSheet.h"

#include <QDialog>

/// One mode at a glance, on a sheet.
class HelpSheet : public QDialog, private Ui::HelpSheet
{
    Q_OBJECT

public:
    explicit HelpSheet(QWidget *window);

    /// 0 is Install, 1 is Edit.
    void openHelpSheet(int mode);
    void closeHelpSheet();
};
