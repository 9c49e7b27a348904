#pragma once

#include <QString>

// Numbers in texts: with a decimal point under every locale, rounded as printf rounds.

/// The decimal number with which the text begins, blanks before it skipped: sign, fraction and
/// exponent are optional. 0 when there is none; infinite when it is too large.
float leadingNumber(const QString &text);

/// As printf's "%.1f" writes it: "10.0", "inf", "-inf", "nan".
QString oneDecimalText(double number);

/// As printf's "%.7g" writes it: "250", "239.8".
QString sevenDigitsText(double number);
