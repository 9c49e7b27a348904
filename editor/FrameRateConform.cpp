#include "app/BrimvaleAppDelegate.h"
#include "motion/ProjectChanges.h"
#include "platform/DiagnosticLog.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void BrimvaleAppDelegate::conform()
{
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
        theFrames->setText(rate->frames);
        theFrameRate->setText(rate->frameRate);
        wasArchived->clear();
        progressBarT->show();
    } else if (index == 0) {
        askForFrameRate();
    }
    frPopup->setCurrentIndex(0);
    startAnimation(theTimer, 4ms, &BrimvaleAppDelegate::checkThem1);
    // Every later triple finds the pop-up at its prompt: it changes nothing in the file.
    if (matches.moreTriples)
        askForFrameRate();
    writeDocument(document, path);
}

void BrimvaleAppDelegate::checkThem1()
{
    advanceAnimation(theTimer, progressBarT);
}

void BrimvaleAppDelegate::writeToFile()
{
    const QString path = input1->text();
    writeDocument(openProjectDocument(path), path);
    input1->clear();
    textField1->clear();
    display->clear();
    endArchiveOffer();
    tClearButton->setEnabled(false);
    closeConfirmSheet();
}

void BrimvaleAppDelegate::closeConfirmSheet()
{
    confirmSheet->hide();
    theIndicator->stopAnimation();
}

void BrimvaleAppDelegate::askForFrameRate()
{
    wasArchived->setText(tr("Choose Framerate"));
    progressBarT->hide();
}

/// The file has changed, or is gone from the editor: what could be archived is no original.
void BrimvaleAppDelegate::endArchiveOffer()
{
    orgButton->hide();
    dateTextField->clear();
}

/// False, with a line in the diagnostic log, when the file stayed as it was.
bool BrimvaleAppDelegate::writeDocument(const Result<ProjectDocument> &document,
                                        const QString &path)
{
    if (document && saveProjectDocument(*document, path))
        return true;
    diagnosticLog(u"Could not write document out..."_s);
    return false;
}
