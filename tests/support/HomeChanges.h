#pragma once

#include <QMap>
#include <QStringList>

/// What happened on the disk between two TestHome::snapshot(): whole trees that were moved or
/// copied are one change each, and so are new ones and those that are gone. Of a file that was
/// written, the lines that it did not have.
[[nodiscard]] QStringList homeChanges(const QMap<QString, QByteArray> &before,
                                      const QMap<QString, QByteArray> &now);
