#include "BrimvaleAppDelegate.h"
#include "library/TemplateLibrary.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;

// Some of these paths end in "/" and some do not: they have always been passed on so.

void BrimvaleAppDelegate::openTemplatesRootFolder()
{
    std::ignore = openFolder(TemplateLibrary::root() + u'/');
}

void BrimvaleAppDelegate::openCompositionsFolder()
{
    std::ignore = openFolder(TemplateLibrary::category(0)->path);
}

void BrimvaleAppDelegate::openEffectsFolder()
{
    std::ignore = openFolder(TemplateLibrary::category(1)->path + u'/');
}

void BrimvaleAppDelegate::openGeneratorsFolder()
{
    std::ignore = openFolder(TemplateLibrary::category(2)->path + u'/');
}

void BrimvaleAppDelegate::openTitlesFolder()
{
    std::ignore = openFolder(TemplateLibrary::category(3)->path);
}

void BrimvaleAppDelegate::openTransitionsFolder()
{
    std::ignore = openFolder(TemplateLibrary::category(4)->path);
}

void BrimvaleAppDelegate::runHelpWebView()
{
    std::ignore =
        openAddress(QUrl(u"http://" BRIMVALE_HELP_HOST "/Brimvale/help/Brimvale-help.html"_s));
}

void BrimvaleAppDelegate::linkToPayPal()
{
    std::ignore =
        openAddress(QUrl(u"https://" BRIMVALE_DONATION_HOST "/cgi-bin/webscr?cmd=_s-xclick"
                         "&hosted_button_id=" BRIMVALE_DONATION_BUTTON ""_s));
}
