#include "app/BrimvaleAppDelegate.h"

void BrimvaleAppDelegate::openHelpSheet()
{
    theSheet->open();
}

void BrimvaleAppDelegate::closeHelpSheet()
{
    theSheet->hide();
}
