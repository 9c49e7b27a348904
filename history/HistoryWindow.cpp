#include "HistoryWindow.h"

#include "HistoryHeader.h"
#include "HistoryResetSheet.h"
#include "InstallationDelegate.h"
#include "InstallationHistoryModel.h"
#include "InstallationRecord.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"
#include "widgets/Legibility.h"
#include "widgets/WholeContents.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QLocale>
#include <QShortcut>

#include <algorithm>

using namespace Qt::StringLiterals;

HistoryWindow::HistoryWindow()
{
    setupUi(this);
    logSheet = new HistoryResetSheet(this);
    arrayController = new InstallationHistoryModel(this);
    arrayController->setObjectName(u"arrayController"_s);
    theTable->setModel(arrayController);
    theTable->setHorizontalHeader(new HistoryHeader(theTable));
    theTable->setItemDelegate(new InstallationDelegate(theTable));
    emptyHistory->setAttribute(Qt::WA_TransparentForMouseEvents);
    keepContentsWhole(this);
    fitFont();
    resize(104 * fontMetrics().averageCharWidth(), 3 * theTable->minimumHeight());
    showState();

    connect(arrayController, &QAbstractItemModel::modelReset, this, &HistoryWindow::showState);
    connect(arrayController, &QAbstractItemModel::rowsInserted, this, &HistoryWindow::showState);
    connect(logFilter, &QLineEdit::textChanged, arrayController,
            &InstallationHistoryModel::setFilter);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, logFilter,
            qOverload<>(&QWidget::setFocus));
    connect(copyLinesItem, &QAction::triggered, this, &HistoryWindow::copyLines);
    connect(selectLinesItem, &QAction::triggered, this, &HistoryWindow::selectLines);
    connect(closeLogWindow, &QAbstractButton::clicked, this, &QWidget::close);

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
    if (isVisible())
        theTable->scrollToBottom(); // to what has just arrived
}

void HistoryWindow::openLogsWindow()
{
    logFilter->clear();
    setInstallations(SettingsStore().object(SettingsStore::installations));
    helpButton->setChecked(false);
    if (!focusWidget())
        theTable->setFocus();
    makeKeyAndOrderFront(this);
    theTable->scrollToBottom(); // to the newest
    theTable->selectionModel()->setCurrentIndex(
        arrayController->index(arrayController->rowCount() - 1, 0), QItemSelectionModel::NoUpdate);
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
    const FocusGuard guard(this);
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

void HistoryWindow::copyLines()
{
    QModelIndexList rows = theTable->selectionModel()->selectedRows();
    if (!theTable->hasFocus() || rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &each : std::as_const(rows))
        lines << each.data().toString();
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void HistoryWindow::selectLines()
{
    if (theTable->hasFocus())
        theTable->selectAll();
}

void HistoryWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitFont();
}

/// Everything that a table does not take from its font by itself.
void HistoryWindow::fitFont()
{
    const QSize row = InstallationDelegate::smallestRow(theTable);
    theTable->verticalHeader()->setDefaultSectionSize(row.height());
    theTable->setMinimumSize(row.width(), 6 * row.height());
    emptyHistoryIcon->setPixmap(
        QIcon(u":/icons/history-48.png"_s).pixmap(QSize(1, 1) * besideText(*this, 32)));
    emptyHistoryHeading->setFont(headingFont());
}

void HistoryWindow::showState()
{
    const auto shown = arrayController->rowCount();
    const auto all = arrayController->recordCount();
    const QLocale locale;
    if (all == 0)
        logCount->clear();
    else if (shown == all)
        logCount->setText(tr("%1 in all").arg(locale.toString(all)));
    else
        logCount->setText(tr("%1 of %2").arg(locale.toString(shown), locale.toString(all)));

    emptyHistory->setVisible(shown == 0);
    if (shown > 0)
        return;
    emptyHistoryIcon->setVisible(all == 0);
    emptyHistoryHeading->setText(all == 0 ? tr("Nothing installed yet") : tr("No match"));
    emptyHistoryText->setText(all == 0 ? tr("Every template that you install is listed here.")
                                       : tr("No installation has all these words."));
}
