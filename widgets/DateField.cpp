#include "DateField.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// Between the locale's long and short form: the long date without its weekday and with the
/// short name of the month, then the short time.
QString mediumForm(const QDateTime &date)
{
    static const QRegularExpression weekday(u"dddd?[,.]?\\s*"_s);
    const QLocale locale;
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.remove(weekday).replace("MMMM"_L1, "MMM"_L1);
    return locale.toString(date.date(), format.trimmed()) + u' ' +
           locale.toString(date.time(), QLocale::ShortFormat);
}

} // namespace

DateField::DateField(QWidget *parent) : ElidedLabel(parent) {}

void DateField::setObjectValue(const QVariant &value)
{
    const QDateTime date = value.toDateTime();
    m_value = date.isValid() ? QVariant(date) : QVariant();
    if (!date.isValid())
        clear();
    else
        setText(m_format.isEmpty() ? mediumForm(date) : date.toString(m_format));
}
