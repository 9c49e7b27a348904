#pragma once

#include <QFileDialog>

class QLineEdit;

/// Asks for one folder. The desktop's own chooser has no place for a message: whoever opens this
/// shows it beside, for as long as the chooser is open.
class FolderChooser : public QFileDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FolderChooser)

public:
    struct Texts
    {
        QString title;
        QString message;
        QString confirm; ///< on the button that takes the folder
    };
    /// Whether the folder that it starts in, or one that holds it, can be taken too.
    enum class Start { MayBeTaken, IsOnlyTheStart };

    FolderChooser(QWidget *parent, const Texts &texts, const QString &startFolder, Start start);

    /// Takes what is selected, unless that is only the start.
    void accept() override;

private:
    [[nodiscard]] bool isOnlyTheStart() const;
    [[nodiscard]] QLineEdit *nameField() const;
    void updateConfirmButton();

    const QString m_startFolder;
    const Start m_start;
};
