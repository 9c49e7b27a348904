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
    diagnosticLog(u"("_s + values.join(", "_L1) + u")"_s);
}
