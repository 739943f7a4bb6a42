#include "station/ExitGuard.h"

#include <cstdlib>
#include <utility>

namespace station {

namespace {

/// Never destroyed: it is looked at while all that is static goes.
std::function<void()> &handlerInForce()
{
    static auto *handler = new std::function<void()>;
    return *handler;
}

void tell()
{
    if (const std::function<void()> handler = std::exchange(handlerInForce(), {}))
        handler();
}

} // namespace

ExitGuard::ExitGuard(std::function<void()> handler)
{
    static const bool isRegistered = std::atexit(tell) == 0;
    static_cast<void>(isRegistered);
    handlerInForce() = std::move(handler);
}

ExitGuard::~ExitGuard()
{
    handlerInForce() = {};
}

} // namespace station
