#pragma once

#include "platform/FileTree.h"

#include "ui_BackupWindow.h"

#include <QDialog>

/// Creates the library's folders, and copies the library into a folder of the user's choice.
class BackupWindow : public QDialog, private Ui::BackupWindow
{
    Q_OBJECT

public:
    BackupWindow();

    // What the settings remember of earlier runs.
    void setBackupPath(const QString &path);
    void setLastBackupDate(const QVariant &date);
    void setBackupFolderName(const QString &name);

    void runPrefsWindow();
    void quitPrefs();
    void createFolderStructure();
    void setBackupPath1();
    void backup();
    void showBackup();

private:
    /// What a backup left in its folder.
    struct Written
    {
        QString name; ///< none: nothing whole
        qint64 bytes = 0;
        bool isOnDisk = false;
    };

    void resetResult();
    void showResult(const Written &written, const QString &folder, const QString &datedName);
    [[nodiscard]] Written copyLibrary(const QString &folder, const QString &datedName);
    void showBackupProgress(const FileTree::CopyProgress &progress);
};
