#pragma once

#include "Operation.h"

#include <map>

/// What there is, and whether it is what they should.
namespace Faults {

/// How much of a state counts: a disk, or its user, may not keep everything whatever fails.
enum Detail { Content = 1, Kept, All };

/// "file", "link" or "folder" with the content; what is always kept, unless by a disk that keeps
/// nothing; the mode's further bits and the number of names.
using State = QStringList;

/// Everything in both folders, by its path.
using Snapshot = std::map<QString, State>;

enum class Ending { Done, Failed, Killed, Crashed };

Snapshot snapshotOf(Detail detail);

/// The first path where the two are not the same; empty when there is none.
QString difference(const Snapshot &expected, const Snapshot &found);

/// What is lost, doubled, half or wrong, against the snapshots of a run without a fault, before it
/// and after each of its steps; empty when everything is where it was, or where it should be.
QString account(const std::vector<Snapshot> &steps, Snapshot found, Ending ending, bool mayLeave);

/// The same of a race: what another process wrote is there, and all but what it wrote over.
QString accountForRace(const Snapshot &before, const Snapshot &after, bool hasHappened);

} // namespace Faults
