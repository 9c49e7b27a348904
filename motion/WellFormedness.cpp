#include "WellFormedness.h"

#include "XmlNames.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

// Each function reads one production of "Extensible Markup Language (XML) 1.0 (Fifth Edition)",
// or the rest of it where its first characters have been taken, and answers whether it is there.
// The production is quoted above it. Names are the one exception: see XmlNames.h.

namespace {

constexpr std::size_t deepestLevel = 1024;

enum ByteClass : unsigned char {
    Blank = 1,         // S
    NameStart = 2,     // NameStartChar in ASCII
    NameCharacter = 4, // NameChar in ASCII
    Plain = 8,         // a Char in ASCII that ends neither character data nor an attribute value
    PublicId = 16,     // PubidChar
};

constexpr bool isOneOf(char byte, std::string_view bytes)
{
    return bytes.find(byte) != std::string_view::npos;
}

constexpr bool isBetween(char byte, char first, char last)
{
    return byte >= first && byte <= last;
}

constexpr std::array<unsigned char, 256> byteClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (int value = 1; value < 128; ++value) {
        const char byte = static_cast<char>(value);
        const bool blank = isOneOf(byte, " \t\r\n");
        const bool letter = isBetween(byte, 'a', 'z') || isBetween(byte, 'A', 'Z');
        const bool digit = isBetween(byte, '0', '9');
        const bool nameStart = letter || isOneOf(byte, ":_");
        const bool plain = blank || (value >= ' ' && !isOneOf(byte, "<&]\"'"));
        const bool publicId = letter || digit || isOneOf(byte, " \r\n-'()+,./:=?;!*#@$_%");
        classes[static_cast<unsigned char>(value)] = static_cast<unsigned char>(
            (blank ? Blank : 0) | (nameStart ? NameStart : 0) |
            (nameStart || digit || isOneOf(byte, "-.") ? NameCharacter : 0) | (plain ? Plain : 0) |
            (publicId ? PublicId : 0));
    }
    return classes;
}();

bool is(char byte, unsigned char byteClass)
{
    return (byteClasses[static_cast<unsigned char>(byte)] & byteClass) != 0;
}

/// In a variable of its own the position stays in a register, which is twice as fast.
const char *skip(const char *next, unsigned char byteClass)
{
    while (is(*next, byteClass))
        ++next;
    return next;
}

bool isAscii(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}

// [2] Char ::= #x9 | #xA | #xD | [#x20-#xD7FF] | [#xE000-#xFFFD] | [#x10000-#x10FFFF]
bool isCharacter(char32_t character)
{
    if (character < 0x20)
        return character == 0x9 || character == 0xA || character == 0xD;
    return character <= 0xD7FF || (character >= 0xE000 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

class Check
{
public:
    explicit Check(std::string_view text)
        : m_begin(text.data()), m_end(text.data() + text.size()), m_next(text.data())
    {
    }

    // [1] document ::= prolog element Misc*
    // [22] prolog ::= XMLDecl? Misc* (doctypedecl Misc*)?
    bool document()
    {
        if (m_next[0] == '<' && m_next[1] == '?' && isXmlDeclaration() && !xmlDeclaration())
            return false;
        if (!miscellanea() || (take("<!DOCTYPE") && !(documentType() && miscellanea())))
            return false;
        return rootElement() && miscellanea() &&
               (m_next == m_end || fail("content behind the root element"));
    }

    [[nodiscard]] const XmlOutline &outline() const { return m_outline; }

    [[nodiscard]] Failure failure() const
    {
        return {u"%1, at byte %2"_s.arg(QLatin1StringView(m_fault)).arg(m_next - m_begin)};
    }

private:
    struct OpenElement
    {
        std::string_view name;
        bool hasText = false;  // anything but blanks
        bool hasNodes = false; // elements, comments, processing instructions
    };

    bool fail(const char *fault)
    {
        if (!m_fault)
            m_fault = fault;
        return false;
    }

    // The terminating 0 is no part of any token, so a look ahead never goes beyond it.
    bool take(std::string_view token)
    {
        for (std::size_t index = 0; index < token.size(); ++index) {
            if (m_next[index] != token[index])
                return false;
        }
        m_next += token.size();
        return true;
    }

    bool take(char byte)
    {
        if (*m_next != byte)
            return false;
        ++m_next;
        return true;
    }

    bool demand(char byte, const char *fault) { return take(byte) || fail(fault); }

    // [3] S ::= (#x20 | #x9 | #xD | #xA)+
    bool blanks()
    {
        const char *start = m_next;
        m_next = skip(m_next, Blank);
        return m_next != start;
    }

    bool demandBlanks() { return blanks() || fail("no blank where one belongs"); }

    // [25] Eq ::= S? '=' S?
    bool equals()
    {
        blanks();
        if (!demand('=', "no \"=\" behind a name"))
            return false;
        blanks();
        return true;
    }

    struct Decoded
    {
        char32_t character = 0;
        int length = 0; // in bytes; both are 0 when the bytes are not UTF-8
    };

    // The sequences of RFC 3629: none longer than needed, no surrogates.
    [[nodiscard]] Decoded decode() const
    {
        const auto byte = [this](int index) { return static_cast<unsigned char>(m_next[index]); };
        const unsigned char first = byte(0);
        if (first < 0x80)
            return {first, 1};
        const int length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        if (first < 0xC2 || first > 0xF4)
            return {};
        char32_t character = first & (0x7F >> length);
        for (int index = 1; index < length; ++index) {
            if ((byte(index) & 0xC0) != 0x80)
                return {};
            character = character << 6 | (byte(index) & 0x3F);
        }
        constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
        if (character < smallest[static_cast<std::size_t>(length)])
            return {};
        return {character, length};
    }

    bool character()
    {
        if (m_next == m_end)
            return fail("the end where more belongs");
        const Decoded decoded = decode();
        if (decoded.length == 0 || !isCharacter(decoded.character))
            return fail("a character that XML cannot hold");
        m_next += decoded.length;
        return true;
    }

    // [5] Name ::= NameStartChar (NameChar)*
    bool name(std::string_view &name)
    {
        const char *start = m_next;
        if (is(*m_next, NameStart))
            ++m_next;
        else if (const Decoded decoded = decode(); isXmlNameStart(decoded.character))
            m_next += decoded.length;
        else
            return fail("no name where one belongs");
        for (;;) {
            m_next = skip(m_next, NameCharacter);
            if (isAscii(*m_next))
                break;
            const Decoded decoded = decode();
            if (!isXmlNameCharacter(decoded.character))
                break;
            m_next += decoded.length;
        }
        name = {start, static_cast<std::size_t>(m_next - start)};
        return true;
    }

    // [66] CharRef ::= '&#' [0-9]+ ';' | '&#x' [0-9a-fA-F]+ ';'
    // [67] Reference ::= EntityRef | CharRef
    // [68] EntityRef ::= '&' Name ';'
    bool reference()
    {
        if (take("&#"))
            return characterReference();
        for (const std::string_view entity : {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"}) {
            if (take(entity))
                return true;
        }
        return fail("an entity that is not defined");
    }

    bool characterReference()
    {
        const bool hexadecimal = take('x');
        const char32_t base = hexadecimal ? 16 : 10;
        char32_t character = 0;
        const char *start = m_next;
        for (;; ++m_next) {
            char32_t digit = 0;
            if (isBetween(*m_next, '0', '9'))
                digit = static_cast<char32_t>(*m_next - '0');
            else if (hexadecimal && isBetween(*m_next, 'a', 'f'))
                digit = static_cast<char32_t>(*m_next - 'a' + 10);
            else if (hexadecimal && isBetween(*m_next, 'A', 'F'))
                digit = static_cast<char32_t>(*m_next - 'A' + 10);
            else
                break;
            character = std::min<char32_t>(character * base + digit, 0x110000);
        }
        return (m_next != start && take(';') && isCharacter(character)) ||
               fail("a character reference to no character");
    }

    // Characters up to the first of a token, and the token.
    bool charactersThrough(std::string_view token)
    {
        for (;;) {
            while (is(*m_next, Plain) && *m_next != token[0])
                ++m_next;
            if (take(token))
                return true;
            if (!character())
                return false;
        }
    }

    // [15] Comment ::= '<!--' ((Char - '-') | ('-' (Char - '-')))* '-->'
    bool comment() { return charactersThrough("--") && demand('>', "\"--\" inside a comment"); }

    // [16] PI ::= '<?' PITarget (S (Char* - (Char* '?>' Char*)))? '?>'
    // [17] PITarget ::= Name - (('X' | 'x') ('M' | 'm') ('L' | 'l'))
    bool processingInstruction()
    {
        std::string_view target;
        if (!name(target))
            return false;
        if (target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
            (target[2] | 0x20) == 'l')
            return fail("an XML declaration that is not at the start");
        return take("?>") || (demandBlanks() && charactersThrough("?>"));
    }

    // [27] Misc ::= Comment | PI | S
    bool miscellanea()
    {
        for (;;) {
            blanks();
            if (take("<!--")) {
                if (!comment())
                    return false;
            } else if (take("<?")) {
                if (!processingInstruction())
                    return false;
            } else {
                return true;
            }
        }
    }

    [[nodiscard]] bool isXmlDeclaration() const
    {
        return std::strncmp(m_next, "<?xml", 5) == 0 && is(m_next[5], Blank);
    }

    // [23] XMLDecl ::= '<?xml' VersionInfo EncodingDecl? SDDecl? S? '?>'
    // [24] VersionInfo ::= S 'version' Eq ("'" VersionNum "'" | '"' VersionNum '"')
    // [26] VersionNum ::= '1.' [0-9]+ (without a digit all parsers still take it)
    // [80] EncodingDecl ::= S 'encoding' Eq ('"' EncName '"' | "'" EncName "'")
    // [81] EncName ::= [A-Za-z] ([A-Za-z0-9._] | '-')*
    // [32] SDDecl ::= S 'standalone' Eq (("'" ('yes' | 'no') "'") | ('"' ('yes' | 'no') '"'))
    bool xmlDeclaration()
    {
        const char *start = m_next;
        take("<?xml");
        std::string_view value;
        if (!blanks() || !take("version") || !pseudoAttribute(value) || !value.starts_with("1.") ||
            !std::all_of(value.begin() + 2, value.end(),
                         [](char byte) { return isBetween(byte, '0', '9'); }))
            return fail("an XML declaration without a version");
        bool separated = blanks();
        if (separated && take("encoding")) {
            if (!pseudoAttribute(value) || value.empty() || !is(value[0], NameStart) ||
                isOneOf(value[0], ":_") || isOneOf(':', value))
                return fail("an encoding that has no name");
            m_outline.declaredEncoding = value;
            separated = blanks();
        }
        if (separated && take("standalone")) {
            if (!pseudoAttribute(value) || (value != "yes" && value != "no"))
                return fail("an XML declaration that neither stands alone nor does not");
            blanks();
        }
        if (!take("?>"))
            return fail("something else in the XML declaration");
        m_outline.declaration = {start, static_cast<std::size_t>(m_next - start)};
        return true;
    }

    // What is behind the names in an XML declaration holds name characters only.
    bool pseudoAttribute(std::string_view &value)
    {
        if (!equals() || !isOneOf(*m_next, "\"'") || m_next == m_end)
            return false;
        const char quote = *m_next++;
        const char *start = m_next;
        m_next = skip(m_next, NameCharacter);
        value = {start, static_cast<std::size_t>(m_next - start)};
        return take(quote);
    }

    // [28] doctypedecl ::= '<!DOCTYPE' S Name (S ExternalID)? S? ('[' intSubset ']' S?)? '>'
    // [75] ExternalID ::= 'SYSTEM' S SystemLiteral | 'PUBLIC' S PubidLiteral S SystemLiteral
    bool documentType()
    {
        std::string_view type;
        if (!demandBlanks() || !name(type))
            return false;
        if (blanks()) {
            if (take("PUBLIC")) {
                if (!(demandBlanks() && publicIdLiteral() && demandBlanks() && systemLiteral()))
                    return false;
            } else if (take("SYSTEM")) {
                if (!(demandBlanks() && systemLiteral()))
                    return false;
            }
            blanks();
        }
        return *m_next == '[' ? fail("a document type with an internal subset")
                              : demand('>', "something else in the document type");
    }

    // [11] SystemLiteral ::= ('"' [^"]* '"') | ("'" [^']* "'")
    bool systemLiteral()
    {
        return take('"')    ? charactersThrough("\"")
               : take('\'') ? charactersThrough("'")
                            : fail("no literal in quotes");
    }

    // [12] PubidLiteral ::= '"' PubidChar* '"' | "'" (PubidChar - "'")* "'"
    bool publicIdLiteral()
    {
        const char quote = *m_next;
        if (!take('"') && !take('\''))
            return fail("no literal in quotes");
        while (is(*m_next, PublicId) && *m_next != quote)
            ++m_next;
        return demand(quote, "a public identifier that holds something else");
    }

    // [39] element ::= EmptyElemTag | STag content ETag
    bool rootElement() { return demand('<', "no root element") && startTag() && content(); }

    // [40] STag ::= '<' Name (S Attribute)* S? '>'
    // [44] EmptyElemTag ::= '<' Name (S Attribute)* S? '/>'
    bool startTag()
    {
        std::string_view type;
        if (!name(type) || !attributes())
            return false;
        if (m_open.size() == deepestLevel)
            return fail("more levels of elements than any program writes");
        if (take("/>"))
            return true;
        m_open.push_back({type});
        return demand('>', "a start tag that does not end");
    }

    // [41] Attribute ::= Name Eq AttValue
    // Well-formedness constraint: Unique Att Spec
    bool attributes()
    {
        m_attributes.clear();
        while (blanks() && *m_next != '>' && *m_next != '/') {
            std::string_view attribute;
            if (!name(attribute) || !equals() || !attributeValue())
                return false;
            m_attributes.push_back(attribute);
        }
        return attributesAreUnique() || fail("an attribute that is there twice");
    }

    bool attributesAreUnique()
    {
        // Comparing each with each is the fastest way for few, and takes for ever for many.
        constexpr std::size_t few = 16;
        if (m_attributes.size() > few) {
            std::sort(m_attributes.begin(), m_attributes.end());
            return std::adjacent_find(m_attributes.begin(), m_attributes.end()) ==
                   m_attributes.end();
        }
        for (auto attribute = m_attributes.begin(); attribute != m_attributes.end(); ++attribute) {
            if (std::find(m_attributes.begin(), attribute, *attribute) != attribute)
                return false;
        }
        return true;
    }

    // [10] AttValue ::= '"' ([^<&"] | Reference)* '"' | "'" ([^<&'] | Reference)* "'"
    bool attributeValue()
    {
        const char quote = *m_next;
        if (!take('"') && !take('\''))
            return fail("an attribute without a value in quotes");
        for (;;) {
            m_next = skip(m_next, Plain);
            if (take(quote))
                return true;
            if (*m_next == '<')
                return fail("\"<\" in an attribute value");
            if (*m_next == '&' ? !reference() : !character())
                return false;
        }
    }

    // [42] ETag ::= '</' Name S? '>'
    bool endTag()
    {
        const std::string_view type = m_open.back().name;
        if (!take(type))
            return fail("an end tag that does not match");
        blanks();
        m_open.pop_back();
        return demand('>', "an end tag that does not match");
    }

    // [43] content ::= CharData? ((element | Reference | CDSect | PI | Comment) CharData?)*
    bool content()
    {
        while (!m_open.empty()) {
            blanks();
            if (*m_next != '<') {
                if (!characterData())
                    return false;
            } else if (take("</")) {
                if (!endTag())
                    return false;
            } else if (take("<![CDATA[")) {
                m_outline.mixedContent = true;
                if (!charactersThrough("]]>"))
                    return false;
            } else if (!node()) {
                return false;
            }
        }
        return true;
    }

    bool node()
    {
        OpenElement &parent = m_open.back();
        parent.hasNodes = true;
        m_outline.mixedContent = m_outline.mixedContent || parent.hasText;
        if (take("<!--"))
            return comment();
        if (take("<?"))
            return processingInstruction();
        return take('<') && startTag();
    }

    // [14] CharData ::= [^<&]* - ([^<&]* ']]>' [^<&]*)
    bool characterData()
    {
        OpenElement &parent = m_open.back();
        parent.hasText = true;
        m_outline.mixedContent = m_outline.mixedContent || parent.hasNodes;
        for (;;) {
            m_next = skip(m_next, Plain);
            if (*m_next == '<')
                return true;
            if (take("]]>"))
                return fail("\"]]>\" in a text");
            if (*m_next == '&' ? !reference() : !character())
                return false;
        }
    }

    const char *m_begin;
    const char *m_end;
    const char *m_next;
    const char *m_fault = nullptr;
    XmlOutline m_outline;
    std::vector<OpenElement> m_open;
    std::vector<std::string_view> m_attributes;
};

} // namespace

Result<XmlOutline> checkWellFormed(std::string_view text)
{
    Check check(text);
    if (!check.document())
        return check.failure();
    return check.outline();
}
