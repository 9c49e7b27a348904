#pragma once

#include <QByteArray>

// What libxml2 says, which conforms to the recommendation too. Namespaces are not looked at, and
// nothing but the text itself is read.

bool libxmlAccepts(const QByteArray &text);

/// The content of a document in canonical form, as libxml2 writes it: all nodes, texts and
/// attributes, but neither the declaration nor the document type. Blanks between nodes are left
/// out, unless text stands beside them. Empty when it is no document.
QByteArray canonicalContent(const QByteArray &text);
