#pragma once

#include "ui_RenameSheet.h"

#include <QDialog>

/// Asks for a file's new name.
class RenameSheet : public QDialog, private Ui::RenameSheet
{
    Q_OBJECT

public:
    explicit RenameSheet(QWidget *window);

    /// `title` is the window's meanwhile; `fileName` that of the file that is to be renamed.
    void raiseRenameSheet(const QString &title, const QString &fileName);
    void clearRenameTextField();
    void renameTemplate();
    void cancelRenameTemplate();

Q_SIGNALS:
    /// A name that is not empty, without an extension; the sheet closes afterwards.
    void nameChosen(const QString &name);
};
