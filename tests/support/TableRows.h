#pragma once

#include <QByteArrayList>
#include <QStringList>

/// In the data function of a test: the column "row", with the cells of each line of these files,
/// which are named from the folder of all tests. Cells have "|" between them, and one that is
/// nothing but a quotation mark repeats the one above it. A line that starts with blanks goes on
/// with the row before it, one that starts with "#" is a remark. In a cell "\n" and "\t" stand for
/// what they are, "\e9" for that byte, and "{3 x}" for "xxx".
void addTableRows(const QStringList &files);
