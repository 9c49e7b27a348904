#pragma once

#include <QByteArrayList>
#include <QStringList>

/// The rows of these files, which are named from the folder of all tests: the lines of each,
/// without blanks around them. A line that starts with blanks goes on with the row before it, one
/// that starts with "#" is a remark.
QList<QByteArrayList> tableRows(const QStringList &files);

/// In the data function of a test: the column "row", with the cells of each row of these files.
/// Cells have "|" between them, and one that is nothing but a quotation mark repeats the one above
/// it. In a cell "\n" and "\t" stand for what they are, "\e9" for that byte, and "{3 x}" for "xxx".
void addTableRows(const QStringList &files);
