#include "ProjectDocument.h"

#include "PrettyPrinter.h"
#include "WellFormedness.h"
#include "platform/FileTree.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A hundred times what Motion writes at most, and a tree of it still fits into memory.
constexpr qint64 largestFile = qint64(1) << 30;

/// The whole content of a regular file.
Result<QByteArray> readFile(const QString &path)
{
    // A fifo without a writer would be waited for, but for O_NONBLOCK.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    struct stat status = {};
    if (descriptor < 0 ||
        !file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                   QFileDevice::AutoCloseHandle) ||
        ::fstat(descriptor, &status) != 0)
        return Failure{u"cannot open %1"_s.arg(path)};
    if (!S_ISREG(status.st_mode) || status.st_size > largestFile)
        return Failure{u"%1 is no regular file, or too large a one"_s.arg(path)};
    QByteArray content(status.st_size, Qt::Uninitialized);
    const qint64 length = file.read(content.data(), content.size());
    if (length < 0)
        return Failure{u"cannot read %1"_s.arg(path)};
    content.truncate(length);
    return content;
}

/// The characters of the file in UTF-8, without the byte order mark.
Result<QByteArray> decoded(QByteArray file, const XmlEncoding &encoding)
{
    if (encoding.form == QStringConverter::Utf8) {
        if (encoding.byteOrderMark)
            file.remove(0, 3);
        return file;
    }
    if (file.size() % 2 != 0)
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

bool isText(pugi::xml_node node)
{
    return node.type() == pugi::node_cdata || (node.type() == pugi::node_pcdata && !isBlank(node));
}

/// Of a tree with all its blanks: takes away those that only lay it out.
void dropBlanksBetweenNodes(pugi::xml_node parent)
{
    const auto children = parent.children();
    if (std::any_of(children.begin(), children.end(), isText) ||
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

/// What is marked on the file, not what this user may do with it: root may do everything.
QFile::Permissions markedPermissions(const QFileInfo &file)
{
    return file.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
}

bool isMarkedReadOnly(const QFileInfo &file)
{
    constexpr auto anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return file.exists() && !(markedPermissions(file) & anyWrite);
}

/// What the new file would lose of the one that it replaces: tags and comments above all.
bool keepAttributes(const QFileInfo &original, QSaveFile &file)
{
    return FileTree::copyExtendedAttributes(original.filePath(), file.handle()) &&
           file.setPermissions(markedPermissions(original));
}

} // namespace

Result<ProjectDocument> openProjectDocument(const QString &path)
{
    Result<QByteArray> file = readFile(path);
    if (!file)
        return Failure{file.reason()};
    ProjectDocument document;
    document.m_encoding = XmlEncoding::of(*file);
    Result<QByteArray> text = decoded(std::move(*file), document.m_encoding);
    if (!text)
        return Failure{text.reason()};
    const Result<XmlOutline> outline =
        checkWellFormed({text->constData(), static_cast<std::size_t>(text->size())});
    if (!outline)
        return Failure{outline.reason()};
    if (!document.m_encoding.isNamed(outline->declaredEncoding))
        return Failure{u"an encoding other than UTF-8 and UTF-16, or not the declared one"_s};
    document.m_declaration = QByteArray(outline->declaration.data(),
                                        static_cast<qsizetype>(outline->declaration.size()));
    document.m_mixedContent = outline->mixedContent;

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

QStringList nodeValues(const Result<ProjectDocument> &document, const QString &query)
{
    QStringList values;
    if (!document)
        return values;
    try {
        pugi::xpath_node_set nodes = document->root().select_nodes(query.toUtf8().constData());
        nodes.sort();
        for (const pugi::xpath_node &node : nodes)
            values.append(stringValue(node));
    } catch (const pugi::xpath_exception &) {
        // No query, or one that finds no nodes but a number or a text.
    }
    return values;
}

ElementsByName elementsNamed(const ProjectDocument &document,
                             std::initializer_list<std::string_view> names)
{
    ElementsByName elements(names.size());
    collectElements(document.tree(), names, elements);
    return elements;
}

QString stringValue(const pugi::xpath_node &node)
{
    static const pugi::xpath_query value("string()");
    return QString::fromStdString(value.evaluate_string(node));
}

std::optional<QString> firstValue(const QStringList &values)
{
    return values.isEmpty() ? std::nullopt : std::optional(values.first());
}

Outcome saveProjectDocument(const ProjectDocument &document, const QString &path)
{
    const QFileInfo target(path);
    if (isMarkedReadOnly(target) || isMarkedReadOnly(QFileInfo(target.canonicalPath())))
        return Failure{u"%1 or its folder is read-only"_s.arg(path)};
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        (target.exists() && !keepAttributes(target, file)) || !prettyPrint(document, file) ||
        !file.commit())
        return Failure{u"cannot write %1: %2"_s.arg(path, file.errorString())};
    return {};
}
