#include "NumberText.h"

#include <QRegularExpression>

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

using namespace Qt::StringLiterals;

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

} // namespace

float leadingNumber(const QString &text)
{
    static const QRegularExpression number(uR"(^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)"_s);
    // QString::toDouble() makes 0 of a number that is too large; a stream makes the largest.
    std::istringstream stream(number.match(text.trimmed()).captured().toStdString());
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    return static_cast<float>(value);
}

QString oneDecimalText(double number)
{
    return numberText(number, std::chars_format::fixed, 1);
}

QString sevenDigitsText(double number)
{
    return numberText(number, std::chars_format::general, 7);
}
