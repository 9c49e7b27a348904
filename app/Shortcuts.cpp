#include "BrimvaleAppDelegate.h"
#include "platform/Path.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;

namespace {

void openFolder(const QString &path)
{
    openAddress(QUrl::fromLocalFile(Path::expandingTilde(path)));
}

} // namespace

// Some of these paths end in "/" and some do not; they are passed on as they stand.

void BrimvaleAppDelegate::openTemplatesRootFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/"_s);
}

void BrimvaleAppDelegate::openCompositionsFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/Compositions.localized"_s);
}

void BrimvaleAppDelegate::openEffectsFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/Effects.localized/"_s);
}

void BrimvaleAppDelegate::openGeneratorsFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/Generators.localized/"_s);
}

void BrimvaleAppDelegate::openTitlesFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/Titles.localized"_s);
}

void BrimvaleAppDelegate::openTransitionsFolder()
{
    openFolder(u"~/Movies/Motion Templates.localized/Transitions.localized"_s);
}

void BrimvaleAppDelegate::runHelpWebView()
{
    openAddress(QUrl(u"http://" BRIMVALE_HELP_HOST "/Brimvale/help/Brimvale-help.html"_s));
}

void BrimvaleAppDelegate::linkToPayPal()
{
    openAddress(QUrl(u"https://" BRIMVALE_DONATION_HOST "/cgi-bin/webscr?cmd=_s-xclick"
                     "&hosted_button_id=" BRIMVALE_DONATION_BUTTON ""_s));
}
