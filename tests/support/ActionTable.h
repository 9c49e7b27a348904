#pragma once

#include <QStringList>

/// A table of actions, from a file beside the tests of its room. A row is
///     start state | action | every change
/// where the start state and the action are steps (Scene.h) with ", " between them, and the changes
/// (ChangeList.h) have "; " between them. "start" is the program as it starts. A line that starts
/// with blanks goes on with the one before it.
///     name := text        a start state of that name, or "$name", changes that many rows have
///     has item            what the home of each row has (HomeItem.h)
///     # text              a remark

/// Here in the data function of a test, as the columns "start", "action" and "changes"; answers
/// what the home has.
QStringList addActionRows(const QString &file);
