#pragma once

#include "XmlEncoding.h"
#include "platform/WholeFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <pugixml.hpp>

#include <optional>

/// A Motion file in memory: the whole XML tree, and what it takes to write it back in kind.
///
/// Texts and attribute values in the tree are as XML reads them: references resolved, line ends
/// normalised. Blanks between tags are not in it, unless they are all that an element holds or
/// stand beside other text.
class ProjectDocument
{
public:
    [[nodiscard]] pugi::xml_node root() const { return m_tree.document_element(); }
    /// The node above the root: its other children stand before and behind the root.
    [[nodiscard]] pugi::xml_node tree() const { return m_tree.root(); }
    [[nodiscard]] XmlEncoding encoding() const { return m_encoding; }

    /// The XML declaration as it stands in the file, but for the name of an encoding that is not
    /// written; empty when the file has none.
    [[nodiscard]] const QByteArray &declaration() const { return m_declaration; }

    /// Whether an element may hold text beside other nodes: Motion writes none that does.
    [[nodiscard]] bool hasMixedContent() const { return m_mixedContent; }

    /// Whether an element without content was read as a start and an end tag.
    [[nodiscard]] bool isPairOfTags(pugi::xml_node element) const;

private:
    friend Result<ProjectDocument> openProjectDocument(const QString &path);
    friend Outcome saveProjectDocument(const ProjectDocument &document, const QString &path);

    QByteArray m_text; // what the names and texts of the tree point into
    pugi::xml_document m_tree;
    XmlEncoding m_encoding;
    QByteArray m_declaration;
    bool m_mixedContent = false;
    std::vector<std::ptrdiff_t> m_emptyPairs; // where their names begin in the text, ascending
    // The file as it was last read or written: no part of the document, but what it may replace.
    mutable std::optional<FileVersion> m_version;
};

/// Reads the whole file. There is no document when it is no regular file (a fifo or a device is
/// not waited for), is not well-formed XML in UTF-8, UTF-16 or ISO-8859-1, has a document type with
/// an internal subset, or nests deeper than 1,024 levels. Nothing outside the file is ever read.
Result<ProjectDocument> openProjectDocument(const QString &path);

/// Elements in document order, by the place that their name has among the names asked for.
using ElementsByName = std::vector<std::vector<pugi::xml_node>>;

/// All elements of the document that bear one of these names: what queries like "//theme" find,
/// in one walk for all of them.
ElementsByName elementsNamed(const ProjectDocument &document,
                             std::initializer_list<std::string_view> names);

/// Whether a node is text, in a CDATA section or not.
bool isText(pugi::xml_node node);

/// The string values of these elements, a list for each name: of an element its text and that of
/// everything in it. Of values that are more than a line of the log would hold, only those at the
/// beginning; the first one is whole. The lists are empty without a document.
std::vector<QStringList> nodeValues(const Result<ProjectDocument> &document,
                                    std::initializer_list<std::string_view> names);

/// Nothing when the list is empty: the action that needs the value ends there.
std::optional<QString> firstValue(const QStringList &values);

/// Writes the document pretty-printed, in the UTF-8 or UTF-16 that it was read in. The file is
/// replaced whole once everything is on the disk, or stays as it was (WholeFile.h): also when
/// another program has written to it or replaced it since it was opened or last saved here.
Outcome saveProjectDocument(const ProjectDocument &document, const QString &path);
