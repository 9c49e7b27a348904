#pragma once

#include <chrono>

/// Handles events for that long, then comes back; sooner, and with false, when the program was
/// asked to end.
bool runEventLoopFor(std::chrono::milliseconds duration);
