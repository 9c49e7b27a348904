#include "app/BrimvaleAppDelegate.h"
#include "motion/ProjectChanges.h"
#include "platform/DiagnosticLog.h"
#include "widgets/TextColour.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void BrimvaleAppDelegate::addElements()
{
    const QString path = input1->text();
    Result<ProjectDocument> document = openProjectDocument(path);
    const QStringList themes = nodeValues(document, u"//theme"_s);
    if (const auto theme = firstValue(themes)) {
        textField1->setText(*theme);
        diagnosticLog(themes);
    } else {
        if (document && !insertTheme(*document))
            return;
        progressBarT->show();
        // What was written is what is in memory; after a failure the file decides.
        if (!writeDocument(document, path))
            document = openProjectDocument(path);
        textField1->setText(tr("Template does not include Theme reference ..."));
    }
    setTextColour(textField1, calibratedColour(0, 0, 0));

    if (document && setTheme(*document, element->text()) > 0)
        textField1->setText(element->text());
    writeDocument(document, path);
    element->clear();
    endArchiveOffer();
    wasArchived->clear();
    startAnimation(theTimer, 4ms, &BrimvaleAppDelegate::checkThem1);
}
