#include "BackupWindow.h"

#include "library/TemplateLibrary.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "widgets/Focus.h"
#include "widgets/InputShield.h"
#include "widgets/KeepPlace.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

BackupWindow::BackupWindow()
{
    setupUi(this);
    for (QWidget *each : std::initializer_list<QWidget *>{theBackupButton, existsTextField, mCancel,
                                                          backupProgress})
        keepPlaceWhenHidden(each);
    backupProgress->hide();
    theBackupButton->hide();
    connect(Ui::BackupWindow::createFolderStructure, &QAbstractButton::clicked, this,
            &BackupWindow::createFolderStructure);
    connect(mCancel, &QAbstractButton::clicked, this, &BackupWindow::quitPrefs);
    connect(Ui::BackupWindow::setBackupPath1, &QAbstractButton::clicked, this,
            &BackupWindow::setBackupPath1);
    connect(theBackupButton, &QAbstractButton::clicked, this, &BackupWindow::backup);
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
    makeKeyAndOrderFront(this);
}

void BackupWindow::quitPrefs()
{
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
    QFileDialog chooser(this, tr("Backup Folder Selector"));
    chooser.setFileMode(QFileDialog::Directory);
    chooser.setOption(QFileDialog::ShowDirsOnly);
    chooser.setLabelText(QFileDialog::Accept, tr("Set"));
    chooser.setLabelText(QFileDialog::LookIn,
                         tr("Select a Backup Folder or create a New Backup Folder ..."));
    chooser.resize(820, 520); // room for the message beside the folder
    if (chooser.exec() != QDialog::Accepted)
        return;
    for (const QString &path : chooser.selectedFiles()) {
        backupPath->setText(path);
        theBackupButton->show();
        theFolderImage->setText(Path::lastComponent(backupPath->text()));
        std::ignore = std::ignore =
            SettingsStore().setObject(backupPath->text(), SettingsStore::theAppBackupPath);
        std::ignore = std::ignore =
            SettingsStore().setObject(theFolderImage->text(), SettingsStore::theFolder8899);
    }
}

void BackupWindow::backup()
{
    pleaseWait->setText(tr("Please Wait ..."));
    const QDateTime backupDate = QDateTime::currentDateTime();
    dateFloat->setObjectValue(backupDate);
    const QString prefix = dateFloat->text();
    const QString destination = Path::expandingTilde(backupPath->text());
    backupSpinner->startAnimation();
    copyLibrary(destination, prefix + TemplateLibrary::rootName());
    runEventLoopFor(2500ms);
    lastBackupDate->setObjectValue(backupDate);
    std::ignore = std::ignore =
        SettingsStore().setObject(lastBackupDate->objectValue(), SettingsStore::theLastBackupDate);
    backupSpinner->stopAnimation();
    pleaseWait->clear();
}

/// The copy takes its dated name when it is whole and on the disk. A folder of the library's name
/// that stands in the backup folder already is not this backup's: it is left alone, and the copy
/// bears its date from the start.
void BackupWindow::copyLibrary(const QString &folder, const QString &datedName)
{
    const QString name = TemplateLibrary::rootName();
    // Where the user keeps the library elsewhere and a link in Movies, a copy of the link is no
    // backup.
    const FileTree::Item library = FileTree::itemAt(TemplateLibrary::root());
    const QFileInfo taken(Path::joined(folder, name));
    const bool isTaken = taken.exists() || taken.isSymLink();
    const FileTree::Item copy{folder, isTaken ? datedName : name};

    InputShield shield;
    const FileTree::ProgressHandler progress = [&](const FileTree::CopyProgress &done) {
        showBackupProgress(done);
        shield.refreshWindows();
    };
    backupProgress->show();
    if (FileTree::copy(library, copy, progress) && FileTree::flush(folder, progress) && !isTaken)
        std::ignore = FileTree::move(copy, {folder, datedName});
    backupProgress->hide();
    backupAmount->clear();
}

void BackupWindow::showBackupProgress(const FileTree::CopyProgress &progress)
{
    if (progress.bytesTotal <= 0)
        return;
    const double share =
        static_cast<double>(progress.bytesDone) / static_cast<double>(progress.bytesTotal);
    backupProgress->setValue(static_cast<int>(share * backupProgress->maximum()));
    const auto amount = [](qint64 bytes) {
        return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
    };
    backupAmount->setText(
        tr("%1 of %2").arg(amount(progress.bytesDone), amount(progress.bytesTotal)));
}
