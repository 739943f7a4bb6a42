#include "station/StopSignal.h"

#include <csignal>

namespace station {

namespace {

constexpr std::chrono::milliseconds BetweenLooks{50};

volatile std::sig_atomic_t received = 0;

void remember(int)
{
    received = 1;
}

} // namespace

StopSignal::StopSignal(std::function<void()> handler)
{
    std::signal(SIGINT, remember);
    std::signal(SIGTERM, remember);
    // A signal's handler may do next to nothing, so the flag is looked at from the event loop.
    QObject::connect(&m_look, &QTimer::timeout, &m_look, [this, handler = std::move(handler)] {
        if (received == 0)
            return;
        m_look.stop();
        handler();
    });
    m_look.start(BetweenLooks);
}

StopSignal::~StopSignal()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

} // namespace station
