#pragma once

#include <QByteArray>

// What two other XML parsers say, both of which conform to the recommendation. Namespaces are not
// looked at, and nothing but the text itself is read.

bool bothAccept(const QByteArray &text);

/// The content of a document in canonical form, as libxml2 writes it: all nodes, texts and
/// attributes, but neither the declaration nor the document type. Blanks between nodes are left
/// out, unless text stands beside them. Empty when it is no document.
QByteArray canonicalContent(const QByteArray &text);
