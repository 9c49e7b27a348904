#include "XmlEncoding.h"

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
    return {};
}

bool XmlEncoding::isNamed(std::string_view name) const
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
    default:
        return is("UTF-8");
    }
}
