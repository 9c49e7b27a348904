#pragma once

#include <QWidget>

#include <functional>

class QMimeData;

/// A view that draws nothing and takes the paths of dropped files and folders.
class FileDropTarget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FileDropTarget)

public:
    /// Takes one dropped path; false ends the drop, and the paths behind it are not taken.
    using Receiver = std::function<bool(const QString &path)>;

    explicit FileDropTarget(QWidget *parent = nullptr);

    void setReceiver(Receiver receiver) { m_receiver = std::move(receiver); }

    /// What the drag source is told will happen: a link where it allows one, else a copy, else
    /// nothing; nothing for anything but files. Only the cursor depends on it.
    [[nodiscard]] static Qt::DropAction draggingEntered(const QMimeData &mimeData,
                                                        Qt::DropActions allowed);

    /// Hands each dropped path to the receiver, in order. Always true: the drop is accepted.
    bool performDragOperation(const QMimeData &mimeData);

Q_SIGNALS:
    /// Whether something that may be dropped is over the view.
    void hovered(bool isOver);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    Receiver m_receiver;
};
