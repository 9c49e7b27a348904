#pragma once

#include "dropZone.h"
#include "library/TemplateFolder.h"
#include "platform/FileTree.h"

#include "ui_InstallPage.h"

#include <QTimer>

#include <optional>

class ProgressAnimation;
class SubCategorySheet;
class TemplateReader;
struct TemplateCategory;

/// The Install mode: takes a template folder in and installs it into a category of the library,
/// or into a sub-category that the user names.
class InstallPage : public dropZone, private Ui::InstallPage
{
    Q_OBJECT

public:
    /// Its sheet belongs to the window. The counter is the one of all progress animations.
    InstallPage(QWidget *window, qint32 &count);

    void awakeFromNib();
    void applicationDidFinishLaunching();

    // InstallPage.cpp: what is to be installed
    void updateText(const QString &path);
    void clearInputs();
    void doOpen();
    void setPathEnter();

    // InstallPageActions.cpp: installing it
    void moveAndClose();
    void createCategory();
    void generateCustomFolder();
    void checkThem();

    // What menu items stand for.
    using Ui::InstallPage::clearButton;
    using Ui::InstallPage::mNewCatButton;
    using Ui::InstallPage::mSendButton;

Q_SIGNALS:
    /// An install and its animation have ended. The category is the one selected now, the name the
    /// one that the sub-category sheet took when it was last opened.
    void installed(const QString &category, const QString &templateName);
    /// The user wants to see the folder of the category in that row.
    void categoryFolderRequested(int row);
    /// The user wants to make the library, which is missing.
    void libraryRequested();

protected:
    [[nodiscard]] bool takeDropped(const QString &path) override;
    bool event(QEvent *event) override;

private:
    void wireControls();
    void enableInstallButtons(bool enabled);
    void leaveInput();
    [[nodiscard]] const TemplateCategory *selectedCategory() const;
    void moveTemplate(const FileTree::Item &source, const QString &subCategory);

    // InstallPageCard.cpp: what is said of it
    void wireCard();
    void refreshCard();
    [[nodiscard]] FileTree::Item templateInHand() const;
    void readTemplate(const QString &path);
    void showContents(const TemplateFolder &folder, const QImage &picture);
    void showTemplate(const FileTree::Item &item);

    SubCategorySheet *catSheet = nullptr;
    ProgressAnimation *timer = nullptr;

    // Of the card.
    TemplateReader *reader = nullptr;
    QTimer cardDelay{this};
    QString pathRead;
    std::optional<TemplateFolder> contents; // none before they are read
    bool isChoosing = false;
    struct
    {
        QString name;
        QString place;
        bool isMoved = false; // or all or some of the original is still where it was
    } justInstalled;
};
