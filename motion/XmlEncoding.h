#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringConverter>

#include <string_view>

/// How the characters of an XML file are stored: the encodings that every XML program reads.
struct XmlEncoding
{
    QStringConverter::Encoding form = QStringConverter::Utf8; ///< or Utf16LE, Utf16BE
    bool byteOrderMark = false;

    /// Told from the first bytes of a file, with or without a byte order mark.
    static XmlEncoding of(QByteArrayView file);

    /// Whether an XML declaration may give it this name; none is as good as the right one.
    [[nodiscard]] bool isNamed(std::string_view name) const;
};
