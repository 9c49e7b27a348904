#include "SettingsLock.h"
#include "SettingsStore.h"
#include "platform/FileTree.h"
#include "platform/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

// QSettings reads and writes the values, but not the file: it takes one that it cannot read for an
// empty one, and leaves an empty one when the disk is full.

namespace {

using Edit = std::function<void(QSettings &)>;

/// The file that QSettings reads under "Brimvale" and "Brimvale".
class Stored : public QSettings
{
public:
    Stored() : QSettings(NativeFormat, UserScope, u"Brimvale"_s, u"Brimvale"_s)
    {
        setFallbacksEnabled(false);
    }
};

QVariantMap valuesOf(const QSettings &settings)
{
    QVariantMap values;
    for (const QString &key : settings.allKeys())
        values[key] = settings.value(key);
    return values;
}

/// Whether a file, read anew, holds these settings and no others.
bool holds(const QString &path, const QVariantMap &values)
{
    const QSettings written(path, QSettings::IniFormat);
    return written.status() == QSettings::NoError && valuesOf(written) == values;
}

/// Whether there are settings in this text: two readings of it that both fail say the same.
bool hasValues(const QByteArray &text)
{
    const QByteArrayList lines = text.split('\n');
    return std::ranges::any_of(
        lines, [](const QByteArray &line) { return !line.startsWith(';') && line.contains('='); });
}

/// The file's text with its values edited, by way of a copy of QSettings' own: in memory, for
/// QSettings waits for the disk at every change.
Result<QByteArray> edited(const QByteArray &text, const Edit &edit)
{
    const QString memory = u"/dev/shm"_s;
    const bool hasMemory = !qEnvironmentVariableIsSet("TMPDIR") && QFileInfo(memory).isWritable();
    const QTemporaryDir folder((hasMemory ? memory : QDir::tempPath()) + u"/Brimvale-XXXXXX"_s);
    QFile copy(folder.filePath(u"before"_s));
    if (!folder.isValid() || !copy.open(QIODevice::WriteOnly) || copy.write(text) != text.size() ||
        !copy.flush())
        return Failure{u"cannot copy the settings: "_s + copy.errorString()};
    copy.close();

    // QSettings does not always say when it cannot read or write. Under another name it reads anew.
    const QString again = folder.filePath(u"again"_s);
    QSettings settings(copy.fileName(), QSettings::IniFormat);
    const QVariantMap before = valuesOf(settings);
    if ((before.isEmpty() && hasValues(text)) || !copy.copy(again) || !holds(again, before))
        return Failure{u"cannot read the settings"_s};
    edit(settings);
    const QVariantMap after = valuesOf(settings);
    settings.sync(); // which may read again, and take what it cannot read for nothing
    if (!copy.rename(folder.filePath(u"after"_s)) || !holds(copy.fileName(), after))
        return Failure{u"cannot write the settings"_s};
    Result<WholeFile> written = readWholeFile(copy.fileName());
    return written ? Result<QByteArray>(std::move(written->content)) : Failure{written.reason()};
}

/// The file's text with one more item in an array. Those before it stay as they are: to read and
/// write thousands of them takes its time. An array of none or one, or one that does not stand
/// where QSettings puts it, is edited as any other value.
Result<QByteArray> appended(const QByteArray &text, const QVariant &item, QLatin1StringView key)
{
    const QByteArray name = '\n' + QByteArray(key.data(), key.size()) + '=';
    const qsizetype line = text.indexOf(name);
    const qsizetype start = line + name.size();
    // An array of one begins otherwise; quotes stand where one of the texts needs them.
    const QByteArrayView items = QByteArrayView(text).sliced(std::min(start, text.size()));
    const QByteArrayView first = items.sliced(items.startsWith('"') ? 1 : 0);
    const bool isRecords = line >= 0 && first.startsWith(R"(@Variant(\0\0\0\b)");
    const bool isGeneral =
        text.startsWith("[General]\n") && !QByteArrayView(text).first(line + 1).contains("\n[");
    if (!isRecords || !isGeneral) {
        return edited(text, [&](QSettings &settings) {
            settings.setValue(key, settings.value(key).toList() << item);
        });
    }
    const Result<QByteArray> twice = edited({}, [&](QSettings &settings) {
        settings.setValue(key, QVariantList{item, item});
    });
    if (!twice)
        return Failure{twice.reason()};
    const QByteArrayView separated = QByteArrayView(*twice).trimmed();
    constexpr qsizetype separator = 2; // a comma and a blank
    const qsizetype length = (separated.size() - separated.indexOf('=') - 1 - separator) / 2;
    const auto end = std::ranges::find_first_of(items, "\r\n"_L1); // or the file's end
    QByteArray longer = text;
    longer.insert(start + (end - items.begin()), separated.last(length + separator));
    return longer;
}

Outcome change(const std::function<Result<QByteArray>(const QByteArray &)> &newText)
{
    const QString path = Stored().fileName();
    const QString folder = QFileInfo(path).path();
    if (const Outcome made = FileTree::createFolders(folder); !made)
        return made;
    const SettingsLock lock(folder);
    constexpr int mostTimes = 100;
    for (int times = 1;; ++times) {
        const Result<WholeFile> file = readWholeFile(path);
        if (!file)
            return Failure{file.reason()};
        const Result<QByteArray> text = newText(file->content);
        if (!text)
            return Failure{text.reason()};
        if (*text == file->content)
            return {};
        const Result<FileVersion> written =
            writeWholeFile(path, file->version, [&text](QIODevice &device) {
                return device.write(*text) == text->size();
            });
        // Some disks have no locks, and some programs know of none: theirs is edited again.
        if (written || times == mostTimes || !written.isOutdated())
            return written ? Outcome() : Failure{written.reason()};
    }
}

} // namespace

QVariant SettingsStore::object(QLatin1StringView key) const
{
    return Stored().value(key);
}

Outcome SettingsStore::setObject(const QVariant &value, QLatin1StringView key)
{
    return change([&](const QByteArray &text) {
        return edited(text, [&](QSettings &settings) { settings.setValue(key, value); });
    });
}

Outcome SettingsStore::removeObject(QLatin1StringView key)
{
    return change([&](const QByteArray &text) {
        return edited(text, [&](QSettings &settings) { settings.remove(key); });
    });
}

Outcome SettingsStore::appendObject(const QVariant &object, QLatin1StringView arrayKey)
{
    return change([&](const QByteArray &text) { return appended(text, object, arrayKey); });
}

Outcome SettingsStore::synchronize()
{
    return {}; // every change was on the disk when it ended
}
