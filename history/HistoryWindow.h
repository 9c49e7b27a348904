#pragma once

#include "ui_HistoryWindow.h"

#include <QDialog>

class HistoryResetSheet;
class InstallationHistoryModel;

/// Keeps the history of installations and shows it.
class HistoryWindow : public QDialog, private Ui::HistoryWindow
{
    Q_OBJECT

public:
    HistoryWindow();

    /// Shows this array of records; an invalid value shows none.
    void setInstallations(const QVariant &installations);
    /// Writes one record, of this moment, and shows the history as it is stored then.
    void addInstallation(const QString &category, const QString &templateName);

    void openLogsWindow();
    void printHelpText();
    void openLogSheet();
    void closeLogSheet();
    void clearLogs();

    // Of the table, while it has the keyboard: the Edit menu asks too.
    void copyLines();
    void selectLines();

protected:
    void changeEvent(QEvent *event) override;

private:
    void fitFont();
    void showState();

    InstallationHistoryModel *arrayController = nullptr;
    HistoryResetSheet *logSheet = nullptr;
};
