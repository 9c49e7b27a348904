#pragma once

#include <chrono>

/// Handles events for that long, then comes back; sooner when the program is asked to end.
void runEventLoopFor(std::chrono::milliseconds duration);
