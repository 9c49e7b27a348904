#include "SettingsLock.h"
#include "SettingsStore.h"

#include <QFileInfo>
#include <QSettings>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// The user defaults; a test may set another format.
class Defaults : public QSettings
{
public:
    Defaults() : QSettings(defaultFormat(), UserScope, u"Brimvale"_s, u"Brimvale"_s)
    {
        setFallbacksEnabled(false);
    }

    Outcome flush()
    {
        sync();
        if (status() != NoError)
            return Failure{u"cannot write the settings"_s};
        return {};
    }
};

Outcome change(const std::function<void(QSettings &)> &edit)
{
    const SettingsLock lock(QFileInfo(Defaults().fileName()).path());
    Defaults defaults; // read under the lock
    if (const Outcome read = defaults.flush(); !read)
        return read;
    edit(defaults);
    return defaults.flush();
}

} // namespace

QVariant SettingsStore::object(QLatin1StringView key) const
{
    return Defaults().value(key);
}

Outcome SettingsStore::setObject(const QVariant &value, QLatin1StringView key)
{
    return change([&](QSettings &defaults) { defaults.setValue(key, value); });
}

Outcome SettingsStore::removeObject(QLatin1StringView key)
{
    return change([&](QSettings &defaults) { defaults.remove(key); });
}

Outcome SettingsStore::appendObject(const QVariant &object, QLatin1StringView arrayKey)
{
    return change([&](QSettings &defaults) {
        defaults.setValue(arrayKey, defaults.value(arrayKey).toList() << object);
    });
}

Outcome SettingsStore::synchronize()
{
    return Defaults().flush();
}
