#include "PrettyPrinter.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <array>
#include <string_view>

namespace {

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
        if (text.size() > m_buffer.size() - m_used) {
            flush();
            if (text.size() > m_buffer.size())
                return write(text);
        }
        text.copy(m_buffer.data() + m_used, text.size());
        m_used += text.size();
    }

    bool flush()
    {
        write({m_buffer.data(), m_used});
        m_used = 0;
        return m_good;
    }

private:
    void write(std::string_view text)
    {
        const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
        if (m_recoded) {
            const QByteArray recoded = m_encoder(QString(m_decoder(bytes)));
            m_good = m_good && m_device.write(recoded) == recoded.size();
        } else {
            m_good = m_good && m_device.write(bytes.data(), bytes.size()) == bytes.size();
        }
    }

    QIODevice &m_device;
    bool m_recoded;
    bool m_good = true;
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    QStringEncoder m_encoder;
    std::array<char, 1 << 16> m_buffer;
    std::size_t m_used = 0;
};

/// What must not stand in a text or an attribute value as it is, with its reference: what markup
/// begins with, and the blanks that a reader would turn into others.
class Escapes
{
public:
    constexpr explicit Escapes(std::string_view escaped)
    {
        for (const char byte : escaped)
            m_escaped[static_cast<unsigned char>(byte)] = true;
    }

    [[nodiscard]] constexpr bool holds(char byte) const
    {
        return m_escaped[static_cast<unsigned char>(byte)];
    }

    static std::string_view reference(char byte)
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

private:
    std::array<bool, 256> m_escaped{};
};

constexpr Escapes textEscapes("&<>\r");
constexpr Escapes attributeEscapes("&<\"\t\n\r");

class Printer
{
public:
    Printer(QIODevice &device, QStringConverter::Encoding encoding) : m_output(device, encoding) {}

    bool print(const ProjectDocument &document)
    {
        if (document.encoding().byteOrderMark)
            m_output.put("\xEF\xBB\xBF");
        if (const QByteArray &declaration = document.declaration(); !declaration.isEmpty()) {
            m_output.put({declaration.data(), static_cast<std::size_t>(declaration.size())});
            m_output.put("\n");
        }
        for (const pugi::xml_node node : document.tree().children()) {
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
            return printEscaped(node.value(), textEscapes);
        case pugi::node_cdata:
            return printBetween("<![CDATA[", node.value(), "]]>");
        case pugi::node_comment:
            return printBetween("<!--", node.value(), "-->");
        case pugi::node_doctype:
            return printBetween("<!DOCTYPE ", node.value(), ">");
        case pugi::node_pi:
            m_output.put("<?");
            m_output.put(node.name());
            return printBetween(*node.value() ? " " : "", node.value(), "?>");
        default:
            return;
        }
    }

    void printBetween(std::string_view before, std::string_view value, std::string_view after)
    {
        m_output.put(before);
        m_output.put(value);
        m_output.put(after);
    }

    void printElement(pugi::xml_node element)
    {
        const std::string_view name = element.name();
        m_output.put("<");
        m_output.put(name);
        for (const pugi::xml_attribute attribute : element.attributes()) {
            printBetween(" ", attribute.name(), "=\"");
            printEscaped(attribute.value(), attributeEscapes);
            m_output.put("\"");
        }
        if (!element.first_child())
            return m_output.put("/>");
        m_output.put(">");
        printContent(element);
        printBetween("</", name, ">");
    }

    void printContent(pugi::xml_node element)
    {
        const bool indented = m_indented;
        m_indented = m_indented && !holdsText(element);
        ++m_level;
        for (const pugi::xml_node child : element.children()) {
            startLine();
            printNode(child);
        }
        --m_level;
        startLine();
        m_indented = indented;
    }

    static bool holdsText(pugi::xml_node element)
    {
        const auto children = element.children();
        return std::any_of(children.begin(), children.end(), [](pugi::xml_node child) {
            return child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        });
    }

    void startLine()
    {
        if (!m_indented)
            return;
        m_output.put("\n");
        for (int level = 0; level < m_level; ++level)
            m_output.put("\t");
    }

    void printEscaped(const char *text, const Escapes &escapes)
    {
        for (;;) {
            const char *end = text;
            while (*end != 0 && !escapes.holds(*end))
                ++end;
            m_output.put({text, static_cast<std::size_t>(end - text)});
            if (*end == 0)
                return;
            m_output.put(Escapes::reference(*end));
            text = end + 1;
        }
    }

    Output m_output;
    int m_level = 0;
    bool m_indented = true; // false inside an element that holds text
};

} // namespace

bool prettyPrint(const ProjectDocument &document, QIODevice &device)
{
    return Printer(device, document.encoding().form).print(document);
}
