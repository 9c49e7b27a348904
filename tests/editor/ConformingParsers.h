#pragma once

#include <QByteArray>

// What two other XML parsers say, both of which conform to the recommendation. Namespaces are not
// looked at, and nothing but the text itself is read.

bool expatAccepts(const QByteArray &text);
bool libxml2Accepts(const QByteArray &text);

/// The content of a document as libxml2 sees it, in one line a node: kinds, names, attributes in
/// their order, texts and the document type. Blanks between nodes are left out, unless text stands
/// beside them. Empty when it is no document.
QByteArray canonicalContent(const QByteArray &text);
