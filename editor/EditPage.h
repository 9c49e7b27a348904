#pragma once

#include "dropZone1.h"
#include "motion/InspectionValues.h"

#include "ui_EditPage.h"

#include <array>

class ConfirmSheet;
class Mark;
class ProgressAnimation;
class RenameSheet;

/// The Edit mode: takes a Motion file in, shows its facts and changes it in place. The file is the
/// one whose path stands in `input1`, and each action opens it afresh.
class EditPage : public dropZone1, private Ui::EditPage
{
    Q_OBJECT

public:
    /// Its sheets belong to the window. The counter is the one of all progress animations.
    EditPage(QWidget *window, qint32 &count);

    void awakeFromNib();
    void applicationDidFinishLaunching();

    // EditPage.cpp: the file and its facts
    /// False when the inspection ended before its last value.
    [[nodiscard]] bool setString(const QString &path);
    void openFile();
    void clearEditor();

    // EditPageChanges.cpp: what is done to the file
    void addElements();
    void conform();
    void writeToFile();
    void raiseRenameSheet();
    void backupOriginal();
    static void openArchivesFolder();
    void checkThem1();

    // What menu items stand for.
    using Ui::EditPage::conformButton;
    using Ui::EditPage::oFile;
    using Ui::EditPage::orgButton;
    using Ui::EditPage::setButton;
    using Ui::EditPage::tClearButton;

Q_SIGNALS:
    /// Whether there is a file that may be renamed, or may be chosen soon.
    void renameAllowed(bool allowed);

protected:
    [[nodiscard]] bool takeDropped(const QString &path) override;
    void changeEvent(QEvent *event) override;

private:
    enum class Intake { Drop, Panel };
    using Facts = std::array<FactLabel *, 6>;

    void wireControls();
    [[nodiscard]] bool takeFile(const QString &path, Intake intake);
    void setLoaded(bool loaded);
    void reset();
    void showKind(const QString &extension);
    void rejectFile();
    void showTheme(const InspectionValues &values);
    [[nodiscard]] bool showInspection(const InspectionValues &values);
    [[nodiscard]] Facts facts() const;

    // EditPageLook.cpp: what makes the page telling beside its texts
    void fitToFont();
    [[nodiscard]] QPixmap picture(const QString &name, int side) const;
    void showCard();
    void showFileCard(bool isFile);
    void invite(const QString &heading, const QString &text);
    void declineFile();
    void say(const QString &message, const QIcon &icon);
    void markMessageAsEarlier(bool isEarlier);
    void showStanding(FactLabel::Standing standing);
    [[nodiscard]] QStringList factTexts() const;
    void tintChanges(const QStringList &before) const;

    void renameTemplate(const QString &name);
    void askForFrameRate();
    void endArchiveOffer();
    static Outcome writeDocument(const Result<ProjectDocument> &document, const QString &path);

    RenameSheet *renameSheet = nullptr;
    ConfirmSheet *confirmSheet = nullptr;
    ProgressAnimation *theTimer = nullptr;
    Mark *frPopupMark = nullptr;
};
