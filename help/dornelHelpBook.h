#pragma once

#include "ui_HelpBook.h"

#include <QDialog>

/// The paged help: a home page and the pages A to E, each with a picture of the program. Its
/// outlets are the controls that it inherits from the form, whose `helpWindow` it is itself.
class dornelHelpBook : public QDialog, private Ui::HelpBook
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(dornelHelpBook)

public:
    dornelHelpBook();

    void awakeFromNib();

    /// Shows the help, always at its home page.
    void runHelpBook();
    void navigateHOME();
    void pageA();
    void pageB();
    void pageC();
    void pageD();
    void pageE();
    /// One page back or forward; the first and the last page are the ends.
    void navigate();

private:
    void wireControls();
    void showPage(int page);
};
