#include "FileDropTarget.h"

#include "platform/DiagnosticLog.h"
#include "platform/Path.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// The dropped files' full paths; a web address and a file of another machine are none.
QStringList fileNames(const QMimeData &mimeData)
{
    QStringList paths;
    for (const QUrl &url : mimeData.urls()) {
        const QString path = Path::ofAddress(url);
        if (!path.isEmpty())
            paths << path;
    }
    return paths;
}

/// Tells the drag source what will happen: a link where it allows one, else a copy, else nothing;
/// nothing for anything but files. Only the cursor depends on it.
bool draggingEntered(QDropEvent &event)
{
    Qt::DropAction action = Qt::IgnoreAction;
    if (!fileNames(*event.mimeData()).isEmpty()) {
        if (event.possibleActions().testFlag(Qt::LinkAction))
            action = Qt::LinkAction;
        else if (event.possibleActions().testFlag(Qt::CopyAction))
            action = Qt::CopyAction;
    }
    event.setDropAction(action);
    event.setAccepted(action != Qt::IgnoreAction);
    return event.isAccepted();
}

} // namespace

FileDropTarget::FileDropTarget(QWidget *parent) : QWidget(parent)
{
    setAcceptDrops(true);
}

void FileDropTarget::performDragOperation(const QMimeData &mimeData)
{
    const QStringList paths = fileNames(mimeData);
    if (paths.isEmpty())
        return;
    diagnosticLog(u"Dragged files"_s);
    for (const QString &path : paths) {
        diagnosticLog(path);
        if (!takeDropped(path))
            return;
    }
}

void FileDropTarget::dragEnterEvent(QDragEnterEvent *event)
{
    Q_EMIT hovered(draggingEntered(*event));
}

void FileDropTarget::dragMoveEvent(QDragMoveEvent *event)
{
    std::ignore = draggingEntered(*event);
}

void FileDropTarget::dragLeaveEvent(QDragLeaveEvent *)
{
    Q_EMIT hovered(false);
}

void FileDropTarget::dropEvent(QDropEvent *event)
{
    std::ignore = draggingEntered(*event);
    Q_EMIT hovered(false);
    performDragOperation(*event->mimeData());
}
