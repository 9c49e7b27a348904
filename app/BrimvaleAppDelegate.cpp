#include "BrimvaleAppDelegate.h"

#include "backup/BackupWindow.h"
#include "editor/ArchiveFolder.h"
#include "editor/EditPage.h"
#include "help/HelpSheet.h"
#include "help/dornelHelpBook.h"
#include "history/HistoryWindow.h"
#include "installer/InstallPage.h"
#include "platform/FileTree.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"
#include "widgets/Legibility.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>

using namespace Qt::StringLiterals;

namespace {

QIcon applicationIcon()
{
    QIcon icon(u":/brimvale.png"_s);
    for (const int size : {16, 24, 32, 48})
        icon.addFile(u":/brimvale-%1.png"_s.arg(size));
    return icon;
}

} // namespace

BrimvaleAppDelegate::BrimvaleAppDelegate()
{
    buildWindows();
    connectRooms();
    wireMenus();
    awakeFromNib();
}

BrimvaleAppDelegate::~BrimvaleAppDelegate() = default;

void BrimvaleAppDelegate::buildWindows()
{
    Q_INIT_RESOURCE(brimvale);
    QApplication::setWindowIcon(applicationIcon());
    keepPlaceholdersLegible(this);

    mWindow = std::make_unique<QMainWindow>();
    setupUi(mWindow.get());
    installPage = new InstallPage(mWindow.get(), count);
    theTabView->addWidget(installPage);
    editPage = new EditPage(mWindow.get(), count);
    theTabView->addWidget(editPage);
    // The footer comes last: the pages joined the window behind it.
    QWidget *last = editPage->tClearButton;
    for (QToolButton *next : {Ui::MainWindow::openTemplatesRootFolder, openArchivesFolder,
                              openLogsWindow, runPrefsWindow, Ui::MainWindow::openHelpSheet}) {
        QWidget::setTabOrder(std::exchange(last, next), next);
        growIcon(next, 16);
    }
    theSheet = new HelpSheet(mWindow.get());

    window = std::make_unique<QWidget>();
    window->setObjectName(u"window"_s);
    logWindow = std::make_unique<HistoryWindow>();
    prefWindow = std::make_unique<BackupWindow>();
}

void BrimvaleAppDelegate::awakeFromNib()
{
    segController->setTag(0, 0);
    segController->setTag(1, 1);
    installPage->awakeFromNib();
    addButton->show();
    editPage->awakeFromNib();
    renameButton->hide();
}

void BrimvaleAppDelegate::applicationDidFinishLaunching()
{
    installPage->applicationDidFinishLaunching();
    makeKeyAndOrderFront(mWindow.get());
    prefWindow->setBackupPath(SettingsStore().object(SettingsStore::theAppBackupPath).toString());
    prefWindow->setLastBackupDate(SettingsStore().object(SettingsStore::theLastBackupDate));
    prefWindow->setBackupFolderName(
        SettingsStore().object(SettingsStore::theFolder8899).toString());
    logWindow->setInstallations(SettingsStore().object(SettingsStore::installations));
    editPage->applicationDidFinishLaunching();

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

void BrimvaleAppDelegate::runHelpBook()
{
    // Its pages and pictures are most of the work of a start, and seldom read.
    if (!helpBook)
        helpBook = std::make_unique<dornelHelpBook>();
    helpBook->runHelpBook();
}

void BrimvaleAppDelegate::openHelpSheet()
{
    theSheet->openHelpSheet(theTabView->currentIndex());
}

bool BrimvaleAppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mWindow.get() && event->type() == QEvent::Close)
        windowWillClose();
    return QObject::eventFilter(watched, event);
}
