#include "SettingsStore.h"

using namespace Qt::StringLiterals;

// The default format is the platform's own; a test may set another.
SettingsStore::SettingsStore()
    : m_settings(QSettings::defaultFormat(), QSettings::UserScope, u"Brimvale"_s, u"Brimvale"_s)
{
    m_settings.setFallbacksEnabled(false);
}

QVariant SettingsStore::object(QLatin1StringView key) const
{
    return m_settings.value(key);
}

Outcome SettingsStore::setObject(const QVariant &value, QLatin1StringView key)
{
    m_settings.setValue(key, value);
    return {};
}

Outcome SettingsStore::removeObject(QLatin1StringView key)
{
    m_settings.remove(key);
    return {};
}

Outcome SettingsStore::synchronize()
{
    m_settings.sync();
    if (m_settings.status() != QSettings::NoError)
        return Failure{u"cannot write the settings"_s};
    return {};
}
