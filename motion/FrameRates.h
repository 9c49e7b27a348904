#pragma once

#include <QString>

#include <optional>

/// What a conform writes into a file.
struct ConformedRate
{
    QString frameRate; ///< "25"
    QString frames;    ///< "250", or with a fraction "239.8"
};

/// The rate at an index of the frame-rate list, and how many frames the duration shown ("10.0
/// seconds") has at that rate. Index 0 is the list's prompt: only 1 to 9 are rates.
std::optional<ConformedRate> conformedRate(int index, const QString &durationText);
