#include "FileDropTarget.h"

#include "platform/DiagnosticLog.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// The dropped files' full paths; a web address is no file.
QStringList fileNames(const QMimeData &mimeData)
{
    QStringList paths;
    for (const QUrl &url : mimeData.urls()) {
        if (url.isLocalFile())
            paths << url.adjusted(QUrl::StripTrailingSlash).toLocalFile();
    }
    return paths;
}

/// Answers the drag source; false when nothing here may be dropped.
bool answer(QDropEvent &event)
{
    const Qt::DropAction action =
        FileDropTarget::draggingEntered(*event.mimeData(), event.possibleActions());
    event.setDropAction(action);
    event.setAccepted(action != Qt::IgnoreAction);
    return event.isAccepted();
}

} // namespace

FileDropTarget::FileDropTarget(QWidget *parent) : QWidget(parent)
{
    setAcceptDrops(true);
}

Qt::DropAction FileDropTarget::draggingEntered(const QMimeData &mimeData, Qt::DropActions allowed)
{
    if (fileNames(mimeData).isEmpty())
        return Qt::IgnoreAction;
    if (allowed.testFlag(Qt::LinkAction))
        return Qt::LinkAction;
    if (allowed.testFlag(Qt::CopyAction))
        return Qt::CopyAction;
    return Qt::IgnoreAction;
}

bool FileDropTarget::performDragOperation(const QMimeData &mimeData)
{
    const QStringList paths = fileNames(mimeData);
    if (paths.isEmpty())
        return true;
    diagnosticLog(u"Dragged files"_s);
    for (const QString &path : paths) {
        diagnosticLog(path);
        if (m_receiver && !m_receiver(path))
            break;
    }
    return true;
}

void FileDropTarget::dragEnterEvent(QDragEnterEvent *event)
{
    Q_EMIT hovered(answer(*event));
}

void FileDropTarget::dragMoveEvent(QDragMoveEvent *event)
{
    answer(*event);
}

void FileDropTarget::dragLeaveEvent(QDragLeaveEvent *)
{
    Q_EMIT hovered(false);
}

void FileDropTarget::dropEvent(QDropEvent *event)
{
    answer(*event);
    Q_EMIT hovered(false);
    performDragOperation(*event->mimeData());
}
