#include "InstallationHistoryModel.h"
#include "app/BrimvaleAppDelegate.h"
#include "library/TemplateLibrary.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"

#include <QButtonGroup>

void BrimvaleAppDelegate::checkThem()
{
    if (!advanceAnimation(timer, progressBar))
        return;
    // The category is the one selected now, the name the one that the last sheet took.
    const TemplateCategory *category = TemplateLibrary::category(theMatrix->checkedId());
    if (!category)
        return;
    hiddenDF->setObjectValue(QDateTime::currentDateTime());
    logSource->setText(
        InstallationRecord::make(hiddenDF->text(), category->name, theLastPathComponent->text())
            .line);
    arrayController->append({logSource->text()});
    arrayController->setObjectValue(SettingsStore().object(SettingsStore::installations));
    logSource->clear();
}

void BrimvaleAppDelegate::clearLogs()
{
    logResetButton->setEnabled(true);
    helpButton->setEnabled(true);
    arrayController->removeAll();
    std::ignore = SettingsStore().removeObject(SettingsStore::installations);
    std::ignore = SettingsStore().synchronize();
    logSheet->hide();
}

void BrimvaleAppDelegate::openLogsWindow()
{
    arrayController->setObjectValue(SettingsStore().object(SettingsStore::installations));
    helpButton->setChecked(false);
    makeKeyAndOrderFront(logWindow);
    theTable->scrollToBottom(); // to the newest
}

void BrimvaleAppDelegate::printHelpText()
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

void BrimvaleAppDelegate::openLogSheet()
{
    logResetButton->setEnabled(false);
    helpButton->setEnabled(false);
    logSheet->open();
}

void BrimvaleAppDelegate::closeLogSheet()
{
    logResetButton->setEnabled(true);
    helpButton->setEnabled(true);
    logSheet->hide();
}
