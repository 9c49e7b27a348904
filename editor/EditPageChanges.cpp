#include "ArchiveFolder.h"
#include "ConfirmSheet.h"
#include "EditPage.h"
#include "RenameSheet.h"
#include "motion/ProjectChanges.h"
#include "platform/DiagnosticLog.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/Workspace.h"
#include "widgets/Focus.h"
#include "widgets/Mark.h"
#include "widgets/ProgressAnimation.h"
#include "widgets/TextColour.h"

#include <QDateTime>
#include <QIcon>
#include <QStyle>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void EditPage::addElements()
{
    const QStringList before = factTexts();
    const QString path = input1->text();
    Result<ProjectDocument> document = openProjectDocument(path);
    const QStringList themes = nodeValues(document, {"theme"}).front();
    if (const auto theme = firstValue(themes)) {
        textField1->setValue(*theme);
        diagnosticLog(themes);
    } else {
        if (document && !insertTheme(*document))
            return;
        progressBarT->show();
        // What was written is what is in memory; after a failure the file decides.
        if (!writeDocument(document, path))
            document = openProjectDocument(path);
        textField1->setValue(tr("Template does not include Theme reference ..."));
    }
    setTextColour(textField1, calibratedColour(0, 0, 0));

    if (document && setTheme(*document, element->text()) > 0)
        textField1->setValue(element->text());
    if (writeDocument(document, path))
        tintChanges(before);
    element->clear();
    endArchiveOffer();
    say({}, {});
    theTimer->start(4ms);
}

void EditPage::conform()
{
    const QStringList before = factTexts();
    const QString path = input1->text();
    Result<ProjectDocument> document = openProjectDocument(path);
    if (!document)
        return;
    const int index = frPopup->currentIndex();
    const auto rate = conformedRate(index, theDuration->text());
    const ConformMatches matches = conformFirstTriple(*document, rate);
    if (matches.anyPair)
        endArchiveOffer();
    if (!matches.anyTriple)
        return;

    if (rate) {
        theFrames->setValue(rate->frames);
        theFrameRate->setValue(rate->frameRate);
        say({}, {});
        progressBarT->show();
    } else if (index == 0) {
        askForFrameRate();
    }
    frPopup->setCurrentIndex(0);
    theTimer->start(4ms);
    // Every later triple finds the pop-up at its prompt: it changes nothing in the file.
    if (matches.moreTriples)
        askForFrameRate();
    if (writeDocument(document, path))
        tintChanges(before);
}

void EditPage::checkThem1()
{
    std::ignore = theTimer->advance();
}

void EditPage::writeToFile()
{
    const QString path = input1->text();
    std::ignore = writeDocument(openProjectDocument(path), path);
    input1->clear();
    textField1->clear();
    display->clear();
    endArchiveOffer();
    tClearButton->setEnabled(false);
    showStanding(FactLabel::Standing::None);
    showCard();
    confirmSheet->closeConfirmSheet();
}

void EditPage::raiseRenameSheet()
{
    renameSheet->raiseRenameSheet(display->text(), Path::lastComponent(input1->text()));
}

void EditPage::renameTemplate(const QString &name)
{
    const QString path = input1->text();
    const QString fileName = name + u'.' + Path::extension(path);
    const QString folder = Path::withoutLastComponent(path);
    std::ignore = FileTree::move({folder, Path::lastComponent(path)}, {folder, fileName});
    display->setText(Path::withoutExtension(fileName));
    input1->setText(folder + u'/' + fileName);
    showCard();
}

void EditPage::backupOriginal()
{
    const QDateTime now = QDateTime::currentDateTime();
    dateTextField->setText(now.toString(u"MM-dd-yyyy '||' HH_mm_ss "_s) +
                           now.timeZoneAbbreviation());
    const QString folder = Path::withoutLastComponent(input1->text());
    const QString name = Path::lastComponent(input1->text());
    const QString archiveName =
        Path::withoutExtension(name) + u'-' + dateTextField->text() + u'.' + Path::extension(name);
    // Of a link, the file that it leads to: a copy of the link would keep nothing.
    const FileTree::Item copy{folder, archiveName};
    const FileTree::Item archived{archiveFolder, archiveName};
    std::ignore = FileTree::copy(FileTree::itemAt(input1->text()), copy);
    if (FileTree::move(copy, archived))
        std::ignore = FileTree::flush(archived); // before the file can be changed
    const FocusGuard guard(window());
    orgButton->hide();
    say(tr("Original Archived"), QIcon(u":/icons/archive-48.png"_s));
    theTimer->start(3ms);
}

void EditPage::openArchivesFolder()
{
    std::ignore = openFolder(archiveFolder);
}

void EditPage::askForFrameRate()
{
    say(tr("Choose Framerate"), style()->standardIcon(QStyle::SP_MessageBoxWarning));
    frPopupMark->setWidget(frPopup);
    progressBarT->hide();
}

/// The file has changed, or is gone from the editor: what could be archived is no original.
void EditPage::endArchiveOffer()
{
    const FocusGuard guard(window());
    orgButton->hide();
    dateTextField->clear();
}

/// A failure is a line in the diagnostic log too; the file stayed as it was.
Outcome EditPage::writeDocument(const Result<ProjectDocument> &document, const QString &path)
{
    const Outcome written =
        document ? saveProjectDocument(*document, path) : Failure{document.reason()};
    if (!written)
        diagnosticLog(u"Could not write document out..."_s);
    return written;
}
