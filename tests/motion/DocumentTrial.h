#pragma once

#include <QByteArray>

/// Any bytes as a Motion file: it is opened, inspected, changed in each way, saved, opened again
/// and compared. Answers what went wrong: nothing where it is refused, or written as it should be.
const char *problemWith(QByteArrayView file);
