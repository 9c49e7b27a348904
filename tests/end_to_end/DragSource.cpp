#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QTextStream>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

void say(const QString &what, Qt::DropAction action)
{
    const QString name = action == Qt::LinkAction   ? u"link"_s
                         : action == Qt::CopyAction ? u"copy"_s
                         : action == Qt::MoveAction ? u"move"_s
                                                    : u"nothing"_s;
    QTextStream(stdout) << what << ' ' << name << Qt::endl;
}

/// A small window in the screen's corner, to drag files from as from a file manager. It prints
/// what a drop would do where the mouse is ("offered link"), and what the drop did ("done link").
class DragSource final : public QLabel
{
public:
    explicit DragSource(const QList<QUrl> &files) : QLabel(u"Drag me"_s), m_files(files)
    {
        // The window manager would place it over the program's window.
        setWindowFlag(Qt::X11BypassWindowManagerHint);
        setAlignment(Qt::AlignCenter);
        resize(120, 40);
        move(screen()->geometry().bottomLeft() - QPoint(0, height()));
    }

protected:
    void mousePressEvent(QMouseEvent *) override
    {
        auto *dragged = new QMimeData;
        dragged->setUrls(m_files);
        auto *drag = new QDrag(this);
        drag->setMimeData(dragged);
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { say(u"offered"_s, action); });
        // The drag outlives exec(): the files are still to be fetched by who got them.
        connect(drag, &QObject::destroyed, qApp, &QApplication::quit);
        say(u"done"_s, drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction));
    }

private:
    QList<QUrl> m_files;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QList<QUrl> files;
    for (const QString &path : QApplication::arguments().mid(1))
        files << QUrl::fromLocalFile(path);
    DragSource source(files);
    source.show();
    return QApplication::exec();
}
