#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringConverter>

#include <string_view>

/// How the characters of an XML file are stored.
struct XmlEncoding
{
    QStringConverter::Encoding form = QStringConverter::Utf8; ///< or Utf16LE, Utf16BE, Latin1
    bool byteOrderMark = false;

    /// Told from the first bytes of a file: a byte order mark, the "<" of a document without one,
    /// or what its declaration says.
    static XmlEncoding of(QByteArrayView file);

    /// Whether the declaration of a text that is stored so may give it this name; none is as good
    /// as the right one. The text is what the file holds, in UTF-8.
    [[nodiscard]] bool isNamed(std::string_view name, QByteArrayView text) const;
};
