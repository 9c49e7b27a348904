#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// What the check of a document learns on its way. The views refer to the text.
struct XmlOutline
{
    std::string_view declaration; ///< the XML declaration, empty when there is none
    std::string_view encoding;    ///< the name in it, empty when there is none

    /// Whether an element has text beside other content, so that blanks between tags may be part
    /// of its text. Motion writes no such element.
    bool mixedContent = false;

    /// Elements without anything in them that were written as a start and an end tag: where in the
    /// text their names begin, in ascending order.
    std::vector<std::ptrdiff_t> emptyPairs;
};

/// Whether a text is one well-formed XML 1.0 document, as expat sees it: pugixml, which builds the
/// tree, also takes much that is none. The text is UTF-8 without a byte order mark, whatever its
/// declaration says.
///
/// Refused besides: document types with an internal subset (its entities could not be kept),
/// entities that only an external DTD could define, and more than 1,024 levels of elements.
Result<XmlOutline> checkWellFormed(std::string_view text);
