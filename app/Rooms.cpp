#include "BrimvaleAppDelegate.h"
#include "backup/BackupWindow.h"
#include "editor/EditPage.h"
#include "history/HistoryWindow.h"
#include "installer/InstallPage.h"

#include <array>

/// Everything that goes between the rooms.
void BrimvaleAppDelegate::connectRooms()
{
    using App = BrimvaleAppDelegate;
    using Button = QAbstractButton;

    mWindow->installEventFilter(this);
    connect(segController, &SegmentedControl::pressed, this, &App::toggleView);
    connect(addButton, &Button::clicked, installPage, &InstallPage::doOpen);
    connect(renameButton, &Button::clicked, editPage, &EditPage::raiseRenameSheet);
    connect(editPage, &EditPage::renameAllowed, renameButton, &QWidget::setEnabled);
    connect(installPage, &InstallPage::installed, logWindow.get(), &HistoryWindow::addInstallation);
    connect(installPage, &InstallPage::libraryRequested, prefWindow.get(),
            &BackupWindow::runPrefsWindow);
    connect(installPage, &InstallPage::categoryFolderRequested, this, [this](int row) {
        constexpr std::array open{&App::openCompositionsFolder, &App::openEffectsFolder,
                                  &App::openGeneratorsFolder, &App::openTitlesFolder,
                                  &App::openTransitionsFolder};
        (this->*open.at(static_cast<std::size_t>(row)))();
    });

    connect(Ui::MainWindow::openTemplatesRootFolder, &Button::clicked, this,
            &App::openTemplatesRootFolder);
    connect(openArchivesFolder, &Button::clicked, editPage, &EditPage::openArchivesFolder);
    connect(openLogsWindow, &Button::clicked, logWindow.get(), &HistoryWindow::openLogsWindow);
    connect(runPrefsWindow, &Button::clicked, prefWindow.get(), &BackupWindow::runPrefsWindow);
    connect(Ui::MainWindow::openHelpSheet, &Button::clicked, this, &App::openHelpSheet);
}
