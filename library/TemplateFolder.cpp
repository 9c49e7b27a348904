#include "TemplateFolder.h"

#include "platform/Path.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

struct MotionKind
{
    QString extension;
    const char *one;
    const char *many;
};

/// What says more of a template comes first.
const QList<MotionKind> &motionKinds()
{
    static const QList<MotionKind> kinds = {
        {u"moti"_s, QT_TRANSLATE_NOOP("TemplateFolder", "1 Title"),
         QT_TRANSLATE_NOOP("TemplateFolder", "%1 Titles")},
        {u"moef"_s, QT_TRANSLATE_NOOP("TemplateFolder", "1 Effect"),
         QT_TRANSLATE_NOOP("TemplateFolder", "%1 Effects")},
        {u"motr"_s, QT_TRANSLATE_NOOP("TemplateFolder", "1 Transition"),
         QT_TRANSLATE_NOOP("TemplateFolder", "%1 Transitions")},
        {u"motn"_s, QT_TRANSLATE_NOOP("TemplateFolder", "1 Composition or Generator"),
         QT_TRANSLATE_NOOP("TemplateFolder", "%1 Compositions or Generators")}};
    return kinds;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("TemplateFolder", text);
}

/// A huge one takes too long for what is shown of it, and a link may lead to anything.
bool isPicture(const QFileInfo &file)
{
    constexpr qint64 largest = 20'000'000;
    return file.isFile() && !file.isSymLink() && file.size() <= largest;
}

void count(TemplateFolder &folder, const QFileInfo &item)
{
    if (item.isSymLink() || !item.isFile())
        return;
    folder.bytes += item.size();
    const QString extension = Path::extension(item.fileName());
    for (const MotionKind &each : motionKinds()) {
        if (each.extension == extension)
            ++folder.motionFiles[extension];
    }
}

} // namespace

TemplateFolder readTemplateFolder(const QString &path, const std::function<bool()> &isCancelled,
                                  const ReadingLimits &limits)
{
    TemplateFolder folder;
    const QFileInfo itself(path);
    if (itself.isRelative() || !itself.exists())
        return folder;
    folder.kind = itself.isDir() ? TemplateFolder::Kind::Folder : TemplateFolder::Kind::File;
    for (const QString &name : {u"large.png"_s, u"small.png"_s}) {
        const QFileInfo picture(Path::joined(path, name));
        if (isPicture(picture))
            folder.pictures << picture.filePath();
    }

    QElapsedTimer timer;
    timer.start();
    int items = 0;
    QDirIterator walk(path, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        if (++items > limits.items || timer.hasExpired(limits.time.count()) ||
            (isCancelled && isCancelled())) {
            folder.isWhole = false;
            break;
        }
        walk.next();
        count(folder, walk.fileInfo());
    }
    return folder;
}

QString mainExtension(const TemplateFolder &folder)
{
    for (const MotionKind &each : motionKinds()) {
        if (folder.motionFiles.contains(each.extension))
            return each.extension;
    }
    return {};
}

QString contentsText(const TemplateFolder &folder)
{
    QStringList parts;
    for (const MotionKind &each : motionKinds()) {
        const int number = folder.motionFiles.value(each.extension);
        if (number == 1)
            parts << translated(each.one);
        else if (number > 1)
            parts << translated(each.many).arg(QLocale().toString(number));
    }
    if (parts.isEmpty())
        parts << translated(QT_TRANSLATE_NOOP("TemplateFolder", "No Motion file"));
    parts << QLocale().formattedDataSize(folder.bytes, 1, QLocale::DataSizeSIFormat);
    const QString text = parts.join(", "_L1);
    return folder.isWhole ? text
                          : translated(QT_TRANSLATE_NOOP("TemplateFolder", "%1 or more")).arg(text);
}
