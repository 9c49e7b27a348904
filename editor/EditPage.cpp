#include "EditPage.h"

#include "ConfirmSheet.h"
#include "RenameSheet.h"
#include "library/TemplateLibrary.h"
#include "motion/ProjectKind.h"
#include "platform/Alert.h"
#include "platform/DiagnosticLog.h"
#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/KeepPlace.h"
#include "widgets/Mark.h"
#include "widgets/ProgressAnimation.h"
#include "widgets/TextColour.h"

#include <QFileDialog>
#include <QIcon>

using namespace Qt::StringLiterals;

EditPage::EditPage(QWidget *window, qint32 &count) : dropZone1(window)
{
    setupUi(this);
    renameSheet = new RenameSheet(window);
    confirmSheet = new ConfirmSheet(window);
    theTimer = new ProgressAnimation(progressBarT, count);
    frPopupMark = new Mark(this);
    keepPlaceWhenHidden(progressBarT);
    for (FactLabel *each : facts()) {
        if (!each->hasPaper())
            each->setContentsMargins(8, 0, 8, 0); // in line with the one on paper
    }
    fitToFont();
    wireControls();
}

void EditPage::wireControls()
{
    connect(this, &dropZone1::hovered, editHint, &DropHint::setHighlighted);
    connect(oFile, &QAbstractButton::clicked, this, &EditPage::openFile);
    connect(tClearButton, &QAbstractButton::clicked, this, &EditPage::clearEditor);
    connect(setButton, &QAbstractButton::clicked, this, &EditPage::addElements);
    // An empty name is written by the button alone: a Return behind a drop would wipe the theme.
    connect(element, &QLineEdit::returnPressed, setButton, [this] {
        if (!element->text().isEmpty())
            setButton->click();
    });
    connect(frPopup, &QComboBox::activated, frPopupMark,
            [this] { frPopupMark->setWidget(nullptr); });
    // Return in the rate list presses nothing: one that chooses a rate would conform at once.
    connect(conformButton, &QAbstractButton::clicked, this, &EditPage::conform);
    connect(orgButton, &QAbstractButton::clicked, this, &EditPage::backupOriginal);
    connect(renameSheet, &RenameSheet::nameChosen, this, &EditPage::renameTemplate);
    connect(confirmSheet, &ConfirmSheet::confirmed, this, &EditPage::writeToFile);
    connect(theTimer, &ProgressAnimation::ticked, this, &EditPage::checkThem1);
}

void EditPage::awakeFromNib()
{
    frPopup->setCurrentIndex(0);
    reset();
}

void EditPage::applicationDidFinishLaunching()
{
    // Once more, so that the state after launch is this one whatever came before.
    orgButton->hide();
    say({}, {});
}

bool EditPage::takeDropped(const QString &path)
{
    return setString(path);
}

bool EditPage::setString(const QString &path)
{
    return takeFile(path, Intake::Drop);
}

void EditPage::openFile()
{
    Q_EMIT renameAllowed(true); // also when the panel is cancelled
    auto *panel =
        new QFileDialog(window(), tr("Open"), Path::expandingTilde(TemplateLibrary::root()));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::ExistingFile);
    QStringList patterns;
    for (const ProjectKind &kind : projectKinds())
        patterns << u"*."_s + kind.extension;
    panel->setNameFilter(tr("Motion files (%1)").arg(patterns.join(u' ')));
    connect(panel, &QFileDialog::filesSelected, this, [this](const QStringList &paths) {
        for (const QString &path : paths) {
            // A panel's filter lets other names through: typed ones, and those in upper case.
            if (projectKind(Path::extension(path)))
                std::ignore = takeFile(path, Intake::Panel);
            else
                declineFile();
        }
    });
    panel->open();
}

/// A file that the user picked out of Motion files differs from a dropped one: the window is in
/// front already, the panel has allowed the renaming, and nothing is refused.
bool EditPage::takeFile(const QString &path, Intake intake)
{
    input1->setText(path);
    if (intake == Intake::Drop)
        makeKeyAndOrderFront(window());
    const QString name = Path::lastComponent(input1->text());
    display->setText(Path::withoutExtension(name));
    setLoaded(true);
    markMessageAsEarlier(true);
    if (intake == Intake::Drop)
        Q_EMIT renameAllowed(true);
    makeFirstResponder(window(), element);
    setFocusRing(element, FocusRing::Default);
    const QString extension = Path::extension(name);
    typeText->setText(extension);
    showKind(extension);

    const InspectionValues values = readInspectionValues(openProjectDocument(path));
    showTheme(values);
    if (intake == Intake::Drop && !projectKind(extension))
        rejectFile();
    return showInspection(values);
}

void EditPage::clearEditor()
{
    const FocusGuard guard(window());
    reset();
    Q_EMIT renameAllowed(false);
}

void EditPage::reset()
{
    for (QLabel *each : std::initializer_list<QLabel *>{
             display, input1, textField1, typeText, theFrames, theFrameRate, theDuration, secFloat,
             resOutput, statusImage, dateTextField, parText})
        each->clear();
    say({}, {});
    element->clear();
    setLoaded(false);
    setFocusRing(element, FocusRing::None);
}

void EditPage::setLoaded(bool loaded)
{
    oFile->setEnabled(!loaded);
    for (QWidget *each :
         std::initializer_list<QWidget *>{frPopup, conformButton, setButton, element, tClearButton})
        each->setEnabled(loaded);
    orgButton->setVisible(loaded);
    showStanding(loaded ? FactLabel::Standing::Earlier : FactLabel::Standing::None);
    showCard();
}

/// An unknown extension leaves the icon as it was.
void EditPage::showKind(const QString &extension)
{
    if (const ProjectKind *kind = projectKind(extension))
        statusImage->setPixmap(picture(kind->iconName, statusImage->width()));
}

/// Resets part of the page before the alert is shown; the path and the inspected values stay.
void EditPage::rejectFile()
{
    for (QLabel *each : std::initializer_list<QLabel *>{display, textField1, typeText})
        each->clear();
    setLoaded(false);
    makeFirstResponder(window(), nullptr);
    setFocusRing(element, FocusRing::Default);
    display->setPlaceholderText(tr("Not a Motion file"));
    runAlert(window(), tr("Project File Error!"),
             tr("This Edit module only accepts Motion Project files ..."));
    takeFocusOffControls(window());
}

void EditPage::showTheme(const InspectionValues &values)
{
    if (const auto theme = firstValue(values.theme)) {
        textField1->setValue(*theme);
        setTextColour(textField1, calibratedColour(0, 0, 0));
        diagnosticLog(values.theme);
    } else {
        textField1->setValue(tr("Template does not include Theme reference ..."));
        setTextColour(textField1, calibratedColour(0, 0, 1));
    }
}

/// Ends at the first value that the file lacks, and answers false; the fields from there on keep
/// what they show.
bool EditPage::showInspection(const InspectionValues &values)
{
    const auto frameRate = firstValue(values.frameRate);
    if (!frameRate)
        return false;
    theFrameRate->setValue(*frameRate);
    diagnosticLog(values.frameRate);

    const auto duration = firstValue(values.duration);
    if (!duration)
        return false;
    theFrames->setValue(*duration);
    diagnosticLog(values.duration);

    // From the fields, so that the seconds belong to what the fields show.
    secFloat->setText(secondsText(theFrames->text(), theFrameRate->text()));
    theDuration->setValue(secFloat->text() + u' ' + tr("seconds"));

    const auto width = firstValue(values.width);
    const auto height = firstValue(values.height);
    if (!width || !height)
        return false;
    resOutput->setValue(*width + u'x' + *height);

    if (const auto ratio = firstValue(values.pixelAspectRatio))
        parText->setValue(pixelAspectRatioLabel(*ratio));
    return true;
}

EditPage::Facts EditPage::facts() const
{
    return {textField1, theFrameRate, theFrames, theDuration, resOutput, parText};
}
