#include "BrimvaleAppDelegate.h"
#include "editor/dropZone1.h"
#include "help/dornelHelpBook.h"
#include "history/InstallationHistoryModel.h"
#include "installer/dropZone.h"

#include <QApplication>
#include <QButtonGroup>
#include <QIcon>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

QIcon applicationIcon()
{
    QIcon icon(u":/brimvale.png"_s);
    for (const int size : {16, 24, 32, 48})
        icon.addFile(u":/brimvale-%1.png"_s.arg(size));
    return icon;
}

/// A control that hides keeps its place, so that nothing around it moves.
void keepPlaceWhenHidden(QWidget *control)
{
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}

} // namespace

void BrimvaleAppDelegate::buildWindows()
{
    Q_INIT_RESOURCE(brimvale);
    QApplication::setWindowIcon(applicationIcon());

    mWindow = new QMainWindow;
    Ui::MainWindow::setupUi(mWindow);
    auto *installPage = new dropZone;
    Ui::InstallPage::setupUi(installPage);
    theTabView->addWidget(installPage);
    auto *editPage = new dropZone1;
    Ui::EditPage::setupUi(editPage);
    theTabView->addWidget(editPage);
    // The footer comes last: the pages joined the window behind it.
    QWidget *last = tClearButton;
    for (QWidget *next : {Ui::MainWindow::openTemplatesRootFolder,
                          Ui::MainWindow::openArchivesFolder, Ui::MainWindow::openLogsWindow,
                          Ui::MainWindow::runPrefsWindow, Ui::MainWindow::openHelpSheet}) {
        QWidget::setTabOrder(last, next);
        last = next;
    }

    // A sheet belongs to its window and blocks it; the other windows stand beside the main one.
    const auto makeDialog = [](auto &form, QWidget *owner) {
        auto *dialog = new QDialog(owner);
        form.setupUi(dialog);
        return dialog;
    };
    catSheet = makeDialog(static_cast<Ui::SubCategorySheet &>(*this), mWindow);
    renameSheet = makeDialog(static_cast<Ui::RenameSheet &>(*this), mWindow);
    confirmSheet = makeDialog(static_cast<Ui::ConfirmSheet &>(*this), mWindow);
    logWindow = makeDialog(static_cast<Ui::HistoryWindow &>(*this), nullptr);
    logSheet = makeDialog(static_cast<Ui::HistoryResetSheet &>(*this), logWindow);
    prefWindow = makeDialog(static_cast<Ui::BackupWindow &>(*this), nullptr);
    theSheet = makeDialog(static_cast<Ui::HelpSheet &>(*this), mWindow);
    window = new QWidget;
    window->setObjectName(u"window"_s);
    helpBook = new dornelHelpBook;

    arrayController = new InstallationHistoryModel(this);
    arrayController->setObjectName(u"arrayController"_s);
    theTable->setModel(arrayController);

    input->setFocus();

    int row = 0;
    for (QAbstractButton *choice : std::initializer_list<QAbstractButton *>{
             compositionsChoice, effectsChoice, generatorsChoice, titlesChoice, transitionsChoice})
        theMatrix->setId(choice, row++);
    for (QWidget *each : std::initializer_list<QWidget *>{orgButton, progressBarT, theBackupButton,
                                                          existsTextField, mCancel, backupProgress})
        keepPlaceWhenHidden(each);
    backupProgress->hide();
    installHintIcon->setPixmap(QIcon(u":/icons/library-64.png"_s).pixmap(QSize(64, 64)));
}

/// Return presses the button while the control itself has the keyboard. Nothing for the rate list:
/// a Return that chooses from it would conform the file at once.
void BrimvaleAppDelegate::pressByReturn(QWidget *control, QAbstractButton *button)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, control);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
    }
}

/// Which control triggers which action.
void BrimvaleAppDelegate::wireControls()
{
    using App = BrimvaleAppDelegate;
    using Button = QAbstractButton;

    mWindow->installEventFilter(this);
    connect(segController, &SegmentedControl::pressed, this, &App::toggleView);

    auto *installPage = static_cast<dropZone *>(theTabView->widget(0));
    installPage->setReceiver([this](const QString &path) {
        updateText(path);
        return true;
    });
    connect(installPage, &dropZone::hovered, installHint, &DropHint::setHighlighted);
    connect(input, &QLineEdit::textChanged, input,
            [this](const QString &path) { input->setToolTip(toolTipOf(path)); });
    connect(input, &QLineEdit::returnPressed, this, &App::setPathEnter);
    connect(addButton, &Button::clicked, this, &App::doOpen);
    connect(clearButton, &Button::clicked, this, &App::clearInputs);
    for (QAbstractButton *choice : theMatrix->buttons())
        pressByReturn(choice, mSendButton);
    connect(mSendButton, &Button::clicked, this, &App::moveAndClose);
    connect(mNewCatButton, &Button::clicked, this, &App::createCategory);
    connect(Ui::SubCategorySheet::generateCustomFolder, &Button::clicked, this,
            &App::generateCustomFolder);
    connect(Ui::SubCategorySheet::closeSheet, &Button::clicked, this, &App::closeSheet);
    connect(catSheet, &QDialog::rejected, this, &App::closeSheet);

    auto *editPage = static_cast<dropZone1 *>(theTabView->widget(1));
    editPage->setReceiver([this](const QString &path) { return setString(path); });
    connect(editPage, &dropZone1::hovered, editHint, &DropHint::setHighlighted);
    connect(oFile, &Button::clicked, this, &App::openFile);
    connect(tClearButton, &Button::clicked, this, &App::clearEditor);
    connect(setButton, &Button::clicked, this, &App::addElements);
    connect(element, &QLineEdit::returnPressed, setButton, &Button::click);
    connect(conformButton, &Button::clicked, this, &App::conform);
    connect(orgButton, &Button::clicked, this, &App::backupOriginal);
    connect(renameButton, &Button::clicked, this, &App::raiseRenameSheet);
    connect(Ui::RenameSheet::renameTemplate, &Button::clicked, this, &App::renameTemplate);
    connect(Ui::RenameSheet::clearRenameTextField, &Button::clicked, this,
            &App::clearRenameTextField);
    connect(Ui::RenameSheet::cancelRenameTemplate, &Button::clicked, this,
            &App::cancelRenameTemplate);
    connect(renameSheet, &QDialog::rejected, this, &App::cancelRenameTemplate);
    connect(Ui::ConfirmSheet::writeToFile, &Button::clicked, this, &App::writeToFile);
    connect(Ui::ConfirmSheet::closeConfirmSheet, &Button::clicked, this, &App::closeConfirmSheet);
    connect(confirmSheet, &QDialog::rejected, this, &App::closeConfirmSheet);

    connect(Ui::MainWindow::openLogsWindow, &Button::clicked, this, &App::openLogsWindow);
    connect(helpButton, &Button::clicked, this, &App::printHelpText);
    connect(logResetButton, &Button::clicked, this, &App::openLogSheet);
    connect(Ui::HistoryResetSheet::clearLogs, &Button::clicked, this, &App::clearLogs);
    connect(Ui::HistoryResetSheet::closeLogSheet, &Button::clicked, this, &App::closeLogSheet);
    connect(logSheet, &QDialog::rejected, this, &App::closeLogSheet);

    connect(Ui::MainWindow::runPrefsWindow, &Button::clicked, this, &App::runPrefsWindow);
    connect(Ui::BackupWindow::createFolderStructure, &Button::clicked, this,
            &App::createFolderStructure);
    connect(mCancel, &Button::clicked, this, &App::quitPrefs);
    connect(Ui::BackupWindow::setBackupPath1, &Button::clicked, this, &App::setBackupPath1);
    connect(theBackupButton, &Button::clicked, this, &App::backup);

    connect(Ui::MainWindow::openTemplatesRootFolder, &Button::clicked, this,
            &App::openTemplatesRootFolder);
    connect(Ui::MainWindow::openArchivesFolder, &Button::clicked, this, &App::openArchivesFolder);
    connect(Ui::InstallPage::openCompositionsFolder, &Button::clicked, this,
            &App::openCompositionsFolder);
    connect(Ui::InstallPage::openEffectsFolder, &Button::clicked, this, &App::openEffectsFolder);
    connect(Ui::InstallPage::openGeneratorsFolder, &Button::clicked, this,
            &App::openGeneratorsFolder);
    connect(Ui::InstallPage::openTitlesFolder, &Button::clicked, this, &App::openTitlesFolder);
    connect(Ui::InstallPage::openTransitionsFolder, &Button::clicked, this,
            &App::openTransitionsFolder);

    connect(Ui::MainWindow::openHelpSheet, &Button::clicked, this, &App::openHelpSheet);
    connect(Ui::HelpSheet::closeHelpSheet, &Button::clicked, this, &App::closeHelpSheet);
    connect(theSheet, &QDialog::rejected, this, &App::closeHelpSheet);
}
