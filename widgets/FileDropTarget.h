#pragma once

#include <QWidget>

class QMimeData;

/// A view that draws nothing and takes the paths of dropped files and folders.
class FileDropTarget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FileDropTarget)

public:
    explicit FileDropTarget(QWidget *parent = nullptr);

Q_SIGNALS:
    /// Whether something that may be dropped is over the view.
    void hovered(bool isOver);

protected:
    /// Takes one dropped path; false ends the drop, and the paths behind it are not taken.
    [[nodiscard]] virtual bool takeDropped(const QString &path) = 0;

    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void performDragOperation(const QMimeData &mimeData);
};
