// A program that logs, and ends in the way that its argument names. What its receiver gets it prints.
#include "kovan/KovanLogging/KVKLogCrashGuard.h"
#include "kovan/KovanLogging/KVKLogging.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

constexpr int Lines = 2000;

/// Logs while all that is static goes.
struct LastWords
{
    LastWords() = default;
    ~LastWords()
    {
        if (speaks)
            KVKLogEvent(KVKLogLevel::Default, "last words", {});
    }
    LastWords(const LastWords &) = delete;
    LastWords &operator=(const LastWords &) = delete;
    bool speaks = false;
};
// Made before the log is used, so that it goes after the log's thread.
LastWords lastWords;

// What a receiver shares with the other threads.
std::mutex mutex;

void print(std::span<const KVKLogRecord> records)
{
    const std::lock_guard lock(mutex);
    for (const KVKLogRecord &record : records)
        std::puts(qPrintable(record.message));
    std::fflush(stdout);
}

void logLines()
{
    for (int number = 0; number < Lines; ++number)
        KVKLogEvent(KVKLogLevel::Default, "%d", {number});
}

void throwOnAThread()
{
    std::thread([] { throw std::runtime_error("nobody catches this"); }).join();
}

/// The signal comes to a thread that the receiver waits for.
void killWhileTheReceiverWaits()
{
    {
        const std::lock_guard lock(mutex);
        logLines();
        ::kill(::getpid(), SIGABRT);
    }
    for (;;)
        ::pause();
}

void giveUp()
{
    std::_Exit(KVKLogGetProxy()->flush(KVKLogProxy::EndLimit) ? EXIT_SUCCESS : EXIT_FAILURE);
}

struct Probe
{
    int number = 0;
};

/// Nobody has been added: what is logged must become no text, and a wrong format must be told all the same.
int logToNobody()
{
    int described = 0;
    QMetaType::registerConverter<Probe, QString>([&](const Probe &) {
        ++described;
        return QStringLiteral("a probe");
    });
    KVKLogEvent(KVKLogLevel::Error, "%@", {QVariant::fromValue(Probe{1})});
    bool isTold = false;
    try {
        KVKLogEvent(KVKLogLevel::Default, "%@ %@", {"one"});
    } catch (const std::invalid_argument &) {
        isTold = true;
    }
    return isTold && described == 0 && !KVKLogIsHeard(KVKLogLevel::Error) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int, char **argv)
{
    const std::string ending = argv[1];
    if (ending == "nobody")
        return logToNobody();
    lastWords.speaks = ending == "static";
    static_cast<void>(KVKLogGetProxy()->addReceiver(print));
    const KVKLogCrashGuard guard;
    const std::map<std::string, std::function<void()>> endings{
        {"return", [] {}},
        {"static", [] {}},
        {"exit", [] { std::exit(EXIT_SUCCESS); }},
        {"exit-on-a-thread", [] { std::thread([] { std::exit(EXIT_SUCCESS); }).join(); }},
        {"_Exit", giveUp},
        {"abort", [] { std::abort(); }},
        {"kill-while-the-receiver-waits", killWhileTheReceiverWaits},
        {"terminate", [] { throwOnAThread(); }},
        {"fault", [] { std::raise(SIGSEGV); }}};
    const std::function<void()> &end = endings.at(ending);
    if (ending != "kill-while-the-receiver-waits")
        logLines();
    end();
    return EXIT_SUCCESS;
}
