#pragma once

#include "TestHome.h"

/// Puts something into the home, as a table says it:
///     Folder/             Link -> target          File: its content, "content" where none is named
///     File: motion a=>b c=>d                      a Motion file, with b for a and d for c
///     File: picture 20x10                         a PNG file, white
///     File: locked ...                            any of these, marked as read-only
///     library             all of Motion's, with a template "Old" in each category
///     record: a line      an installation in the history
/// DATE in a name makes one for each of the next seconds, as a backup and as an archive date it.
void putIntoHome(const TestHome &home, const QString &item);
