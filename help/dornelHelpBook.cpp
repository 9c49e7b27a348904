#include "dornelHelpBook.h"

#include "platform/DiagnosticLog.h"
#include "widgets/Focus.h"

#include <QTextCursor>
#include <QTextDocument>

#include <array>

using namespace Qt::StringLiterals;

dornelHelpBook::dornelHelpBook()
{
    setupUi(this);
    wireControls();
    awakeFromNib();
}

void dornelHelpBook::awakeFromNib()
{
    modeSegController->setTag(0, 0);
    modeSegController->setTag(1, 1);
    tabView->setCurrentIndex(0);
    showPage(0);
    // The pictures show the program itself, in the palette that it has here.
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QString name = isDark ? u":/dark/bv_%1.png"_s : u":/bv_%1.png"_s;
    int picture = 0;
    for (QTextBrowser *page : {textView2, textView3, textView4, textView5, textView6}) {
        QTextCursor end(page->document());
        end.movePosition(QTextCursor::End);
        end.insertImage(name.arg(++picture));
        // The page's own way to follow a link reads the page anew, without its picture.
        page->setOpenLinks(false);
        connect(page, &QTextBrowser::anchorClicked, page,
                [page](const QUrl &link) { page->scrollToAnchor(link.fragment()); });
    }
}

void dornelHelpBook::runHelpBook()
{
    tabView->setCurrentIndex(0);
    textView->setFocus(Qt::OtherFocusReason);
    makeKeyAndOrderFront(this);
}

void dornelHelpBook::navigateHOME()
{
    tabView->setCurrentIndex(0);
}

void dornelHelpBook::pageA()
{
    tabView->setCurrentIndex(1);
}

void dornelHelpBook::pageB()
{
    tabView->setCurrentIndex(2);
}

void dornelHelpBook::pageC()
{
    tabView->setCurrentIndex(3);
}

void dornelHelpBook::pageD()
{
    tabView->setCurrentIndex(4);
}

void dornelHelpBook::pageE()
{
    tabView->setCurrentIndex(5);
}

void dornelHelpBook::navigate()
{
    switch (modeSegController->tag(modeSegController->selectedSegment())) {
    case 0:
        diagnosticLog(u"controlOne selected."_s);
        tabView->setCurrentIndex(qMax(tabView->currentIndex() - 1, 0));
        break;
    case 1:
        diagnosticLog(u"controlTwo selected."_s);
        tabView->setCurrentIndex(qMin(tabView->currentIndex() + 1, tabView->count() - 1));
        break;
    default:
        break;
    }
}

void dornelHelpBook::wireControls()
{
    connect(modeSegController, &SegmentedControl::pressed, this, &dornelHelpBook::navigate);
    const std::array<QKeySequence, 2> keys{Qt::ALT | Qt::Key_Left, Qt::ALT | Qt::Key_Right};
    for (int segment = 0; segment < 2; ++segment) {
        QAbstractButton *button = modeSegController->button(segment);
        button->setShortcut(keys.at(static_cast<std::size_t>(segment)));
        button->setToolTip(button->shortcut().toString(QKeySequence::NativeText));
    }
    connect(tabView, &QStackedWidget::currentChanged, this, &dornelHelpBook::showPage);

    using Trigger = QAbstractButton;
    connect(Ui::HelpBook::navigateHOME, &Trigger::clicked, this, &dornelHelpBook::navigateHOME);
    connect(Ui::HelpBook::pageA, &Trigger::clicked, this, &dornelHelpBook::pageA);
    connect(Ui::HelpBook::pageB, &Trigger::clicked, this, &dornelHelpBook::pageB);
    connect(Ui::HelpBook::pageC, &Trigger::clicked, this, &dornelHelpBook::pageC);
    connect(Ui::HelpBook::pageD, &Trigger::clicked, this, &dornelHelpBook::pageD);
    connect(Ui::HelpBook::pageE, &Trigger::clicked, this, &dornelHelpBook::pageE);
}

/// The page's button stands out, and the keyboard scrolls the page.
void dornelHelpBook::showPage(int page)
{
    const std::array<QAbstractButton *, 6> buttons{Ui::HelpBook::navigateHOME, Ui::HelpBook::pageA,
                                                   Ui::HelpBook::pageB,        Ui::HelpBook::pageC,
                                                   Ui::HelpBook::pageD,        Ui::HelpBook::pageE};
    for (QAbstractButton *each : buttons) {
        const bool isChosen = each == buttons.at(static_cast<std::size_t>(page));
        each->setChecked(isChosen);
        QPalette palette;
        if (isChosen) {
            palette.setBrush(QPalette::Button, palette.highlight());
            palette.setBrush(QPalette::ButtonText, palette.highlightedText());
        }
        each->setPalette(palette);
    }
    tabView->currentWidget()->setFocus(Qt::OtherFocusReason);
}
