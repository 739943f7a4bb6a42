#include "kovan/KovanLogging/KVKLogCrashGuard.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <optional>
#include <semaphore.h>
#include <thread>
#include <unistd.h>

namespace {

struct Fault
{
    int number;
    struct sigaction before = {};
};

std::array faults{Fault{SIGABRT}, Fault{SIGBUS}, Fault{SIGFPE}, Fault{SIGILL}, Fault{SIGSEGV}};
// Asked for beforehand: a handler must not be the first to make it.
KVKLogProxy *proxy = nullptr;
int guards = 0;

void restore(int number)
{
    for (const Fault &fault : faults) {
        if (fault.number == number)
            ::sigaction(number, &fault.before, nullptr);
    }
}

/// Ends the program by a signal that somebody has sent. It comes to any thread at any time, so the thread may
/// hold a lock that a receiver of lines needs: to wait there for the receivers could be in vain.
class SentSignal
{
public:
    SentSignal()
    {
        ::sem_init(&m_come, 0, 0);
        m_thread = std::thread([this] { work(); });
    }

    ~SentSignal()
    {
        ::sem_post(&m_come);
        m_thread.join();
        ::sem_destroy(&m_come);
    }

    SentSignal(const SentSignal &) = delete;
    SentSignal &operator=(const SentSignal &) = delete;

    /// Calls nothing that a handler must not call.
    void hasCome(int number)
    {
        m_number = number;
        ::sem_post(&m_come);
    }

private:
    void work()
    {
        while (::sem_wait(&m_come) != 0 && errno == EINTR) {
        }
        if (m_number == 0)
            return;
        // The rest is lost when it takes longer.
        static_cast<void>(proxy->flush(KVKLogProxy::EndLimit));
        restore(m_number);
        ::kill(::getpid(), m_number);
    }

    sem_t m_come = {};
    std::atomic<int> m_number{0};
    std::thread m_thread;
};

std::optional<SentSignal> sentSignal;

void waitForLog(int number, siginfo_t *what, void *)
{
    const int error = errno;
    if (what->si_code == SI_USER || what->si_code == SI_QUEUE) {
        sentSignal->hasCome(number);
    } else {
        proxy->flushInHandler(KVKLogProxy::EndLimit);
        restore(number);
        // A fault of the program's own happens again on the return; what it has raised has to be raised
        // again.
        if (what->si_code <= 0)
            ::raise(number);
    }
    errno = error;
}

} // namespace

KVKLogCrashGuard::KVKLogCrashGuard()
{
    // A second one would take the handler of the first for what the signal did before.
    if (guards++ > 0)
        return;
    proxy = KVKLogGetProxy();
    sentSignal.emplace();
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
    sentSignal.reset();
}
