#include "DiagnosticLog.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(brimvale, "brimvale", QtInfoMsg)

} // namespace

void diagnosticLog(const QString &message)
{
    qCInfo(brimvale).noquote() << message;
}

void diagnosticLog(const QStringList &values)
{
    constexpr qsizetype longest = 65536; // a file can hold thousands of long values
    QString line = u"("_s + values.join(", "_L1) + u")"_s;
    if (line.size() > longest)
        line = line.first(longest) + u" ..."_s;
    diagnosticLog(line);
}
