#pragma once

#include "FrameRates.h"
#include "ProjectDocument.h"

// What the Edit side changes in a document. Texts are given as typed: characters that XML cannot
// hold are left out.

/// Names the root "ozml" and gives it, as its fourth child, a `template` with an empty `theme` in
/// it. Fails, and changes nothing, when the root has fewer than three children.
Outcome insertTheme(ProjectDocument &document);

/// Gives every `theme` element this text as its whole content, and answers how many there were.
[[nodiscard]] int setTheme(ProjectDocument &document, const QString &text);

/// What a conform meets in a document: pairs of a `frameRate` and a `duration`, triples of these
/// and an `NTSC`, each element of one kind with each of the others.
struct ConformMatches
{
    bool anyPair = false;
    bool anyTriple = false;
    bool moreTriples = false; ///< than the first
};

/// Sets the first triple to the rate, its frames and an NTSC of 0, or nothing without a rate. The
/// later triples are only reported: a conform leaves them as they are.
[[nodiscard]] ConformMatches conformFirstTriple(ProjectDocument &document,
                                                const std::optional<ConformedRate> &rate);
