#pragma once

#include <chrono>
#include <functional>

namespace bench {

/// Serves the events of the calling thread, which is the main thread, until the condition holds. What changes
/// the condition is an event of that thread, or posts one. Errors: ends the program when it takes minutes.
void serveUntil(const std::function<bool()> &condition);
/// Serves what is there, and paints what is to be painted.
void serveAll();
/// Serves for so long, for what waits for the next frame of the screen.
void serveFor(std::chrono::milliseconds time);

} // namespace bench
