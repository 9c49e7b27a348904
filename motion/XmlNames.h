#pragma once

/// Whether a character beyond ASCII may begin a name in XML, or stand inside one.
///
/// Of the two definitions that XML 1.0 has had this is the narrower one, of its first four
/// editions: the fifth allows almost everything, but parsers that keep to the older one are still
/// in use, and a file is only good when all of them can read it.
bool isXmlNameStart(char32_t character);
bool isXmlNameCharacter(char32_t character);
