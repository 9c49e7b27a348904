#include "InstallationRecord.h"

#include "settings/SettingsStore.h"

using namespace Qt::StringLiterals;

namespace {

/// The settings key's own word, once more.
const QString recordKey = u"installations"_s;

} // namespace

InstallationRecord InstallationRecord::make(const QString &dateText, const QString &category,
                                            const QString &templateName)
{
    return {dateText + u' ' + category + u"   "_s + templateName};
}

QList<InstallationRecord> installationRecords(const QVariant &installations)
{
    QList<InstallationRecord> records;
    const QVariantList stored = installations.toList();
    records.reserve(stored.size());
    for (const QVariant &each : stored) {
        const QVariant line = each.toMap().value(recordKey);
        if (line.isValid())
            records.append({line.toString()});
    }
    return records;
}

Outcome appendInstallation(const InstallationRecord &record)
{
    return SettingsStore().appendObject(QVariantMap{{recordKey, record.line}},
                                        SettingsStore::installations);
}
