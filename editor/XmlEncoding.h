#pragma once

/// How the characters of an XML file are stored.
struct XmlEncoding
{
    enum class Form { Utf8, Utf16LittleEndian, Utf16BigEndian };

    Form form = Form::Utf8;
    bool byteOrderMark = false;
};
