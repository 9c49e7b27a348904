#include "app/BrimvaleAppDelegate.h"
#include "library/TemplateLibrary.h"
#include "motion/ProjectKind.h"
#include "platform/Alert.h"
#include "platform/DiagnosticLog.h"
#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/TextColour.h"

#include <QFileDialog>
#include <QIcon>

using namespace Qt::StringLiterals;

bool BrimvaleAppDelegate::setString(const QString &path)
{
    input1->setText(path);
    makeKeyAndOrderFront(mWindow);
    const QString name = Path::lastComponent(path);
    display->setText(Path::withoutExtension(name));
    oFile->setEnabled(false);
    enableChanges(true);
    renameButton->setEnabled(true);
    element->setEnabled(true);
    makeFirstResponder(mWindow, element);
    setFocusRing(element, FocusRing::Default);
    orgButton->show();
    tClearButton->setEnabled(true);
    const QString extension = Path::extension(name);
    typeText->setText(extension);
    showKind(extension);

    const InspectionValues values = readInspectionValues(openProjectDocument(path));
    showTheme(values);
    if (!projectKind(extension))
        rejectFile();
    return showInspection(values);
}

void BrimvaleAppDelegate::openFile()
{
    renameButton->setEnabled(true); // also when the panel is cancelled
    auto *panel =
        new QFileDialog(mWindow, tr("Open"), Path::expandingTilde(TemplateLibrary::root()));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::ExistingFile);
    QStringList patterns;
    for (const ProjectKind &kind : projectKinds())
        patterns << u"*."_s + kind.extension;
    panel->setNameFilter(tr("Motion files (%1)").arg(patterns.join(u' ')));
    connect(panel, &QFileDialog::filesSelected, this, [this](const QStringList &paths) {
        for (const QString &path : paths) {
            if (projectKind(Path::extension(path))) // a name may be typed past the filter
                takeChosenFile(path);
        }
    });
    panel->open();
}

/// Like setString, with the differences of a file that the user picked out of Motion files: the
/// window is in front already, and nothing is refused.
void BrimvaleAppDelegate::takeChosenFile(const QString &path)
{
    input1->setText(path);
    const QString name = Path::lastComponent(input1->text());
    display->setText(Path::withoutExtension(name));
    orgButton->show();
    tClearButton->setEnabled(true);
    oFile->setEnabled(false);
    enableChanges(true);
    element->setEnabled(true);
    const QString extension = Path::extension(name);
    typeText->setText(extension);
    makeFirstResponder(mWindow, element);
    setFocusRing(element, FocusRing::Default);
    showKind(extension);

    const InspectionValues values = readInspectionValues(openProjectDocument(path));
    showTheme(values);
    showInspection(values);
}

void BrimvaleAppDelegate::clearEditor()
{
    for (QLabel *each :
         std::initializer_list<QLabel *>{display, input1, textField1, typeText, theFrames,
                                         theFrameRate, theDuration, secFloat, resOutput})
        each->clear();
    element->clear();
    statusImage->clear();
    orgButton->hide();
    dateTextField->clear();
    wasArchived->clear();
    parText->clear();
    oFile->setEnabled(true);
    enableChanges(false);
    element->setEnabled(false);
    setFocusRing(element, FocusRing::None);
    tClearButton->setEnabled(false);
    renameButton->setEnabled(false);
}

void BrimvaleAppDelegate::enableChanges(bool enabled)
{
    frPopup->setEnabled(enabled);
    conformButton->setEnabled(enabled);
    setButton->setEnabled(enabled);
}

/// An unknown extension leaves the icon as it was.
void BrimvaleAppDelegate::showKind(const QString &extension)
{
    if (const ProjectKind *kind = projectKind(extension)) {
        const QIcon icon(u":/"_s + kind->iconName);
        statusImage->setPixmap(icon.pixmap(statusImage->size(), statusImage->devicePixelRatioF()));
    }
}

/// Resets part of the module before the alert is shown; the path and the inspected values stay.
void BrimvaleAppDelegate::rejectFile()
{
    display->clear();
    textField1->clear();
    typeText->clear();
    element->setEnabled(false);
    makeFirstResponder(mWindow, nullptr);
    setFocusRing(element, FocusRing::Default);
    orgButton->hide();
    tClearButton->setEnabled(false);
    oFile->setEnabled(true);
    enableChanges(false);
    runAlert(mWindow, tr("Project File Error!"),
             tr("This Edit module only accepts Motion Project files ..."));
}

void BrimvaleAppDelegate::showTheme(const InspectionValues &values)
{
    if (const auto theme = firstValue(values.theme)) {
        textField1->setText(*theme);
        setTextColour(textField1, calibratedColour(0, 0, 0));
        diagnosticLog(values.theme);
    } else {
        textField1->setText(tr("Template does not include Theme reference ..."));
        setTextColour(textField1, calibratedColour(0, 0, 1));
    }
}

/// Ends at the first value that the file lacks, and answers false; the fields from there on keep
/// what they show.
bool BrimvaleAppDelegate::showInspection(const InspectionValues &values)
{
    const auto frameRate = firstValue(values.frameRate);
    if (!frameRate)
        return false;
    theFrameRate->setText(*frameRate);
    diagnosticLog(values.frameRate);

    const auto duration = firstValue(values.duration);
    if (!duration)
        return false;
    theFrames->setText(*duration);
    diagnosticLog(values.duration);

    // From the fields, so that the seconds belong to what the fields show.
    secFloat->setText(secondsText(theFrames->text(), theFrameRate->text()));
    theDuration->setText(secFloat->text() + u' ' + tr("seconds"));

    const auto width = firstValue(values.width);
    const auto height = firstValue(values.height);
    if (!width || !height)
        return false;
    resOutput->setText(*width + u'x' + *height);

    if (const auto ratio = firstValue(values.pixelAspectRatio))
        parText->setText(pixelAspectRatioLabel(*ratio));
    return true;
}
