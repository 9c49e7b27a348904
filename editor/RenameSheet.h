#pragma once

#include "ui_RenameSheet.h"

#include <QDialog>

/// Asks for a file's new name. While it is open the window bears the file's present name.
class RenameSheet : public QDialog, private Ui::RenameSheet
{
    Q_OBJECT

public:
    explicit RenameSheet(QWidget *window);

    void raiseRenameSheet(const QString &presentName);
    void clearRenameTextField();
    void renameTemplate();
    void cancelRenameTemplate();

Q_SIGNALS:
    /// A name that is not empty, without an extension; the sheet closes afterwards.
    void nameChosen(const QString &name);
};
