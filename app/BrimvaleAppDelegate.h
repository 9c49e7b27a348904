#pragma once

#include "ui_MainWindow.h"

#include <QMainWindow>
#include <QObject>

#include <memory>

class BackupWindow;
class EditPage;
class HelpSheet;
class HistoryWindow;
class InstallPage;
class dornelHelpBook;

/// The program: makes the windows, connects them with each other, starts, switches between the
/// two modes and ends.
class BrimvaleAppDelegate : public QObject, private Ui::MainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BrimvaleAppDelegate)

public:
    /// Brings the windows into their initial state; shows none.
    BrimvaleAppDelegate();
    ~BrimvaleAppDelegate() override;

    // BrimvaleAppDelegate.cpp
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void windowWillClose();
    void toggleView();
    void runHelpBook();
    void openHelpSheet();
    bool eventFilter(QObject *watched, QEvent *event) override;

    // Shortcuts.cpp
    void runHelpWebView();
    void openTemplatesRootFolder();
    void openCompositionsFolder();
    void openEffectsFolder();
    void openGeneratorsFolder();
    void openTitlesFolder();
    void openTransitionsFolder();
    void linkToPayPal();

private:
    void buildWindows();
    void connectRooms(); // Rooms.cpp
    void wireMenus();    // Menus.cpp
    void wireModeItems();
    void wireEditMenu();

    qint32 count = 0; // of all progress animations

    std::unique_ptr<QMainWindow> mWindow;
    std::unique_ptr<QWidget> window; // no window of the program's uses this outlet
    std::unique_ptr<HistoryWindow> logWindow;
    std::unique_ptr<BackupWindow> prefWindow;
    std::unique_ptr<dornelHelpBook> helpBook; // none before it is first opened
    // Of the main window.
    InstallPage *installPage = nullptr;
    EditPage *editPage = nullptr;
    HelpSheet *theSheet = nullptr;
};
