#include "platform/Callback.h"

namespace platform {

namespace {

thread_local int running = 0;

} // namespace

bool Callback::isRunning()
{
    return running > 0;
}

Callback::Running::Running()
{
    ++running;
}

Callback::Running::~Running()
{
    --running;
}

} // namespace platform
