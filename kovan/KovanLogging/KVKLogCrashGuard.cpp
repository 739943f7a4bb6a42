#include "kovan/KovanLogging/KVKLogCrashGuard.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <array>
#include <csignal>

namespace {

struct Fault
{
    int number;
    struct sigaction before = {};
};

std::array faults{Fault{SIGABRT}, Fault{SIGBUS}, Fault{SIGFPE}, Fault{SIGILL}, Fault{SIGSEGV}};
// Asked for beforehand: a handler must not be the first to make it.
const KVKLogProxy *proxy = nullptr;
int guards = 0;

void waitForLog(int number, siginfo_t *what, void *)
{
    proxy->flushInHandler(KVKLogProxy::EndLimit);
    for (const Fault &fault : faults) {
        if (fault.number == number)
            ::sigaction(number, &fault.before, nullptr);
    }
    // A fault of the program's own happens again on the return; what somebody has sent has to be sent again.
    if (what->si_code <= 0)
        ::raise(number);
}

} // namespace

KVKLogCrashGuard::KVKLogCrashGuard()
{
    // A second one would take the handler of the first for what the signal did before.
    if (guards++ > 0)
        return;
    proxy = KVKLogGetProxy();
    struct sigaction action = {};
    action.sa_sigaction = waitForLog;
    action.sa_flags = SA_SIGINFO;
    ::sigemptyset(&action.sa_mask);
    for (Fault &fault : faults)
        ::sigaction(fault.number, &action, &fault.before);
}

KVKLogCrashGuard::~KVKLogCrashGuard()
{
    if (--guards > 0)
        return;
    for (const Fault &fault : faults)
        ::sigaction(fault.number, &fault.before, nullptr);
}
