#include "FolderChooser.h"

#include "platform/Path.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

FolderChooser::FolderChooser(QWidget *parent, const Texts &texts, const QString &startFolder,
                             Start start)
    : QFileDialog(parent, texts.title, Path::expandingTilde(startFolder))
    , m_startFolder(QDir::cleanPath(Path::expandingTilde(startFolder)))
    , m_start(start)
{
    setFileMode(Directory);
    setOption(ShowDirsOnly);
    setLabelText(Accept, texts.confirm);
    setLabelText(LookIn, texts.message);
    // Room for the message beside the folder.
    resize(fontMetrics().horizontalAdvance(texts.message) + fontMetrics().averageCharWidth() * 70,
           fontMetrics().height() * 30);
    connect(this, &QFileDialog::currentChanged, this, &FolderChooser::updateConfirmButton);
    connect(this, &QFileDialog::directoryEntered, this, &FolderChooser::updateConfirmButton);
    if (const auto *name = nameField())
        connect(name, &QLineEdit::textChanged, this, &FolderChooser::updateConfirmButton);
    updateConfirmButton();
}

/// A folder that was entered may be taken as it is; the one that the chooser stood in before
/// anything was chosen is nobody's choice.
bool FolderChooser::isOnlyTheStart() const
{
    if (m_start == Start::MayBeTaken)
        return false;
    const QString start = m_startFolder + u'/';
    for (const QString &each : selectedFiles()) {
        const QString folder = QDir::cleanPath(each);
        if (start.startsWith(folder.endsWith(u'/') ? folder : folder + u'/'))
            return true;
    }
    return false;
}

/// Only where the chooser is Qt's own.
QLineEdit *FolderChooser::nameField() const
{
    return findChild<QLineEdit *>(u"fileNameEdit"_s);
}

void FolderChooser::updateConfirmButton()
{
    auto *buttons = findChild<QDialogButtonBox *>(u"buttonBox"_s);
    QPushButton *confirm = buttons ? buttons->button(QDialogButtonBox::Open) : nullptr;
    const bool canConfirm = !isOnlyTheStart();
    // Of what is written in the field Qt knows best whether it can be taken.
    if (confirm && (!canConfirm || nameField()->text().isEmpty()))
        confirm->setEnabled(canConfirm);
}

void FolderChooser::accept()
{
    const QLineEdit *name = nameField();
    if (!isOnlyTheStart() || (name && name->text() == u".."_s)) // which only goes up
        QFileDialog::accept();
    else if (testAttribute(Qt::WA_DontShowOnScreen)) {
        // The desktop's own chooser has closed itself; it comes again until a folder is selected.
        hide();
        QMetaObject::invokeMethod(this, &QWidget::show, Qt::QueuedConnection);
    }
}
