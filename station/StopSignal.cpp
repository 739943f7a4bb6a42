#include "station/StopSignal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace station {

namespace {

constexpr std::array EndingSignals{SIGINT, SIGTERM, SIGHUP};

// A signal's handler may do next to nothing: it writes a byte into a pipe whose other end the event loop
// looks at.
std::array<int, 2> ends{-1, -1};

void tell(int)
{
    const int before = errno;
    const char byte = 0;
    // When the pipe is full, the event loop has enough to read.
    static_cast<void>(!::write(ends[1], &byte, 1));
    errno = before;
}

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    // What a sequence reads or writes at this moment goes on.
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(number, &action, nullptr);
}

bool isIgnored(int number)
{
    struct sigaction action = {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

int openPipe()
{
    // Child processes of sequences have no business with it.
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "no pipe for signals");
    return ends[0];
}

void emptyPipe()
{
    std::array<char, 64> bytes{};
    while (::read(ends[0], bytes.data(), bytes.size()) > 0) {
    }
}

} // namespace

StopSignal::StopSignal(const std::function<void()> &handler)
    : m_arrived(openPipe(), QSocketNotifier::Read)
{
    QObject::connect(&m_arrived, &QSocketNotifier::activated, &m_arrived, [handler] {
        emptyPipe();
        handler();
    });
    for (const int number : EndingSignals) {
        if (number != SIGHUP || !isIgnored(number))
            setHandler(number, tell);
    }
}

StopSignal::~StopSignal()
{
    for (const int number : EndingSignals) {
        if (!isIgnored(number))
            setHandler(number, SIG_DFL);
    }
    m_arrived.setEnabled(false);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace station
