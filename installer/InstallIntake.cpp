#include "app/BrimvaleAppDelegate.h"
#include "platform/Alert.h"
#include "platform/Path.h"
#include "widgets/Focus.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;

void BrimvaleAppDelegate::updateText(const QString &path)
{
    input->setText(path);
    makeKeyAndOrderFront(mWindow);
    test->setText(Path::lastComponent(input->text()));
    setFocusRing(input, FocusRing::None);
    makeFirstResponder(mWindow, nullptr);
    enableInstallButtons(true);
    if (!Path::extension(path).isEmpty()) {
        input->clear();
        test->setText(Path::lastComponent(input->text()));
        enableInstallButtons(false);
        runAlert(mWindow, tr("Template Error!"),
                 tr("This Install module only accepts Folders ..."));
    }
}

void BrimvaleAppDelegate::clearInputs()
{
    test->clear();
    input->clear();
    enableInstallButtons(false);
}

void BrimvaleAppDelegate::doOpen()
{
    auto *selector =
        new QFileDialog(mWindow, tr("Folder Selector"), Path::expandingTilde(u"~/Desktop"_s));
    selector->setAttribute(Qt::WA_DeleteOnClose);
    selector->setFileMode(QFileDialog::Directory);
    selector->setOptions(QFileDialog::ShowDirsOnly | QFileDialog::ReadOnly);
    selector->setLabelText(QFileDialog::Accept, tr("Add"));
    selector->setLabelText(QFileDialog::LookIn, tr("Select Motion Content Folder ..."));
    connect(selector, &QFileDialog::filesSelected, this, [this](const QStringList &paths) {
        for (const QString &path : paths) {
            input->setText(path);
            test->setText(Path::lastComponent(input->text()));
            enableInstallButtons(true);
        }
    });
    selector->resize(820, 520); // room for the message beside the folder
    selector->open();
}

void BrimvaleAppDelegate::setPathEnter()
{
    setFocusRing(input, FocusRing::None);
    makeFirstResponder(mWindow, hidden);
    test->setText(Path::lastComponent(input->text()));
}

void BrimvaleAppDelegate::enableInstallButtons(bool enabled)
{
    for (QPushButton *each : {clearButton, mSendButton, mNewCatButton})
        each->setEnabled(enabled);
}
