#pragma once

#include <QClipboard>
#include <QLineEdit>

/// A field for a path. A path that is pasted comes in without what other programs put around it;
/// what is typed stays as it is. One that is too long for the field is whole in its tool tip.
class PathField : public QLineEdit
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PathField)

public:
    explicit PathField(QWidget *parent = nullptr);

public Q_SLOTS:
    /// In the place of the selection, as a field's own paste, which an Edit menu calls by this
    /// name.
    void paste();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void pasteFrom(QClipboard::Mode source);
};
