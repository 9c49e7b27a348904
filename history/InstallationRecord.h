#pragma once

#include "platform/Result.h"

#include <QString>
#include <QVariant>

#include <optional>

/// One line of the installation history. In the settings it is a dictionary whose only key is
/// "installations", and the history an array of them, oldest first.
struct InstallationRecord
{
    struct Parts
    {
        QString date;
        QString category;
        QString templateName;
    };

    QString line;

    /// Date text, one blank, category, three blanks, template.
    static InstallationRecord make(const QString &dateText, const QString &category,
                                   const QString &templateName);
    /// None of a line that is not made so, or whose category the library does not have.
    [[nodiscard]] std::optional<Parts> parts() const;

    bool operator==(const InstallationRecord &) const = default;
};

/// The history of a settings value; whatever is no record is left out.
QList<InstallationRecord> installationRecords(const QVariant &installations);

/// Adds a record at the end of the stored history, whatever was stored since it was last read.
Outcome appendInstallation(const InstallationRecord &record);
