#pragma once

#include "ui_HistoryResetSheet.h"

#include <QDialog>

/// Asks whether the history may go.
class HistoryResetSheet : public QDialog, private Ui::HistoryResetSheet
{
    Q_OBJECT

public:
    explicit HistoryResetSheet(QWidget *window);

Q_SIGNALS:
    void confirmed();
    void cancelled();
};
