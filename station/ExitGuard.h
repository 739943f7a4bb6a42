#pragma once

#include <functional>

namespace station {

/// Calls a function when a library ends the program by exit() while this lives, as Qt does when its
/// connection to the X server breaks: destructors of the program's objects would not run, and its threads
/// would go on while those of libraries do. The function does what cannot wait, and ends the program itself,
/// by _Exit().
///
/// Thread: the main thread. One in a process.
class ExitGuard
{
public:
    explicit ExitGuard(std::function<void()> handler);
    ~ExitGuard();
    ExitGuard(const ExitGuard &) = delete;
    ExitGuard &operator=(const ExitGuard &) = delete;
};

} // namespace station
