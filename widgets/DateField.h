#pragma once

#include "ElidedLabel.h"

#include <QDateTime>

/// A field whose value is a date and whose text is that date in the field's format.
class DateField : public ElidedLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DateField)
    Q_PROPERTY(QString format READ format WRITE setFormat)

public:
    explicit DateField(QWidget *parent = nullptr);

    /// As QDateTime::toString reads it; empty: a medium form of the user's locale.
    [[nodiscard]] QString format() const { return m_format; }
    void setFormat(const QString &format) { m_format = format; }

    /// A date and time, or an invalid value where there is none.
    [[nodiscard]] QVariant objectValue() const { return m_value; }
    /// Anything that is no date empties the field.
    void setObjectValue(const QVariant &value);

private:
    QString m_format;
    QVariant m_value;
};
