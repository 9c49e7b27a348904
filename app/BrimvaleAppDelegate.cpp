#include "BrimvaleAppDelegate.h"

#include "editor/ArchiveFolder.h"
#include "help/dornelHelpBook.h"
#include "history/InstallationHistoryModel.h"
#include "platform/FileTree.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"

#include <QCoreApplication>
#include <QEvent>

BrimvaleAppDelegate::BrimvaleAppDelegate()
{
    buildWindows();
    wireControls();
    wireMenus();
    awakeFromNib();
}

BrimvaleAppDelegate::~BrimvaleAppDelegate()
{
    delete helpBook;
    for (QWidget *each : std::initializer_list<QWidget *>{window, logWindow, prefWindow, mWindow})
        delete each;
}

void BrimvaleAppDelegate::awakeFromNib()
{
    segController->setTag(0, 0);
    segController->setTag(1, 1);
    enableInstallButtons(false);
    addButton->show();
    tClearButton->setEnabled(false);
    element->setEnabled(false);
    setFocusRing(element, FocusRing::None);
    orgButton->hide();
    frPopup->setCurrentIndex(0);
    for (QLabel *each : std::initializer_list<QLabel *>{display, input1, textField1, typeText})
        each->clear();
    element->clear();
    oFile->setEnabled(true);
    frPopup->setEnabled(false);
    conformButton->setEnabled(false);
    setButton->setEnabled(false);
    renameButton->hide();
    for (QLabel *each :
         std::initializer_list<QLabel *>{theFrames, theFrameRate, theDuration, secFloat, resOutput,
                                         wasArchived, newNameWarning})
        each->clear();
    statusImage->clear();
}

void BrimvaleAppDelegate::applicationDidFinishLaunching()
{
    hidden->hide();
    makeKeyAndOrderFront(mWindow);
    setFocusRing(input, FocusRing::Default);
    backupPath->setText(SettingsStore().object(SettingsStore::theAppBackupPath).toString());
    lastBackupDate->setObjectValue(SettingsStore().object(SettingsStore::theLastBackupDate));
    theFolderImage->setText(SettingsStore().object(SettingsStore::theFolder8899).toString());
    arrayController->setObjectValue(SettingsStore().object(SettingsStore::installations));
    theBackupButton->hide();
    // Once more, so that the state after launch is this one whatever came before.
    enableInstallButtons(false);
    orgButton->hide();
    wasArchived->clear();

    if (!FileTree::exists(archiveFolder))
        std::ignore = FileTree::createFolder(archiveFolder);
}

void BrimvaleAppDelegate::windowWillClose()
{
    mWindow->removeEventFilter(this);
    QCoreApplication::quit();
}

void BrimvaleAppDelegate::toggleView()
{
    switch (segController->selectedSegment()) {
    case 0:
        theTabView->setCurrentIndex(0);
        addButton->show();
        renameButton->hide();
        break;
    case 1:
        theTabView->setCurrentIndex(theTabView->count() - 1);
        addButton->hide();
        renameButton->show();
        renameButton->setEnabled(false);
        break;
    default:
        break;
    }
}

bool BrimvaleAppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mWindow && event->type() == QEvent::Close)
        windowWillClose();
    return QObject::eventFilter(watched, event);
}
