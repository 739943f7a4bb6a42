#pragma once

#include <chrono>
#include <functional>

namespace testsupport {

/// Serves the event loop, deferred deletions included, until the condition holds; false when it does not
/// within the limit. Thread: the main thread.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                             std::chrono::seconds limit = std::chrono::seconds(120));

} // namespace testsupport
