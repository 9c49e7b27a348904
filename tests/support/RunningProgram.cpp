#include "RunningProgram.h"

#include "widgets/SegmentedControl.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QTest>
#include <QUrl>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QMimeData> filesAt(const QStringList &paths)
{
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    auto data = std::make_unique<QMimeData>();
    data->setUrls(urls);
    return data;
}

} // namespace

RunningProgram::RunningProgram()
{
    m_delegate.applicationDidFinishLaunching();
    if (!QTest::qWaitForWindowActive(find<QWidget>(u"mWindow"_s)))
        qFatal("the main window did not come to the front");
}

QString RunningProgram::text(const QString &name) const
{
    return find<QWidget>(name)->property("text").toString();
}

bool RunningProgram::isShown(const QString &name) const
{
    return !find<QWidget>(name)->isHidden();
}

void RunningProgram::click(const QString &name) const
{
    auto *control = find<QWidget>(name);
    // Near the left edge: a radio button or a check box takes no click behind its text.
    const int middle = control->height() / 2;
    if (control->isVisible())
        QTest::mouseClick(control, Qt::LeftButton, {},
                          {qMin(middle, control->width() / 2), middle});
}

void RunningProgram::type(const QString &name, const QString &text) const
{
    auto *field = find<QLineEdit>(name);
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keySequence(field, QKeySequence::SelectAll);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void RunningProgram::pressKey(const QString &name, Qt::Key key) const
{
    QTest::keyClick(find<QWidget>(name), key);
}

void RunningProgram::chooseMode(int segment) const
{
    QTest::mouseClick(find<SegmentedControl>(u"segController"_s)->button(segment), Qt::LeftButton);
}

Qt::DropAction RunningProgram::drop(const QString &name, const QMimeData &data,
                                    Qt::DropActions allowed) const
{
    // To the window, which finds the control beneath as it does in a real drag.
    const auto *control = find<QWidget>(name);
    QWindow *window = control->window()->windowHandle();
    const QPoint place = control->mapTo(control->window(), control->rect().center());
    QDragEnterEvent enter(place, allowed, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &enter);
    QDropEvent drop(place, allowed, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &drop);
    return enter.isAccepted() && drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction RunningProgram::dropFiles(const QString &name, const QStringList &paths) const
{
    return drop(name, *filesAt(paths));
}

void RunningProgram::drag(const QString &name, const QStringList &paths) const
{
    const auto files = filesAt(paths);
    const auto *control = find<QWidget>(name);
    QDragEnterEvent enter(control->mapTo(control->window(), control->rect().center()),
                          Qt::LinkAction, files.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control->window()->windowHandle(), &enter);
}

void RunningProgram::leave(const QString &name) const
{
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(find<QWidget>(name)->window()->windowHandle(), &leave);
}
