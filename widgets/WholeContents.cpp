#include "WholeContents.h"

#include <QEvent>
#include <QLayout>
#include <QWidget>

namespace {

class WindowWatcher : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isResize = event->type() == QEvent::Resize || event->type() == QEvent::Show;
        if (auto *window = qobject_cast<QWidget *>(watched);
            window && (isResize || event->type() == QEvent::LayoutRequest)) {
            window->setMinimumHeight(window->layout()->totalMinimumHeightForWidth(window->width()));
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void keepContentsWhole(QWidget *window)
{
    window->installEventFilter(new WindowWatcher(window));
}
