#pragma once

#include "TestHome.h"

#include <QStringList>

/// The words of a step in a table: blanks stand between them, "%20" is one in a word, and "" is a
/// word without letters.
QStringList words(const QByteArray &step);

// clang-format off
/// Makes what a row of a table finds in the home, step after step with ", " between them:
///     file PATH [CONTENT, or it is the path]
///     folder PATH, link PATH TARGET, twin PATH PATH
///     size PATH BYTES, mode PATH OCTAL, owner PATH NUMBER, old PATH HOURS, lock PATH
///     env NAME VALUE
// clang-format on
void prepareDisk(const TestHome &home, const QByteArray &steps);
