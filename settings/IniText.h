#pragma once

#include <QByteArray>
#include <QVariant>

/// The text of a file as QSettings writes it, to read and change single values in it: lines of
/// other keys and sections stay as they are. Keys are the general section's, of letters and
/// digits; a value stands on one line, as QSettings writes it.
class IniText
{
public:
    explicit IniText(QByteArray text);

    [[nodiscard]] const QByteArray &text() const { return m_text; }

    /// An invalid value when the key is not there.
    [[nodiscard]] QVariant value(QByteArrayView key) const;

    void setValue(QByteArrayView key, const QVariant &value);
    /// Adds an item at the end of an array, without a look at those before it.
    void appendItem(QByteArrayView key, const QVariant &item);
    void remove(QByteArrayView key);

private:
    /// Where a key's line begins and ends, the line end included, and where its value begins.
    /// Without the key these are the place where its line belongs, in the order of the keys.
    struct Line
    {
        qsizetype start = 0;
        qsizetype value = 0;
        qsizetype end = 0;
    };

    [[nodiscard]] Line find(QByteArrayView key) const;
    [[nodiscard]] QByteArrayView valueIn(const Line &line) const;

    QByteArray m_text;
};
