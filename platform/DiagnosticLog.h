#pragma once

#include <QStringList>

/// One line to the diagnostic log: standard error, the message alone.
void diagnosticLog(const QString &message);

/// A list of values as one line, which is cut after 64 K characters.
void diagnosticLog(const QStringList &values);
