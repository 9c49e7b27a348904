#include "ProjectDocument.h"

#include "PrettyPrinter.h"
#include "WellFormedness.h"

#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The characters of the file in UTF-8, without the byte order mark.
Result<QByteArray> decoded(QByteArray file, const XmlEncoding &encoding)
{
    if (encoding.form == QStringConverter::Utf8) {
        if (encoding.byteOrderMark)
            file.remove(0, 3);
        return file;
    }
    if (encoding.form != QStringConverter::Latin1 && file.size() % 2 != 0)
        return Failure{u"half a character at the end"_s};
    const QString characters = QStringDecoder(encoding.form)(file);
    file.clear();
    if (!characters.isValidUtf16())
        return Failure{u"half a surrogate pair"_s};
    return characters.toUtf8();
}

bool isBlank(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata &&
           std::string_view(node.value()).find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Of a tree with all its blanks: takes away those that only lay it out.
void dropBlanksBetweenNodes(pugi::xml_node parent)
{
    const auto children = parent.children();
    const auto isMore = [](pugi::xml_node node) { return isText(node) && !isBlank(node); };
    if (std::any_of(children.begin(), children.end(), isMore) ||
        (isBlank(parent.first_child()) && parent.first_child() == parent.last_child()))
        return;
    for (pugi::xml_node child = parent.first_child(); child;) {
        const pugi::xml_node next = child.next_sibling();
        if (isBlank(child))
            parent.remove_child(child);
        else
            dropBlanksBetweenNodes(child);
        child = next;
    }
}

void collectElements(pugi::xml_node parent, std::initializer_list<std::string_view> names,
                     ElementsByName &elements)
{
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_element)
            continue;
        // Nearly every element is none of these, and its first letter tells.
        const auto name =
            std::find_if(names.begin(), names.end(), [own = child.name()](std::string_view wanted) {
                return *own == wanted.front() && wanted == own;
            });
        if (name != names.end())
            elements[static_cast<std::size_t>(name - names.begin())].push_back(child);
        collectElements(child, names, elements);
    }
}

/// Adds the texts in a node, and answers how many nodes there are in it.
qsizetype addText(pugi::xml_node parent, std::string &text)
{
    qsizetype nodes = 0;
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        if (isText(child))
            text += child.value();
        nodes += 1 + addText(child, text);
    }
    return nodes;
}

/// The string values of the elements: the first one, and others while they are no work.
QStringList values(const std::vector<pugi::xml_node> &elements)
{
    constexpr qsizetype enough = 65536; // a line of the log is no longer
    QStringList values;
    qsizetype work = 0; // in characters and nodes
    for (auto element = elements.begin(); element != elements.end() && work < enough; ++element) {
        std::string text;
        work += 1 + addText(*element, text);
        values.append(QString::fromStdString(text));
        work += values.last().size();
    }
    return values;
}

/// The declaration as it is written back: other names of UTF-8, and encodings that are read but not
/// written, give way to its own.
QByteArray rewrittenDeclaration(const XmlOutline &outline)
{
    QByteArray declaration(outline.declaration.data(),
                           static_cast<qsizetype>(outline.declaration.size()));
    const QByteArray name(outline.encoding.data(), static_cast<qsizetype>(outline.encoding.size()));
    const QByteArray known = name.toUpper();
    if (!name.isEmpty() && known != "UTF-8" && !known.startsWith("UTF-16"))
        declaration.replace(declaration.lastIndexOf(name), name.size(), "UTF-8");
    return declaration;
}

} // namespace

bool ProjectDocument::isPairOfTags(pugi::xml_node element) const
{
    return std::binary_search(m_emptyPairs.begin(), m_emptyPairs.end(), element.offset_debug());
}

Result<ProjectDocument> openProjectDocument(const QString &path)
{
    Result<WholeFile> file = readWholeFile(path);
    if (!file)
        return Failure{file.reason()};
    if (!file->version)
        return Failure{u"%1 is not there"_s.arg(path)};
    ProjectDocument document;
    document.m_version = file->version;
    document.m_encoding = XmlEncoding::of(file->content);
    Result<QByteArray> text = decoded(std::move(file->content), document.m_encoding);
    if (!text)
        return Failure{text.reason()};
    Result<XmlOutline> outline =
        checkWellFormed({text->constData(), static_cast<std::size_t>(text->size())});
    if (!outline)
        return Failure{outline.reason()};
    if (!document.m_encoding.isNamed(outline->encoding, *text))
        return Failure{u"an encoding that is not read, or not the declared one"_s};
    document.m_declaration = rewrittenDeclaration(*outline);
    if (document.m_encoding.form == QStringConverter::Latin1)
        document.m_encoding.form = QStringConverter::Utf8;
    document.m_mixedContent = outline->mixedContent;
    document.m_emptyPairs = std::move(outline->emptyPairs);

    // From here on the text is the tree's: it is parsed where it stands.
    document.m_text = std::move(*text);
    constexpr unsigned int everything =
        pugi::parse_default | pugi::parse_pi | pugi::parse_comments | pugi::parse_doctype;
    const unsigned int blanks =
        document.m_mixedContent ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    const pugi::xml_parse_result parsed = document.m_tree.load_buffer_inplace(
        document.m_text.data(), static_cast<std::size_t>(document.m_text.size()),
        everything | blanks, pugi::encoding_utf8);
    if (!parsed)
        return Failure{QString::fromLatin1(parsed.description())};
    if (document.m_mixedContent)
        dropBlanksBetweenNodes(document.tree());
    return document;
}

bool isText(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

ElementsByName elementsNamed(const ProjectDocument &document,
                             std::initializer_list<std::string_view> names)
{
    ElementsByName elements(names.size());
    collectElements(document.tree(), names, elements);
    return elements;
}

std::vector<QStringList> nodeValues(const Result<ProjectDocument> &document,
                                    std::initializer_list<std::string_view> names)
{
    std::vector<QStringList> lists(names.size());
    if (document) {
        const ElementsByName elements = elementsNamed(*document, names);
        std::transform(elements.begin(), elements.end(), lists.begin(), values);
    }
    return lists;
}

std::optional<QString> firstValue(const QStringList &values)
{
    return values.isEmpty() ? std::nullopt : std::optional(values.first());
}

Outcome saveProjectDocument(const ProjectDocument &document, const QString &path)
{
    const auto print = [&document](QIODevice &file) { return prettyPrint(document, file); };
    const Result<FileVersion> saved = writeWholeFile(path, document.m_version, print);
    if (!saved)
        return Failure{saved.reason()};
    document.m_version = *saved;
    return {};
}
