#include "SecondParser.h"

#include <libxml/c14n.h>
#include <libxml/parser.h>

#include <memory>

namespace {

constexpr int readOptions =
    XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOBLANKS;

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

Document parsed(const QByteArray &text)
{
    return {xmlReadMemory(text.constData(), static_cast<int>(text.size()), nullptr, nullptr,
                          readOptions),
            &xmlFreeDoc};
}

} // namespace

bool libxmlAccepts(const QByteArray &text)
{
    return static_cast<bool>(parsed(text));
}

QByteArray canonicalContent(const QByteArray &text)
{
    const Document document = parsed(text);
    xmlChar *content = nullptr;
    if (document)
        xmlC14NDocDumpMemory(document.get(), nullptr, XML_C14N_1_0, nullptr, 1, &content);
    const std::unique_ptr<xmlChar, decltype(xmlFree)> owner(content, xmlFree);
    return {reinterpret_cast<const char *>(content)};
}
