#include "XmlEncoding.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The name that the XML declaration gives, where it can be read byte by byte.
QString declaredName(QByteArrayView file)
{
    constexpr qsizetype longestDeclaration = 256;
    static const QRegularExpression declaration(
        uR"(^<\?xml\s[^>]*encoding\s*=\s*["']([\w.-]+)["'])"_s);
    return declaration
        .match(QString::fromLatin1(file.first(std::min(file.size(), longestDeclaration))))
        .captured(1);
}

} // namespace

XmlEncoding XmlEncoding::of(QByteArrayView file)
{
    if (file.startsWith("\xEF\xBB\xBF"))
        return {QStringConverter::Utf8, true};
    if (file.startsWith("\xFF\xFE"))
        return {QStringConverter::Utf16LE, true};
    if (file.startsWith("\xFE\xFF"))
        return {QStringConverter::Utf16BE, true};
    // Without a mark the "<" with which a document begins says as much.
    if (file.startsWith(QByteArrayView("<\0", 2)))
        return {QStringConverter::Utf16LE, false};
    if (file.startsWith(QByteArrayView("\0<", 2)))
        return {QStringConverter::Utf16BE, false};
    const bool isLatin1 = declaredName(file).compare("ISO-8859-1"_L1, Qt::CaseInsensitive) == 0;
    return {isLatin1 ? QStringConverter::Latin1 : QStringConverter::Utf8, false};
}

bool XmlEncoding::isNamed(std::string_view name, QByteArrayView text) const
{
    const auto is = [&](QByteArrayView known) {
        return QByteArrayView(name.data(), static_cast<qsizetype>(name.size()))
                   .compare(known, Qt::CaseInsensitive) == 0;
    };
    if (name.empty())
        return true;
    switch (form) {
    case QStringConverter::Utf16LE:
        return is("UTF-16") || is("UTF-16LE");
    case QStringConverter::Utf16BE:
        return is("UTF-16") || is("UTF-16BE");
    case QStringConverter::Latin1:
        return is("ISO-8859-1");
    default:
        return is("UTF-8") || is("utf8") ||
               (is("US-ASCII") && QtPrivate::isAscii(QLatin1StringView(text)));
    }
}
