#include "PathField.h"

#include "ElidedLabel.h"
#include "platform/Path.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

using namespace Qt::StringLiterals;

PathField::PathField(QWidget *parent) : QLineEdit(parent) {}

void PathField::paste()
{
    pasteFrom(QClipboard::Clipboard);
}

void PathField::pasteFrom(QClipboard::Mode source)
{
    const QString text = QApplication::clipboard()->text(source);
    if (!text.isEmpty() && !isReadOnly())
        insert(Path::ofPasted(text));
}

void PathField::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (auto *item = menu->findChild<QAction *>(u"edit-paste"_s)) {
        item->disconnect(this);
        connect(item, &QAction::triggered, this, &PathField::paste);
    }
    menu->popup(event->globalPos());
}

bool PathField::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLineEdit::event(event);
    const int margins = textMargins().left() + textMargins().right() + 2 * fontMetrics().height();
    const bool isShortened = fontMetrics().horizontalAdvance(text()) > width() - margins;
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       isShortened ? toolTipOf(text()) : QString(), this);
    return true;
}

void PathField::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste))
        paste();
    else
        QLineEdit::keyPressEvent(event);
}

void PathField::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton && QApplication::clipboard()->supportsSelection()) {
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        pasteFrom(QClipboard::Selection);
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}
