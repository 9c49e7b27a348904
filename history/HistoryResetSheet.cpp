#include "HistoryResetSheet.h"

HistoryResetSheet::HistoryResetSheet(QWidget *window) : QDialog(window)
{
    setupUi(this);
    connect(clearLogs, &QAbstractButton::clicked, this, &HistoryResetSheet::confirmed);
    connect(closeLogSheet, &QAbstractButton::clicked, this, &HistoryResetSheet::cancelled);
    connect(this, &QDialog::rejected, this, &HistoryResetSheet::cancelled);
}
