#pragma once

#include "platform/Result.h"

#include <string_view>

/// What the check of a document learns on its way.
struct XmlOutline
{
    std::string_view declaration; ///< the XML declaration, empty when there is none
    std::string_view
        declaredEncoding; ///< as it stands in the declaration, empty when there is none

    /// Whether an element has text beside other content, so that blanks between tags may be part
    /// of its text. Motion writes no such element.
    bool mixedContent = false;
};

/// Whether a text is one well-formed XML 1.0 document: pugixml, which builds the tree, also takes
/// much that is none. The text is UTF-8 without a byte order mark; the byte behind its end must be
/// 0, as it is in a string. The outline refers to the text.
///
/// Refused besides: document types with an internal subset (its entities could not be kept),
/// entities that only an external DTD could define, and more than 1,024 levels of elements
/// (indenting them would take a time and a place that grow with the square of the depth).
Result<XmlOutline> checkWellFormed(std::string_view text);
