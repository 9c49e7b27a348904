#include "ConformingParsers.h"

#include <QString>

#include <expat.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace {

constexpr int readOptions =
    XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET | XML_PARSE_HUGE;

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

Document parsed(const QByteArray &text)
{
    return {xmlReadMemory(text.constData(), static_cast<int>(text.size()), nullptr, nullptr,
                          readOptions),
            &xmlFreeDoc};
}

QByteArray bytes(const xmlChar *text)
{
    return {reinterpret_cast<const char *>(text)};
}

bool isText(const xmlNode *node)
{
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

bool isBlank(const xmlNode *node)
{
    return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) != 0;
}

bool holdsText(const xmlNode *parent)
{
    if (parent->children && parent->children == parent->last)
        return isText(parent->children);
    for (const xmlNode *child = parent->children; child; child = child->next) {
        if (isText(child) && !isBlank(child))
            return true;
    }
    return false;
}

void appendNode(const xmlNode *node, bool keepBlanks, QByteArray &lines)
{
    if (isBlank(node) && !keepBlanks)
        return;
    lines += QByteArray::number(node->type) + ' ' + bytes(node->name);
    if (node->type == XML_DTD_NODE) {
        const auto *type = reinterpret_cast<const xmlDtd *>(node);
        lines += ' ' + bytes(type->ExternalID) + ' ' + bytes(type->SystemID) + '\n';
        return;
    }
    if (node->type != XML_ELEMENT_NODE) {
        lines += " \"" + bytes(node->content).toPercentEncoding(" ") + "\"\n";
        return;
    }
    for (const xmlAttr *attribute = node->properties; attribute; attribute = attribute->next) {
        const std::unique_ptr<xmlChar, decltype(xmlFree)> value(
            xmlNodeListGetString(node->doc, attribute->children, 1), xmlFree);
        lines +=
            ' ' + bytes(attribute->name) + "=\"" + bytes(value.get()).toPercentEncoding(" ") + '"';
    }
    lines += '\n';
    keepBlanks = keepBlanks || holdsText(node);
    for (const xmlNode *child = node->children; child; child = child->next)
        appendNode(child, keepBlanks, lines);
    lines += "end\n";
}

} // namespace

bool expatAccepts(const QByteArray &text)
{
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), &XML_ParserFree);
    return XML_Parse(parser.get(), text.constData(), static_cast<int>(text.size()), XML_TRUE) ==
           XML_STATUS_OK;
}

bool libxml2Accepts(const QByteArray &text)
{
    return parsed(text) != nullptr;
}

QByteArray canonicalContent(const QByteArray &text)
{
    const Document document = parsed(text);
    QByteArray lines;
    if (!document)
        return lines;
    lines += bytes(document->version) + ' ' + bytes(document->encoding) + ' ' +
             QByteArray::number(document->standalone) + '\n';
    for (const xmlNode *node = document->children; node; node = node->next)
        appendNode(node, false, lines);
    return lines;
}
