#include "IniText.h"
#include "SettingsLock.h"
#include "SettingsStore.h"
#include "platform/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>
#include <QSettings>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

// The file is the one that QSettings reads under "Brimvale" and "Brimvale", but QSettings does not
// write it: it takes a file that it cannot read for an empty one, and leaves an empty one when the
// disk is full.

namespace {

/// Asked of QSettings without a look into the file itself.
QString filePath()
{
    const QSettings beside(QSettings::NativeFormat, QSettings::UserScope, u"Brimvale"_s);
    return QFileInfo(beside.fileName()).path() + u"/Brimvale/Brimvale.conf"_s;
}

bool isSameContent(const std::optional<FileVersion> &one, const std::optional<FileVersion> &other)
{
    return one && other ? one->hasSameContent(*other) : one == other;
}

Outcome change(const std::function<void(IniText &)> &edit)
{
    const QString path = filePath();
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return Failure{u"cannot make "_s + folder};
    const SettingsLock lock(folder);
    // Another program's version may come between, if it does not know the lock.
    constexpr int tries = 3;
    Outcome done;
    std::optional<FileVersion> last;
    QByteArray wanted;
    for (int index = 0; index == 0 || (!done && index < tries); ++index) {
        Result<WholeFile> file = readWholeFile(path);
        if (!file)
            return Failure{file.reason()};
        if (index > 0 && (isSameContent(last, file->version) || file->content == wanted))
            return done; // it was not that
        last = file->version;
        IniText text(file->content);
        const QByteArray before = text.text();
        edit(text);
        wanted = text.text();
        if (wanted == before)
            return {};
        const Result<FileVersion> written =
            writeWholeFile(path, file->version, [&wanted](QIODevice &device) {
                return device.write(wanted) == wanted.size();
            });
        done = written ? Outcome() : Failure{written.reason()};
    }
    return done;
}

QByteArrayView bytes(QLatin1StringView key)
{
    return {key.data(), key.size()};
}

} // namespace

QVariant SettingsStore::object(QLatin1StringView key) const
{
    Result<WholeFile> file = readWholeFile(filePath());
    return file ? IniText(std::move(file->content)).value(bytes(key)) : QVariant();
}

Outcome SettingsStore::setObject(const QVariant &value, QLatin1StringView key)
{
    return change([&](IniText &text) { text.setValue(bytes(key), value); });
}

Outcome SettingsStore::removeObject(QLatin1StringView key)
{
    return change([&](IniText &text) { text.remove(bytes(key)); });
}

Outcome SettingsStore::appendObject(const QVariant &object, QLatin1StringView arrayKey)
{
    return change([&](IniText &text) { text.appendItem(bytes(arrayKey), object); });
}

Outcome SettingsStore::synchronize()
{
    return {}; // every change was on the disk when it ended
}
