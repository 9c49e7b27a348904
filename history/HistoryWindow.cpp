#include "HistoryWindow.h"

#include "HistoryResetSheet.h"
#include "InstallationHistoryModel.h"
#include "InstallationRecord.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"

using namespace Qt::StringLiterals;

HistoryWindow::HistoryWindow()
{
    setupUi(this);
    logSheet = new HistoryResetSheet(this);
    arrayController = new InstallationHistoryModel(this);
    arrayController->setObjectName(u"arrayController"_s);
    theTable->setModel(arrayController);

    connect(helpButton, &QAbstractButton::clicked, this, &HistoryWindow::printHelpText);
    connect(logResetButton, &QAbstractButton::clicked, this, &HistoryWindow::openLogSheet);
    connect(logSheet, &HistoryResetSheet::confirmed, this, &HistoryWindow::clearLogs);
    connect(logSheet, &HistoryResetSheet::cancelled, this, &HistoryWindow::closeLogSheet);
}

void HistoryWindow::setInstallations(const QVariant &installations)
{
    arrayController->setObjectValue(installations);
}

void HistoryWindow::addInstallation(const QString &category, const QString &templateName)
{
    hiddenDF->setObjectValue(QDateTime::currentDateTime());
    logSource->setText(InstallationRecord::make(hiddenDF->text(), category, templateName).line);
    std::ignore = appendInstallation({logSource->text()});
    setInstallations(SettingsStore().object(SettingsStore::installations));
    logSource->clear();
}

void HistoryWindow::openLogsWindow()
{
    setInstallations(SettingsStore().object(SettingsStore::installations));
    helpButton->setChecked(false);
    makeKeyAndOrderFront(this);
    theTable->scrollToBottom(); // to the newest
}

void HistoryWindow::printHelpText()
{
    switch (helpButton->checkState()) {
    case Qt::Checked:
        logsHelpField->setText(tr("Reset will permanently remove history."));
        break;
    case Qt::Unchecked:
        logsHelpField->clear();
        break;
    case Qt::PartiallyChecked:
        break;
    }
}

void HistoryWindow::openLogSheet()
{
    logResetButton->setEnabled(false);
    helpButton->setEnabled(false);
    logSheet->open();
}

void HistoryWindow::closeLogSheet()
{
    logResetButton->setEnabled(true);
    helpButton->setEnabled(true);
    logSheet->hide();
}

void HistoryWindow::clearLogs()
{
    logResetButton->setEnabled(true);
    helpButton->setEnabled(true);
    arrayController->removeAll();
    std::ignore = SettingsStore().removeObject(SettingsStore::installations);
    std::ignore = SettingsStore().synchronize();
    logSheet->hide();
}
