#pragma once

#include "motion/InspectionValues.h"
#include "platform/FileTree.h"

#include "ui_BackupWindow.h"
#include "ui_ConfirmSheet.h"
#include "ui_EditPage.h"
#include "ui_HelpSheet.h"
#include "ui_HistoryResetSheet.h"
#include "ui_HistoryWindow.h"
#include "ui_InstallPage.h"
#include "ui_MainWindow.h"
#include "ui_RenameSheet.h"
#include "ui_SubCategorySheet.h"

#include <QObject>
#include <QTimer>

class InstallationHistoryModel;
class dornelHelpBook;

/// The one controller: every click, drop, sheet and timer tick runs one of its actions to the end,
/// on the one thread. Its outlets are the controls that it inherits from the forms; beside them
/// it holds two timers and their counter, and nothing else.
///
/// The actions stand in the order of the rooms, and each group is implemented in its room's
/// folder. Wiring.cpp says which control triggers which action.
class BrimvaleAppDelegate : public QObject,
                            private Ui::MainWindow,
                            private Ui::InstallPage,
                            private Ui::EditPage,
                            private Ui::SubCategorySheet,
                            private Ui::RenameSheet,
                            private Ui::ConfirmSheet,
                            private Ui::HistoryWindow,
                            private Ui::HistoryResetSheet,
                            private Ui::BackupWindow,
                            private Ui::HelpSheet
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BrimvaleAppDelegate)

public:
    /// Builds the windows, wires them and brings them into their initial state; shows none.
    BrimvaleAppDelegate();
    ~BrimvaleAppDelegate() override;

    // app/BrimvaleAppDelegate.cpp: start, mode switch, end
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void windowWillClose();
    void toggleView();
    bool eventFilter(QObject *watched, QEvent *event) override;

    // app/Shortcuts.cpp
    void runHelpWebView();
    void openTemplatesRootFolder();
    void openCompositionsFolder();
    void openEffectsFolder();
    void openGeneratorsFolder();
    void openTitlesFolder();
    void openTransitionsFolder();
    void linkToPayPal();

    // library/FolderStructure.cpp
    void createFolderStructure();

    // installer/InstallIntake.cpp
    void updateText(const QString &path);
    void clearInputs();
    void doOpen();
    void setPathEnter();

    // installer/InstallIntoCategory.cpp
    void moveAndClose();

    // installer/InstallIntoSubCategory.cpp
    void createCategory();
    void closeSheet();
    void generateCustomFolder();

    // editor/EditorIntake.cpp
    /// False when the inspection ended before its last value.
    bool setString(const QString &path);
    void openFile();
    void clearEditor();

    // editor/ThemeReference.cpp
    void addElements();

    // editor/FrameRateConform.cpp
    void conform();
    void checkThem1();
    void writeToFile();
    void closeConfirmSheet();

    // editor/TemplateRename.cpp
    void raiseRenameSheet();
    void clearRenameTextField();
    void renameTemplate();
    void cancelRenameTemplate();

    // editor/OriginalArchive.cpp
    void backupOriginal();
    void openArchivesFolder();

    // history/InstallationHistory.cpp
    void checkThem();
    void clearLogs();
    void openLogsWindow();
    void printHelpText();
    void openLogSheet();
    void closeLogSheet();

    // backup/LibraryBackup.cpp
    void runPrefsWindow();
    void quitPrefs();
    void setBackupPath1();
    void backup();

    // help/HelpSheet.cpp
    void openHelpSheet();
    void closeHelpSheet();

private:
    using Animation = void (BrimvaleAppDelegate::*)();

    // app/Wiring.cpp
    void buildWindows();
    void wireControls();
    static void pressByReturn(QWidget *control, QAbstractButton *button);

    // app/Menus.cpp
    void wireMenus();

    // app/ProgressAnimation.cpp
    void startAnimation(QTimer *&slot, std::chrono::milliseconds interval, Animation tick);
    bool advanceAnimation(QTimer *&slot, QProgressBar *bar);

    // installer/
    void enableInstallButtons(bool enabled);
    void moveTemplate(const FileTree::Item &source, const QString &folder);
    void announceInstall(const QString &informativeText);

    // editor/
    void takeChosenFile(const QString &path);
    void enableChanges(bool enabled);
    void showKind(const QString &extension);
    void rejectFile();
    void showTheme(const InspectionValues &values);
    bool showInspection(const InspectionValues &values);
    void askForFrameRate();
    void endArchiveOffer();
    bool writeDocument(const Result<ProjectDocument> &document, const QString &path);

    // backup/
    void copyLibrary(const QString &folder, const QString &datedName);
    void showBackupProgress(const FileTree::CopyProgress &progress);

    // The windows that the forms describe. A sheet is a child of its window.
    QWidget *window = nullptr; // no window of the program's uses this outlet
    QMainWindow *mWindow = nullptr;
    QDialog *catSheet = nullptr;
    QDialog *renameSheet = nullptr;
    QDialog *confirmSheet = nullptr;
    QDialog *logWindow = nullptr;
    QDialog *logSheet = nullptr;
    QDialog *prefWindow = nullptr;
    QDialog *theSheet = nullptr;

    InstallationHistoryModel *arrayController = nullptr;
    dornelHelpBook *helpBook = nullptr;

    // An empty slot is an animation that does not run. Both count on the one counter.
    QTimer *timer = nullptr;
    QTimer *theTimer = nullptr;
    qint32 count = 0;
};
