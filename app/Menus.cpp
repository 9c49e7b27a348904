#include "BrimvaleAppDelegate.h"
#include "backup/BackupWindow.h"
#include "editor/EditPage.h"
#include "history/HistoryWindow.h"
#include "installer/InstallPage.h"
#include "widgets/MenuFollower.h"

#include <QActionGroup>
#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// The text field that has the keyboard, where there is one.
QLineEdit *focusedField()
{
    return qobject_cast<QLineEdit *>(QApplication::focusWidget());
}

void showAbout(QWidget *window)
{
    auto *about = new QMessageBox(QMessageBox::NoIcon, BrimvaleAppDelegate::tr("About Brimvale"),
                                  u"<h3>Brimvale %1</h3>"_s.arg(QApplication::applicationVersion()),
                                  QMessageBox::Ok, window);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setIconPixmap(QApplication::windowIcon().pixmap(QSize(64, 64)));
    about->setInformativeText(
        BrimvaleAppDelegate::tr("Installs, inspects and edits templates for Motion."));
    about->open();
}

} // namespace

/// Which menu item triggers which action. An item that stands for a control is that control's
/// click, and can be chosen while the control can be.
void BrimvaleAppDelegate::wireMenus()
{
    const auto press = [](QAction *item, QAbstractButton *button) {
        new MenuFollower(item, button);
        connect(item, &QAction::triggered, button, [button] { button->click(); });
    };
    press(doOpenItem, addButton);
    press(openFileItem, editPage->oFile);
    press(moveAndCloseItem, installPage->mSendButton);
    press(createCategoryItem, installPage->mNewCatButton);
    press(clearInputsItem, installPage->clearButton);
    press(backupOriginalItem, editPage->orgButton);
    press(raiseRenameSheetItem, renameButton);
    press(clearEditorItem, editPage->tClearButton);
    press(addElementsItem, editPage->setButton);
    press(conformItem, editPage->conformButton);
    new MenuFollower(writeToFileItem, editPage->tClearButton);

    using App = BrimvaleAppDelegate;
    const auto run = [](QAction *item, auto *receiver, auto action) {
        connect(item, &QAction::triggered, receiver, action);
    };
    run(writeToFileItem, editPage, [this] {
        editPage->writeToFile();
        editPage->clearEditor(); // or nothing but a drop could open the next file
    });
    run(openTemplatesRootFolderItem, this, &App::openTemplatesRootFolder);
    run(openCompositionsFolderItem, this, &App::openCompositionsFolder);
    run(openEffectsFolderItem, this, &App::openEffectsFolder);
    run(openGeneratorsFolderItem, this, &App::openGeneratorsFolder);
    run(openTitlesFolderItem, this, &App::openTitlesFolder);
    run(openTransitionsFolderItem, this, &App::openTransitionsFolder);
    run(openArchivesFolderItem, editPage, &EditPage::openArchivesFolder);
    run(runPrefsWindowItem, prefWindow.get(), &BackupWindow::runPrefsWindow);
    run(openLogsWindowItem, logWindow.get(), &HistoryWindow::openLogsWindow);
    run(Ui::MainWindow::runHelpBook, this, &App::runHelpBook);
    run(openHelpSheetItem, this, &App::openHelpSheet);
    run(Ui::MainWindow::runHelpWebView, this, &App::runHelpWebView);
    run(Ui::MainWindow::linkToPayPal, this, &App::linkToPayPal);
    run(aboutItem, mWindow.get(), [this] { showAbout(mWindow.get()); });
    run(quitItem, mWindow.get(), [this] { mWindow->close(); });
    wireModeItems();
    wireEditMenu();
}

/// The chosen mode is checked, and choosing it once more changes nothing.
void BrimvaleAppDelegate::wireModeItems()
{
    auto *modes = new QActionGroup(mWindow.get());
    modes->addAction(installModeItem);
    modes->addAction(editModeItem);
    connect(modes, &QActionGroup::triggered, this, [this, modes](QAction *item) {
        const int mode = static_cast<int>(modes->actions().indexOf(item));
        if (mode != segController->selectedSegment())
            segController->button(mode)->click();
    });
    connect(theTabView, &QStackedWidget::currentChanged, this, [this, modes](int mode) {
        modes->actions().at(mode)->setChecked(true);
        openHelpSheetItem->setText(mode == 0 ? tr("The &Install Module at a Glance")
                                             : tr("The &Edit Module at a Glance"));
    });
}

/// What the Edit menu does to the text field or the history that has the keyboard.
void BrimvaleAppDelegate::wireEditMenu()
{
    const auto edit = [this](QAction *item, auto operation) {
        connect(item, &QAction::triggered, mWindow.get(), [operation] {
            if (QLineEdit *field = focusedField())
                (field->*operation)();
        });
    };
    edit(undoItem, &QLineEdit::undo);
    edit(redoItem, &QLineEdit::redo);
    edit(cutItem, &QLineEdit::cut);
    edit(copyItem, &QLineEdit::copy);
    edit(selectAllItem, &QLineEdit::selectAll);
    connect(pasteItem, &QAction::triggered, mWindow.get(), [] {
        if (QLineEdit *field = focusedField())
            QMetaObject::invokeMethod(field, "paste"); // a field may have a way of its own
    });
    connect(copyItem, &QAction::triggered, logWindow.get(), &HistoryWindow::copyLines);
    connect(selectAllItem, &QAction::triggered, logWindow.get(), &HistoryWindow::selectLines);
}
