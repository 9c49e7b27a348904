#include "PrettyPrinter.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// Bytes at which a text cannot simply be copied on: its end, and what must not stand in it as it
/// is. That is what markup begins with, and blanks that a reader would turn into others.
class StopBytes
{
public:
    constexpr explicit StopBytes(std::string_view bytes)
    {
        m_stops[0] = true;
        for (const char byte : bytes)
            m_stops[static_cast<unsigned char>(byte)] = true;
    }

    [[nodiscard]] constexpr bool hold(char byte) const
    {
        return m_stops[static_cast<unsigned char>(byte)];
    }

private:
    std::array<bool, 256> m_stops{};
};

constexpr StopBytes inMarkup("");
constexpr StopBytes inText("&<>\r");
constexpr StopBytes inAttribute("&<\"\t\n\r");

std::string_view reference(char byte)
{
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return "&#13;";
    }
}

/// UTF-8 on its way to the device, in large pieces and in the encoding of the document.
class Output
{
public:
    Output(QIODevice &device, QStringConverter::Encoding encoding)
        : m_device(device), m_recoded(encoding != QStringConverter::Utf8), m_encoder(encoding)
    {
    }

    void put(std::string_view text)
    {
        for (const char byte : text) {
            if (m_next == m_end)
                flush();
            *m_next++ = byte;
        }
    }

    /// With references for what must not stand in it. Most texts are a few bytes long: a loop is
    /// faster than strlen() and memcpy().
    void put(const char *text, const StopBytes &stops)
    {
        for (;;) {
            char *next = m_next;
            while (next != m_end && !stops.hold(*text))
                *next++ = *text++;
            m_next = next;
            if (next == m_end)
                flush();
            else if (*text == 0)
                return;
            else
                put(reference(*text++));
        }
    }

    bool flush()
    {
        const QByteArrayView bytes(m_buffer.data(), m_next - m_buffer.data());
        m_next = m_buffer.data();
        if (m_recoded) {
            const QByteArray recoded = m_encoder(QString(m_decoder(bytes)));
            m_good = m_good && m_device.write(recoded) == recoded.size();
        } else {
            m_good = m_good && m_device.write(bytes.data(), bytes.size()) == bytes.size();
        }
        return m_good;
    }

private:
    QIODevice &m_device;
    bool m_recoded;
    bool m_good = true;
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    QStringEncoder m_encoder;
    std::array<char, 1 << 16> m_buffer;
    char *m_next = m_buffer.data();
    char *m_end = m_next + m_buffer.size();
};

/// Deeper than Motion nests. Without an end to it a megabyte of small elements could grow to
/// hundreds.
constexpr int deepestIndentation = 64;

class Printer
{
public:
    Printer(const ProjectDocument &document, QIODevice &device)
        : m_document(document), m_output(device, document.encoding().form)
    {
    }

    bool print()
    {
        if (m_document.encoding().byteOrderMark)
            m_output.put("\xEF\xBB\xBF");
        if (!m_document.declaration().isEmpty()) {
            m_output.put(m_document.declaration().constData(), inMarkup);
            m_output.put("\n");
        }
        for (const pugi::xml_node node : m_document.tree().children()) {
            printNode(node);
            m_output.put("\n");
        }
        return m_output.flush();
    }

private:
    void printNode(pugi::xml_node node)
    {
        switch (node.type()) {
        case pugi::node_element:
            return printElement(node);
        case pugi::node_pcdata:
            return m_output.put(node.value(), inText);
        case pugi::node_cdata:
            return printBetween("<![CDATA[", node.value(), "]]>");
        case pugi::node_comment:
            return printBetween("<!--", node.value(), "-->");
        case pugi::node_doctype:
            return printBetween("<!DOCTYPE ", node.value(), ">");
        case pugi::node_pi:
            printBetween("<?", node.name(), *node.value() != 0 ? " " : "");
            return printBetween("", node.value(), "?>");
        default:
            return;
        }
    }

    void printBetween(std::string_view before, const char *markup, std::string_view after)
    {
        m_output.put(before);
        m_output.put(markup, inMarkup);
        m_output.put(after);
    }

    void printElement(pugi::xml_node element)
    {
        const char *name = element.name();
        printBetween("<", name, "");
        for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
             attribute = attribute.next_attribute()) {
            printBetween(" ", attribute.name(), "=\"");
            m_output.put(attribute.value(), inAttribute);
            m_output.put("\"");
        }
        if (const pugi::xml_node child = element.first_child()) {
            m_output.put(">");
            printContent(child);
            printBetween("</", name, ">");
        } else if (m_document.isPairOfTags(element)) {
            printBetween("></", name, ">");
        } else {
            m_output.put("/>");
        }
    }

    void printContent(pugi::xml_node child)
    {
        const bool indented = m_indented;
        m_indented = m_indented && !holdText(child);
        ++m_level;
        for (; child; child = child.next_sibling()) {
            startLine();
            printNode(child);
        }
        --m_level;
        startLine();
        m_indented = indented;
    }

    /// Whether there is text among a first child and its siblings. Without mixed content it has
    /// none.
    [[nodiscard]] bool holdText(pugi::xml_node child) const
    {
        if (!m_document.hasMixedContent())
            return isText(child);
        while (child && !isText(child))
            child = child.next_sibling();
        return !child.empty();
    }

    void startLine()
    {
        if (!m_indented)
            return;
        m_output.put("\n");
        for (int level = 0; level < std::min(m_level, deepestIndentation); ++level)
            m_output.put("\t");
    }

    const ProjectDocument &m_document;
    Output m_output;
    int m_level = 0;
    bool m_indented = true; // false inside an element that holds text
};

} // namespace

bool prettyPrint(const ProjectDocument &document, QIODevice &device)
{
    return Printer(document, device).print();
}
