#include "InstallPage.h"

#include "SubCategorySheet.h"
#include "platform/Alert.h"
#include "platform/Path.h"
#include "widgets/Focus.h"
#include "widgets/FolderChooser.h"
#include "widgets/Legibility.h"
#include "widgets/ProgressAnimation.h"

#include <QApplication>
#include <QButtonGroup>
#include <QIcon>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

/// Return presses the button while the control itself has the keyboard.
void pressByReturn(QWidget *control, QAbstractButton *button)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, control);
        shortcut->setContext(Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
    }
}

} // namespace

InstallPage::InstallPage(QWidget *window, qint32 &count) : dropZone(window)
{
    setupUi(this);
    catSheet = new SubCategorySheet(window);
    timer = new ProgressAnimation(progressBar, count);
    wireControls();
    wireCard();
}

void InstallPage::wireControls()
{
    const std::initializer_list<std::pair<QAbstractButton *, QAbstractButton *>> rows = {
        {compositionsChoice, openCompositionsFolder},
        {effectsChoice, openEffectsFolder},
        {generatorsChoice, openGeneratorsFolder},
        {titlesChoice, openTitlesFolder},
        {transitionsChoice, openTransitionsFolder}};
    int row = 0;
    for (const auto &[choice, folderButton] : rows) {
        theMatrix->setId(choice, row);
        pressByReturn(choice, mSendButton);
        growIcon(choice, 24);
        growIcon(folderButton, 16);
        connect(folderButton, &QAbstractButton::clicked, this,
                [this, row] { Q_EMIT categoryFolderRequested(row); });
        ++row;
    }

    // Return presses it from there only, and only then does it look so.
    connect(qApp, &QApplication::focusChanged, mSendButton, [this](QWidget *, QWidget *now) {
        mSendButton->setDefault(now == mSendButton || theMatrix->buttons().contains(
                                                          qobject_cast<QAbstractButton *>(now)));
    });
    connect(this, &dropZone::hovered, installHint, &DropHint::setHighlighted);
    connect(input, &QLineEdit::returnPressed, this, &InstallPage::setPathEnter);
    connect(input, &QLineEdit::editingFinished, this, &InstallPage::leaveInput);
    connect(clearButton, &QAbstractButton::clicked, this, &InstallPage::clearInputs);
    connect(mSendButton, &QAbstractButton::clicked, this, &InstallPage::moveAndClose);
    connect(mNewCatButton, &QAbstractButton::clicked, this, &InstallPage::createCategory);
    connect(catSheet, &SubCategorySheet::confirmed, this, &InstallPage::generateCustomFolder);
    connect(timer, &ProgressAnimation::ticked, this, &InstallPage::checkThem);
}

void InstallPage::awakeFromNib()
{
    enableInstallButtons(false);
    input->setFocus();
}

void InstallPage::applicationDidFinishLaunching()
{
    hidden->hide();
    setFocusRing(input, FocusRing::Default);
    // Once more, so that the state after launch is this one whatever came before.
    enableInstallButtons(false);
}

bool InstallPage::takeDropped(const QString &path)
{
    updateText(path);
    return true;
}

void InstallPage::updateText(const QString &path)
{
    input->setText(path);
    makeKeyAndOrderFront(window());
    test->setText(Path::lastComponent(input->text()));
    setFocusRing(input, FocusRing::None);
    takeFocusOffControls(window());
    enableInstallButtons(true);
    if (!Path::extension(path).isEmpty()) {
        forget(input);
        test->setText(Path::lastComponent(input->text()));
        enableInstallButtons(false);
        runAlert(window(), tr("Template Error!"),
                 tr("This Install module only accepts Folders ..."));
    }
}

void InstallPage::clearInputs()
{
    const FocusGuard guard(window()); // the button itself is disabled
    test->clear();
    forget(input);
    enableInstallButtons(false);
}

void InstallPage::doOpen()
{
    const FolderChooser::Texts texts{tr("Folder Selector"), tr("Select Motion Content Folder ..."),
                                     tr("Add")};
    auto *selector =
        new FolderChooser(window(), texts, u"~/Desktop"_s, FolderChooser::Start::IsOnlyTheStart);
    selector->setAttribute(Qt::WA_DeleteOnClose);
    isChoosing = true;
    refreshCard(); // which shows the message where the desktop's own selector does not
    connect(selector, &QDialog::finished, this, [this] {
        isChoosing = false;
        refreshCard();
    });
    selector->setOption(QFileDialog::ReadOnly);
    connect(selector, &QFileDialog::filesSelected, this, [this](const QStringList &paths) {
        for (const QString &path : paths) {
            input->setText(path);
            test->setText(Path::lastComponent(input->text()));
            enableInstallButtons(true);
        }
    });
    selector->open();
}

void InstallPage::setPathEnter()
{
    setFocusRing(input, FocusRing::None);
    makeFirstResponder(window(), hidden);
    test->setText(Path::lastComponent(input->text()));
}

/// A name that is not the path's would have another folder installed than the one shown.
void InstallPage::leaveInput()
{
    if (input->isModified())
        test->setText(Path::lastComponent(input->text()));
}

void InstallPage::enableInstallButtons(bool enabled)
{
    for (QPushButton *each : {clearButton, mSendButton, mNewCatButton})
        each->setEnabled(enabled);
}
