#pragma once

#include "ui_RenameSheet.h"

#include <QDialog>

/// Asks for a file's new name. While it is open the window bears the file's present name.
class RenameSheet : public QDialog, private Ui::RenameSheet
{
    Q_OBJECT

public:
    explicit RenameSheet(QWidget *window);

    /// Of the file that is to be renamed: its name without the extension, and the extension.
    void raiseRenameSheet(const QString &name, const QString &extension);
    void clearRenameTextField();
    void renameTemplate();
    void cancelRenameTemplate();

Q_SIGNALS:
    /// A name that is not empty, without an extension; the sheet closes afterwards.
    void nameChosen(const QString &name);
};
