#include "InstallationRecord.h"

#include "library/TemplateLibrary.h"
#include "settings/SettingsStore.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The settings key's own word, once more.
const QString recordKey = u"installations"_s;

const QString templateSeparator = u"   "_s;

} // namespace

InstallationRecord InstallationRecord::make(const QString &dateText, const QString &category,
                                            const QString &templateName)
{
    return {dateText + u' ' + category + templateSeparator + templateName};
}

std::optional<InstallationRecord::Parts> InstallationRecord::parts() const
{
    const qsizetype categoryEnd = line.indexOf(templateSeparator);
    const qsizetype dateEnd = categoryEnd > 0 ? line.lastIndexOf(u' ', categoryEnd - 1) : -1;
    if (dateEnd < 1)
        return {};
    const QString category = line.mid(dateEnd + 1, categoryEnd - dateEnd - 1);
    const auto known = TemplateLibrary::categories();
    if (std::ranges::find(known, category, &TemplateCategory::name) == known.end())
        return {};
    return Parts{line.left(dateEnd), category, line.mid(categoryEnd + templateSeparator.size())};
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
