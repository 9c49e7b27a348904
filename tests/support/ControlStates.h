#pragma once

#include <QHash>
#include <QString>

/// What the controls and menu items show, by a kind of showing and their name: all that bear a name
/// of ours, so that new ones are watched too.
using ControlStates = QHash<std::pair<QString, QString>, QString>;

/// What is told of a template follows the disk in its own time: it is among them when asked for.
[[nodiscard]] ControlStates controlStates(bool withCard);

/// As if every control was on and shown, and nothing else.
[[nodiscard]] ControlStates plainStates(ControlStates states);

/// The differences, each in the words that ChangeList lists.
[[nodiscard]] QStringList differences(const ControlStates &before, const ControlStates &now);

/// Whether a change is told by that verb and names alone: "hide input", of as many as there are.
[[nodiscard]] bool isVerb(const QString &word);
