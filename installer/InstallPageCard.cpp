#include "InstallPage.h"
#include "SubCategorySheet.h"
#include "TemplateReader.h"
#include "library/InstallForecast.h"
#include "motion/ProjectKind.h"
#include "platform/Path.h"
#include "widgets/ProgressAnimation.h"

#include <QButtonGroup>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Stands for a template without a picture of its own.
QIcon kindIcon(const TemplateFolder &folder)
{
    const ProjectKind *kind = projectKind(mainExtension(folder));
    return QIcon(kind ? QString(u":/"_s + kind->iconName) : u":/icons/library-64.png"_s);
}

} // namespace

void InstallPage::wireCard()
{
    reader = new TemplateReader(this);
    cardDelay.setSingleShot(true);
    connect(&cardDelay, &QTimer::timeout, this, &InstallPage::refreshCard);
    // Soon, not at once: the action that changes the path changes more than the path. Of a path
    // that is being typed each half is wrong.
    connect(input, &QLineEdit::textChanged, this,
            [this] { cardDelay.start(input->isModified() ? 300ms : 0ms); });
    const auto soon = [this] { cardDelay.start(0ms); };
    connect(input, &QLineEdit::editingFinished, this, soon);
    connect(theMatrix, &QButtonGroup::idToggled, this, soon);
    connect(catSheet, &SubCategorySheet::subCategoryChanged, this, soon);
    connect(catSheet, &QDialog::finished, this, soon);
    connect(reader, &TemplateReader::hasRead, this, &InstallPage::showContents);
    connect(installHint, &TemplateCard::libraryRequested, this, &InstallPage::libraryRequested);
}

/// The user comes back from another window, where the library may have been made, or from another
/// program, where anything may have happened to the folder.
bool InstallPage::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        cardDelay.start(0ms);
        if (!pathRead.isEmpty() && !timer->isRunning())
            reader->read(pathRead, installHint->pictureSize());
    }
    return dropZone::event(event);
}

/// Of the template in hand: the one in the field, or the one that the open sheet has taken.
FileTree::Item InstallPage::templateInHand() const
{
    if (catSheet->isVisible())
        return catSheet->source();
    return {Path::withoutLastComponent(input->text()), Path::lastComponent(input->text())};
}

void InstallPage::refreshCard()
{
    const FileTree::Item item = templateInHand();
    const QString path = item.name.isEmpty()
                             ? QString()
                             : Path::expandingTilde(Path::joined(item.folder, item.name));
    if (isChoosing) {
        installHint->showMessage(tr("Select Motion Content Folder ..."),
                                 tr("Nothing moves before you install it."));
    } else if (!path.isEmpty()) {
        justInstalled = {};
        readTemplate(path);
        showTemplate(item);
    } else if (catSheet->isVisible()) {
        catSheet->setWarnings({});
        installHint->showInvitation();
    } else if (!timer->isRunning()) { // what is being installed stays shown meanwhile
        readTemplate(path);
        if (justInstalled.name.isEmpty())
            installHint->showInvitation();
        else
            installHint->showMessage(
                tr("%1 is installed").arg(justInstalled.name),
                (justInstalled.isMoved
                     ? tr("You find it in %1.")
                     : tr("You find it in %1. Not all of the original could be removed."))
                    .arg(justInstalled.place));
    }
}

/// Once for each path: nothing but the path decides what is in it.
void InstallPage::readTemplate(const QString &path)
{
    if (path == pathRead)
        return;
    pathRead = path;
    contents.reset();
    reader->cancel();
    installHint->setPicture({}, kindIcon({}));
    if (!path.isEmpty())
        reader->read(path, installHint->pictureSize());
}

void InstallPage::showContents(const TemplateFolder &folder, const QImage &picture)
{
    contents = folder;
    installHint->setPicture(picture, kindIcon(folder));
    refreshCard();
}

void InstallPage::showTemplate(const FileTree::Item &item)
{
    const TemplateCategory *category = selectedCategory();
    if (!category)
        return;
    const QString subCategory = catSheet->isVisible() ? catSheet->subCategory() : QString();
    const bool isChosen = mSendButton->isEnabled();
    const InstallForecast forecast =
        forecastInstall(item, *category, subCategory, contents, isChosen);
    const bool isFolder = contents && contents->kind == TemplateFolder::Kind::Folder;
    installHint->showTemplate({item.name, isFolder ? contentsText(*contents) : QString(),
                               TemplateLibrary::placeName(*category, subCategory),
                               theMatrix->checkedButton()->icon(), forecast.warnings,
                               forecast.place == InstallForecast::Place::Missing});
    catSheet->setWarnings(forecast.warnings);
}
