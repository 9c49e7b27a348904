#include "NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace {

/// QString::number() rounds a tie upwards where printf goes to the even digit.
QString numberText(double number, std::chars_format format, int precision)
{
    // The widest, "%.1f" of the largest double, has 311 characters.
    std::array<char, 512> buffer;
    const double unsignedNan = std::isnan(number) ? std::abs(number) : number;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), unsignedNan, format, precision);
    return QString::fromLatin1(buffer.data(), end.ptr - buffer.data());
}

/// A text is read once, from its start.
class Reader
{
public:
    explicit Reader(QStringView text) : m_text(text) {}

    void skipBlanks()
    {
        while (m_position < m_text.size() && m_text[m_position].isSpace())
            ++m_position;
    }

    bool take(QStringView anyOf)
    {
        const bool taken = m_position < m_text.size() && anyOf.contains(m_text[m_position]);
        m_position += taken ? 1 : 0;
        return taken;
    }

    bool takeDigits()
    {
        const qsizetype start = m_position;
        while (take(u"0123456789")) {
        }
        return m_position > start;
    }

    [[nodiscard]] qsizetype position() const { return m_position; }

private:
    QStringView m_text;
    qsizetype m_position = 0;
};

} // namespace

float leadingNumber(const QString &text)
{
    Reader reader(text);
    reader.skipBlanks();
    const qsizetype start = reader.position();
    reader.take(u"+-");
    const bool whole = reader.takeDigits();
    const bool fraction = reader.take(u".") && reader.takeDigits();
    if (!whole && !fraction)
        return 0;
    qsizetype end = reader.position();
    if (reader.take(u"eE")) {
        reader.take(u"+-");
        if (reader.takeDigits())
            end = reader.position();
    }
    // QString::toDouble() makes 0 of a number that is too large; a stream makes the largest.
    std::istringstream stream(text.mid(start, end - start).toStdString());
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return static_cast<float>(number);
}

QString oneDecimalText(double number)
{
    return numberText(number, std::chars_format::fixed, 1);
}

QString sevenDigitsText(double number)
{
    return numberText(number, std::chars_format::general, 7);
}
