#pragma once

#include "ui_ConfirmSheet.h"

#include <QDialog>

/// Would ask before a file is written back and closed. No action opens it; those that end it do
/// no harm.
class ConfirmSheet : public QDialog, private Ui::ConfirmSheet
{
    Q_OBJECT

public:
    explicit ConfirmSheet(QWidget *window);

    void closeConfirmSheet();

Q_SIGNALS:
    void confirmed();
};
