#include "WellFormedness.h"

#include <expat.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t deepestLevel = 1024;
constexpr const char *undefinedEntity = "an entity that is not defined";

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

/// Whether a start tag, which is well-formed, refers to an entity that XML itself does not define.
bool refersToEntity(std::string_view tag)
{
    for (auto at = tag.find('&'); at != std::string_view::npos; at = tag.find('&', at + 1)) {
        const auto is = [name = tag.substr(at + 1)](auto known) { return name.starts_with(known); };
        if (!is('#') && !is("amp;") && !is("lt;") && !is("gt;") && !is("quot;") && !is("apos;"))
            return true;
    }
    return false;
}

class Check
{
public:
    explicit Check(std::string_view text) : m_text(text)
    {
        // Character data is what lies between the rest: without a handler for it expat is faster.
        XML_Parser parser = m_parser.get();
        XML_SetUserData(parser, this);
        XML_SetXmlDeclHandler(parser, [](void *check, const char *version, const char *encoding,
                                         auto) { of(check).declaration(version, encoding); });
        XML_SetStartDoctypeDeclHandler(
            parser, [](void *check, auto, const char *systemId, auto, int internalSubset) {
                of(check).documentType(systemId, internalSubset != 0);
            });
        XML_SetElementHandler(
            parser, [](void *check, auto, auto) { of(check).startElement(); },
            [](void *check, auto) { of(check).endElement(); });
        XML_SetCommentHandler(parser, [](void *check, auto) { of(check).node(); });
        XML_SetProcessingInstructionHandler(parser,
                                            [](void *check, auto, auto) { of(check).node(); });
        XML_SetStartCdataSectionHandler(parser, [](void *check) { of(check).node(); });
        XML_SetSkippedEntityHandler(
            parser, [](void *check, auto, auto) { of(check).stop(undefinedEntity); });
    }

    Result<XmlOutline> run()
    {
        // What expat would take for another encoding, whatever it is told.
        const std::string_view start = m_text.substr(0, 2);
        if (start.ends_with('\0') ||
            (!start.starts_with('<') && !start.empty() && !isBlank(start[0])))
            return Failure{u"no document"_s};
        XML_Parser parser = m_parser.get();
        // In one piece: for many expat takes a quarter longer.
        if (XML_Parse(parser, m_text.data(), static_cast<int>(m_text.size()), XML_TRUE) ==
            XML_STATUS_OK)
            return std::move(m_outline);
        const char *fault = m_fault ? m_fault : XML_ErrorString(XML_GetErrorCode(parser));
        return Failure{
            u"%1, at byte %2"_s.arg(QLatin1StringView(fault)).arg(XML_GetCurrentByteIndex(parser))};
    }

private:
    struct OpenElement
    {
        std::ptrdiff_t name = 0;
        bool hasText = false;  // anything but blanks
        bool hasNodes = false; // elements, comments, processing instructions, CDATA sections
    };

    static Check &of(void *check) { return *static_cast<Check *>(check); }

    void stop(const char *fault)
    {
        m_fault = fault;
        XML_StopParser(m_parser.get(), XML_FALSE);
    }

    /// What expat reports now, as it stands.
    [[nodiscard]] std::string_view token() const
    {
        return m_text.substr(static_cast<std::size_t>(XML_GetCurrentByteIndex(m_parser.get())),
                             static_cast<std::size_t>(XML_GetCurrentByteCount(m_parser.get())));
    }

    void declaration(std::string_view version, const char *encoding)
    {
        if (!version.starts_with("1.") ||
            version.find_first_not_of("0123456789", 2) != std::string_view::npos)
            stop("a version of XML that there is not");
        m_outline.declaration = token();
        if (encoding)
            m_outline.encoding = m_outline.declaration.substr(m_outline.declaration.rfind(encoding),
                                                              std::string_view(encoding).size());
    }

    void documentType(const char *systemId, bool internalSubset)
    {
        m_hasExternalSubset = systemId;
        if (internalSubset)
            stop("a document type with an internal subset");
    }

    /// Begins what is no text: a tag, a comment, a processing instruction, a CDATA section, whose
    /// own text counts as text behind it.
    void markup()
    {
        const std::string_view markup = token();
        const auto begin = static_cast<std::size_t>(markup.data() - m_text.data());
        const std::string_view before = m_text.substr(m_next, begin - m_next);
        if (!m_open.empty() && !std::all_of(before.begin(), before.end(), isBlank))
            m_open.back().hasText = true;
        m_next = begin + markup.size();
    }

    /// The same, and it is a node of its own.
    void node()
    {
        markup();
        if (!m_open.empty())
            m_open.back().hasNodes = true;
    }

    void startElement()
    {
        node();
        if (m_open.size() == deepestLevel)
            stop("more levels of elements than any program writes");
        if (m_hasExternalSubset && refersToEntity(token()))
            stop(undefinedEntity);
        m_open.push_back({token().data() + 1 - m_text.data()});
    }

    void endElement()
    {
        const bool ownTag = !token().empty();
        markup();
        const OpenElement &element = m_open.back();
        m_outline.mixedContent |= element.hasText && element.hasNodes;
        if (ownTag && !element.hasText && !element.hasNodes)
            m_outline.emptyPairs.push_back(element.name);
        m_open.pop_back();
    }

    std::string_view m_text;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser{XML_ParserCreate("UTF-8"),
                                                                          &XML_ParserFree};
    XmlOutline m_outline;
    const char *m_fault = nullptr;
    bool m_hasExternalSubset = false;
    std::vector<OpenElement> m_open;
    std::size_t m_next = 0; // behind the last markup
};

} // namespace

Result<XmlOutline> checkWellFormed(std::string_view text)
{
    return Check(text).run();
}
