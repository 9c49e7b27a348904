#include "BackupWindow.h"

#include "library/TemplateLibrary.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/RunLoop.h"
#include "platform/Workspace.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"
#include "widgets/FolderChooser.h"
#include "widgets/InputShield.h"
#include "widgets/KeepPlace.h"
#include "widgets/WholeContents.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

BackupWindow::BackupWindow()
{
    setupUi(this);
    keepContentsWhole(this);
    const int character = fontMetrics().averageCharWidth();
    setMinimumWidth(76 * character);
    resize(92 * character, 0);
    for (QWidget *each : std::initializer_list<QWidget *>{existsTextField, mCancel, backupProgress,
                                                          Ui::BackupWindow::showBackup})
        keepPlaceWhenHidden(each);
    backupProgress->hide();
    theBackupButton->hide();
    Ui::BackupWindow::showBackup->hide();
    connect(Ui::BackupWindow::createFolderStructure, &QAbstractButton::clicked, this,
            &BackupWindow::createFolderStructure);
    connect(mCancel, &QAbstractButton::clicked, this, &BackupWindow::quitPrefs);
    connect(Ui::BackupWindow::setBackupPath1, &QAbstractButton::clicked, this,
            &BackupWindow::setBackupPath1);
    connect(theBackupButton, &QAbstractButton::clicked, this, &BackupWindow::backup);
    connect(Ui::BackupWindow::showBackup, &QAbstractButton::clicked, this,
            &BackupWindow::showBackup);
    connect(closePrefWindow, &QAbstractButton::clicked, this, &QWidget::close);
}

void BackupWindow::setBackupPath(const QString &path)
{
    backupPath->setText(path);
}

void BackupWindow::setLastBackupDate(const QVariant &date)
{
    lastBackupDate->setObjectValue(date);
}

void BackupWindow::setBackupFolderName(const QString &name)
{
    theFolderImage->setText(name);
}

void BackupWindow::runPrefsWindow()
{
    existsTextField->hide();
    mCancel->hide();
    pleaseWait->clear();
    theBackupButton->setVisible(!backupPath->text().isEmpty());
    resetResult();
    makeKeyAndOrderFront(this);
}

void BackupWindow::quitPrefs()
{
    const FocusGuard guard(this);
    existsTextField->clear();
    mCancel->hide();
}

void BackupWindow::createFolderStructure()
{
    const QString root = Path::expandingTilde(TemplateLibrary::root());
    if (FileTree::exists(root)) {
        existsTextField->show();
        mCancel->show();
        existsTextField->setText(tr("Folder Structure already exists - ! ..."));
    }
    if (!FileTree::exists(root)) {
        spinner->startAnimation();
        if (!runEventLoopFor(1500ms)) // so that the user sees work happen
            return;
        spinner->stopAnimation();
        existsTextField->show();
        mCancel->show();
        existsTextField->setText(tr("Folder Structure Created"));
        std::ignore = FileTree::createFolder(root);
    }
    for (const TemplateCategory &category : TemplateLibrary::categories()) {
        const QString folder = Path::expandingTilde(category.path);
        if (!FileTree::exists(folder))
            std::ignore = FileTree::createFolder(folder);
    }
}

void BackupWindow::setBackupPath1()
{
    const FolderChooser::Texts texts{tr("Backup Folder Selector"),
                                     tr("Select a Backup Folder or create a New Backup Folder ..."),
                                     tr("Set")};
    const QString present = Path::expandingTilde(backupPath->text());
    FolderChooser chooser(this, texts, FileTree::exists(present) ? present : u"~"_s,
                          FolderChooser::Start::MayBeTaken);
    const QString result = backupResult->text();
    backupResult->setText(texts.message);
    const bool isChosen = chooser.exec() == QDialog::Accepted;
    backupResult->setText(result);
    if (!isChosen)
        return;
    for (const QString &path : chooser.selectedFiles()) {
        backupPath->setText(path);
        theBackupButton->show();
        theFolderImage->setText(Path::lastComponent(backupPath->text()));
        std::ignore =
            SettingsStore().setObject(backupPath->text(), SettingsStore::theAppBackupPath);
        std::ignore =
            SettingsStore().setObject(theFolderImage->text(), SettingsStore::theFolder8899);
    }
    resetResult();
}

void BackupWindow::backup()
{
    pleaseWait->setText(tr("Please Wait ..."));
    const QDateTime backupDate = QDateTime::currentDateTime();
    dateFloat->setObjectValue(backupDate);
    const QString prefix = dateFloat->text();
    const QString destination = Path::expandingTilde(backupPath->text());
    backupSpinner->startAnimation();
    backupResult->clear();
    Ui::BackupWindow::showBackup->hide();
    const QString datedName = prefix + TemplateLibrary::rootName();
    const Written written = copyLibrary(destination, datedName);
    std::ignore = runEventLoopFor(2500ms);
    lastBackupDate->setObjectValue(backupDate);
    std::ignore =
        SettingsStore().setObject(lastBackupDate->objectValue(), SettingsStore::theLastBackupDate);
    backupSpinner->stopAnimation();
    pleaseWait->clear();
    showResult(written, destination, datedName);
}

/// The copy takes its dated name when it is whole and on the disk. A folder of the library's name
/// that stands in the backup folder already is not this backup's: it is left alone, and the copy
/// bears its date from the start.
BackupWindow::Written BackupWindow::copyLibrary(const QString &folder, const QString &datedName)
{
    const QString name = TemplateLibrary::rootName();
    // Where the user keeps the library elsewhere and a link in Movies, a copy of the link is no
    // backup.
    const FileTree::Item library = FileTree::itemAt(TemplateLibrary::root());
    const QFileInfo taken(Path::joined(folder, name));
    const bool isTaken = taken.exists() || taken.isSymLink();
    const FileTree::Item copy{folder, isTaken ? datedName : name};
    const FileTree::Item dated{folder, datedName};

    Written written;
    InputShield shield;
    const FileTree::ProgressHandler progress = [&](const FileTree::CopyProgress &done) {
        written.bytes = std::max(written.bytes, done.bytesTotal);
        showBackupProgress(done);
        shield.refreshWindows();
    };
    backupProgress->show();
    if (FileTree::copy(library, copy, progress)) {
        written.name = copy.name;
        written.isOnDisk = static_cast<bool>(FileTree::flush(folder, progress));
        if (written.isOnDisk && !isTaken && FileTree::move(copy, dated)) {
            written.name = datedName;
            written.isOnDisk = static_cast<bool>(FileTree::flush(dated));
        }
    }
    backupProgress->hide();
    backupProgress->setValue(0);
    backupAmount->clear();
    return written;
}

/// Before a backup: what one does.
void BackupWindow::resetResult()
{
    backupResult->setText(
        backupPath->text().isEmpty()
            ? tr("Choose the folder for your backups, on another disk if you can.")
            : tr("Every backup is a complete copy. Earlier ones stay as they are."));
    Ui::BackupWindow::showBackup->hide();
}

void BackupWindow::showResult(const Written &written, const QString &folder,
                              const QString &datedName)
{
    Ui::BackupWindow::showBackup->setVisible(!written.name.isEmpty());
    const QString where = Path::lastComponent(folder);
    if (written.name.isEmpty()) {
        backupResult->setText(!FileTree::exists(TemplateLibrary::root())
                                  ? tr("Nothing was written: there is no library to copy yet.")
                              : !FileTree::exists(folder)
                                  ? tr("Nothing was written: the backup folder is not there.")
                                  : tr("Nothing was written into “%1”.").arg(where));
        return;
    }
    QString text = tr("Written into “%1”: “%2”").arg(where, written.name);
    if (written.bytes > 0)
        text += tr(", %1").arg(sizeText(written.bytes));
    if (!written.isOnDisk)
        text += tr(". The disk did not confirm that it is whole.");
    else if (written.name != datedName)
        text += tr(". It could not take its name with the date.");
    backupResult->setText(text);
}

void BackupWindow::showBackup()
{
    std::ignore = openFolder(backupPath->text() + u'/');
}

void BackupWindow::showBackupProgress(const FileTree::CopyProgress &progress)
{
    if (progress.bytesTotal <= 0)
        return;
    const double share =
        static_cast<double>(progress.bytesDone) / static_cast<double>(progress.bytesTotal);
    backupProgress->setValue(static_cast<int>(share * backupProgress->maximum()));
    backupAmount->setText(
        tr("%1 of %2").arg(sizeText(progress.bytesDone), sizeText(progress.bytesTotal)));
}
