#pragma once

#include <chrono>
#include <functional>

/// Handles events for that long, then comes back; sooner, and with false, when the program was
/// asked to end.
[[nodiscard]] bool runEventLoopFor(std::chrono::milliseconds duration);

/// Lets a test watch every wait and shorten it: asked at the start of each, with what it should
/// last, for what it lasts. An empty function ends that.
void setWaitLength(std::function<std::chrono::milliseconds(std::chrono::milliseconds)> length);
