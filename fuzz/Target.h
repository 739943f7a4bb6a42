#pragma once

#include <memory>

#include "fuzz/Input.h"

namespace fuzz {

/// What is fed with random input. Each target is a program of its own, which makes one of them.
///
/// Thread: the main thread. Errors: a promise that is broken ends the process (see must()).
class Target
{
public:
    Target() = default;
    virtual ~Target() = default;
    Target(const Target &) = delete;
    Target &operator=(const Target &) = delete;

    /// Tries one input. What it does must depend on the input alone, never on those before it.
    virtual void feed(Input input) = 0;
};

/// The target of this program. Requires: Surroundings.
[[nodiscard]] std::unique_ptr<Target> makeTarget();

/// Ends the process, with the promise in words, when it does not hold.
void must(bool holds, const char *promise, const QString &detail = {});

} // namespace fuzz
