#include "HomeChanges.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

using Snapshot = QMap<QString, QByteArray>;

bool isIn(const QString &path, const QString &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
}

/// A file or a whole tree, by the paths inside of it.
Snapshot tree(const Snapshot &disk, const QString &root)
{
    Snapshot items;
    for (auto item = disk.lowerBound(root); item != disk.end(); ++item) {
        if (isIn(item.key(), root))
            items.insert(item.key().mid(root.size()), item.value());
    }
    return items;
}

bool holdsFile(const Snapshot &items)
{
    return std::any_of(items.begin(), items.end(),
                       [](const QByteArray &state) { return state.contains(' '); });
}

QString newLines(const QByteArray &before, const QByteArray &now)
{
    QList<QByteArray> known;
    for (const QByteArray &line : before.split('\n'))
        known << line.trimmed();
    QString lines;
    for (const QByteArray &line : now.split('\n').mid(1)) {
        if (!known.contains(line.trimmed()))
            lines += u' ' + QString::fromUtf8(line.trimmed());
    }
    return lines;
}

} // namespace

QStringList homeChanges(const Snapshot &before, const Snapshot &now)
{
    QStringList changes;
    QStringList told; // of what has a line, with all inside
    const auto isTold = [&](const QString &path) {
        return std::any_of(told.begin(), told.end(),
                           [&](const QString &each) { return isIn(path, each); });
    };
    const QStringList olds = before.keys();
    for (const QString &path : now.keys()) {
        const auto made = tree(now, path);
        if (before.contains(path) || isTold(path) || !holdsFile(made))
            continue;
        const auto source = std::find_if(olds.begin(), olds.end(), [&](const QString &old) {
            return !isTold(old) && tree(before, old) == made;
        });
        if (source == olds.end())
            continue;
        const bool isMoved = tree(now, *source) != made;
        changes << *source + (isMoved ? u" -> "_s : u" => "_s) + path;
        told << path << (isMoved && !now.contains(*source) ? QStringList(*source) : QStringList());
    }
    for (const auto &[verb, there, here] :
         {std::tuple(u"make "_s, now, before), std::tuple(u"remove "_s, before, now)}) {
        for (const QString &path : there.keys()) {
            if (here.contains(path) || isTold(path))
                continue;
            changes << verb + path;
            told << path;
        }
    }
    for (auto item = before.begin(); item != before.end(); ++item) {
        const QByteArray state = now.value(item.key(), item.value());
        if (state != item.value())
            changes << u"write "_s + item.key() + newLines(item.value(), state);
    }
    return changes;
}
