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
        const bool mayCut = event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                            event->type() == QEvent::LayoutRequest;
        // Not before it is shown: to lay out its texts takes its time, at a start above all.
        if (auto *window = qobject_cast<QWidget *>(watched);
            window && mayCut && window->isVisible()) {
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
