#include "kovan/KovanLogging/KVKLogQueue.h"
#include "kovan/KovanLogging/KVKLogging.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <spdlog/details/os.h>

#include <future>
#include <latch>
#include <map>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

/// What a receiver has got. Outlives the proxy, whose end hands out what is on its way.
class Received
{
public:
    [[nodiscard]] KVKLogProxy::Receiver receiver()
    {
        return [this](std::span<const KVKLogRecord> records) {
            const std::lock_guard lock(m_mutex);
            m_records.insert(m_records.end(), records.begin(), records.end());
        };
    }
    [[nodiscard]] std::vector<KVKLogRecord> records() const
    {
        const std::lock_guard lock(m_mutex);
        return m_records;
    }
    [[nodiscard]] QStringList messages() const
    {
        QStringList messages;
        for (const KVKLogRecord &record : records())
            messages.append(record.message);
        return messages;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<KVKLogRecord> m_records;
};

/// Keeps the log's thread from going on until it is opened.
class Gate
{
public:
    explicit Gate(KVKLogProxy &proxy)
        : m_proxy(proxy)
        , m_id(proxy.addReceiver([this](std::span<const KVKLogRecord>) { m_latch.wait(); }))
    {
        m_proxy.proxyLogMessage(KVKLogLevel::Debug, "gate", {});
    }
    ~Gate()
    {
        open();
        m_proxy.removeReceiver(m_id);
    }
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;

    void open()
    {
        if (!std::exchange(m_isOpen, true))
            m_latch.count_down();
    }

private:
    KVKLogProxy &m_proxy;
    std::latch m_latch{1};
    bool m_isOpen = false;
    KVKLogProxy::ReceiverId m_id;
};

/// A value that notes who asks for its text, and how often.
struct Probe
{
    std::function<QString()> text;
};

QVariant probe(std::function<QString()> text)
{
    static const bool isRegistered =
        QMetaType::registerConverter<Probe, QString>([](const Probe &each) { return each.text(); });
    EXPECT_TRUE(isRegistered);
    return QVariant::fromValue(Probe{std::move(text)});
}

void log(KVKLogProxy &proxy, const QString &text)
{
    proxy.proxyLogMessage(KVKLogLevel::Default, "%@", {text});
}

void onThreads(int count, const std::function<void(int)> &work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back(work, number);
    for (std::thread &thread : threads)
        thread.join();
}

QStringList numbersUpTo(int count)
{
    QStringList numbers;
    for (int number = 1; number <= count; ++number)
        numbers.append(QString::number(number));
    return numbers;
}

} // namespace

TEST(LogReceiver, GetsTheLinesOfAllThreadsInTheirOrder)
{
    Received received;
    KVKLogProxy proxy;
    const auto id = proxy.addReceiver(received.receiver());
    std::mutex mutex;
    int count = 0;
    onThreads(8, [&](int) {
        for (int each = 0; each < 200; ++each) {
            const std::lock_guard lock(mutex);
            log(proxy, QString::number(++count));
        }
    });
    proxy.removeReceiver(id);
    EXPECT_EQ(received.messages(), numbersUpTo(8 * 200));
}

TEST(LogReceiver, GetsThemInTheOrderInWhichSinksAreTold)
{
    Received received;
    KVKLogProxy proxy;
    QStringList told;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    proxy.addSink([&](const KVKLogProxy::Line &line) { told.append(line.message); });
    onThreads(8, [&](int thread) {
        for (int each = 0; each < 200; ++each)
            log(proxy, QStringLiteral("%1 %2").arg(thread).arg(each));
    });
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(told.size(), 8 * 200);
    EXPECT_EQ(received.messages(), told);
}

namespace {

// Not inside the test: there, only a thread that comes by would make and destroy its own.
thread_local QList<int> systems;

} // namespace

TEST(LogReceiver, SeesTimeThreadAndSystemsOfTheEvent)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    proxy.setOwners([] { return systems; });
    Gate gate(proxy);
    std::size_t number = 0;
    const auto before = std::chrono::system_clock::now();
    onThreads(1, [&](int) {
        systems = {3, 4};
        number = spdlog::details::os::thread_id();
        proxy.proxyLogMessage(KVKLogLevel::Error, "there", {});
    });
    const auto after = std::chrono::system_clock::now();
    gate.open();
    ASSERT_TRUE(proxy.flush());
    const KVKLogRecord record = received.records().at(1);
    EXPECT_EQ(record.message, "there");
    EXPECT_EQ(record.level, KVKLogLevel::Error);
    EXPECT_EQ(record.thread, number);
    EXPECT_EQ(record.systems, (QList<int>{3, 4}));
    EXPECT_LE(before, record.time);
    EXPECT_LE(record.time, after);
}

TEST(LogReceiver, TimesNeverGoBackFromLineToLine)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    onThreads(8, [&](int) {
        for (int each = 0; each < 200; ++each)
            log(proxy, "x");
    });
    ASSERT_TRUE(proxy.flush());
    const std::vector<KVKLogRecord> records = received.records();
    EXPECT_TRUE(std::ranges::is_sorted(records, {}, &KVKLogRecord::time));
}

TEST(LogReceiver, AValueThatItsOwnerReplacesLaterKeepsItsText)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    Gate gate(proxy);
    platform::Dictionary data{{"S1", "A"}};
    proxy.proxyLogMessage(KVKLogLevel::Default, "%@", {data});
    platform::Dictionary next = data;
    next.insert("S1", "B");
    data = next;
    proxy.proxyLogMessage(KVKLogLevel::Default, "%@", {data});
    gate.open();
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages(), (QStringList{"gate", "{S1 = A}", "{S1 = B}"}));
}

TEST(LogReceiver, TheFormatMayGoWhenTheCallHasReturned)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    Gate gate(proxy);
    {
        std::string format = "a format that is long enough for memory of its own: %d";
        proxy.proxyLogMessage(KVKLogLevel::Default, format.c_str(), {1});
        format.assign(format.size(), '#');
    }
    gate.open();
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages().last(), "a format that is long enough for memory of its own: 1");
}

TEST(LogReceiver, TheTextIsMadeOnceForAllAndNotOnTheThreadThatLogs)
{
    Received one;
    Received two;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(one.receiver()));
    static_cast<void>(proxy.addReceiver(two.receiver()));
    std::vector<std::thread::id> askers;
    proxy.proxyLogMessage(KVKLogLevel::Default, "%@", {probe([&] {
                              askers.push_back(std::this_thread::get_id());
                              return QStringLiteral("text");
                          })});
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(one.messages(), QStringList{"text"});
    EXPECT_EQ(two.messages(), QStringList{"text"});
    ASSERT_EQ(askers.size(), 1U);
    EXPECT_NE(askers.front(), std::this_thread::get_id());
}

TEST(LogReceiver, AnEventForReceiversAndSinksMakesItsTextOnce)
{
    Received received;
    KVKLogProxy &proxy = *KVKLogGetProxy();
    const auto receiver = proxy.addReceiver(received.receiver());
    QStringList told;
    const auto sink = proxy.addSink([&](const KVKLogProxy::Line &line) { told.append(line.message); });
    int asked = 0;
    KVKLogEvent(KVKLogLevel::Default, "%@", {probe([&] {
                    ++asked;
                    return QStringLiteral("text");
                })});
    proxy.removeSink(sink);
    proxy.removeReceiver(receiver);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(told, QStringList{"text"});
    EXPECT_EQ(received.messages(), QStringList{"text"});
}

TEST(LogReceiver, WithoutAnyNothingIsMade)
{
    KVKLogProxy proxy;
    EXPECT_FALSE(proxy.isHeard());
    int asked = 0;
    proxy.proxyLogMessage(KVKLogLevel::Default, "%@", {probe([&] {
                              ++asked;
                              return QString();
                          })});
    EXPECT_TRUE(proxy.flush());
    EXPECT_EQ(asked, 0);
    const auto id = proxy.addReceiver([](std::span<const KVKLogRecord>) {});
    EXPECT_TRUE(proxy.isHeard());
    proxy.removeReceiver(id);
    EXPECT_FALSE(proxy.isHeard());
}

TEST(LogReceiver, AWrongFormatIsToldToWhoeverLogs)
{
    KVKLogProxy proxy;
    const auto refused = [&] {
        EXPECT_THROW(proxy.proxyLogMessage(KVKLogLevel::Default, "%@ %@", {"one"}), std::invalid_argument);
        EXPECT_THROW(proxy.proxyLogMessage(KVKLogLevel::Default, "%x", {"one"}), std::invalid_argument);
        EXPECT_THROW(proxy.proxyLogMessage(KVKLogLevel::Default, "%", {"one"}), std::invalid_argument);
    };
    refused();
    Received received;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    refused();
    EXPECT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages(), QStringList());
}

TEST(LogReceiver, AValueThatCannotSayWhatItIsLeavesTheFormat)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    proxy.proxyLogMessage(KVKLogLevel::Default, "value: %@",
                          {probe([]() -> QString { throw std::runtime_error("spoilt"); })});
    log(proxy, "next");
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages(), (QStringList{"value: %@", "next"}));
}

TEST(LogReceiver, OneThatThrowsDoesNotKeepTheLinesFromTheNext)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver([](std::span<const KVKLogRecord>) { throw 7; }));
    static_cast<void>(proxy.addReceiver(received.receiver()));
    for (const QString &number : numbersUpTo(3))
        log(proxy, number);
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages(), numbersUpTo(3));
}

TEST(LogReceiver, GetsNothingFromBeforeItWasAdded)
{
    Received late;
    KVKLogProxy proxy;
    Gate gate(proxy);
    log(proxy, "before");
    static_cast<void>(proxy.addReceiver(late.receiver()));
    log(proxy, "after");
    gate.open();
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(late.messages(), QStringList{"after"});
}

TEST(LogReceiver, HasHadAllLinesWhenItIsRemovedAndGetsNoMore)
{
    Received received;
    KVKLogProxy proxy;
    const auto id = proxy.addReceiver(received.receiver());
    for (const QString &number : numbersUpTo(1000))
        log(proxy, number);
    proxy.removeReceiver(id);
    EXPECT_EQ(received.messages(), numbersUpTo(1000));
    log(proxy, "too late");
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages().size(), 1000);
}

TEST(LogReceiver, AddedAndRemovedWhileEightThreadsLogItMissesNothingInBetween)
{
    KVKLogProxy proxy;
    std::atomic<bool> isEnough{false};
    std::thread loggers([&] {
        onThreads(8, [&](int thread) {
            for (int number = 0; !isEnough; ++number)
                log(proxy, QStringLiteral("%1 %2").arg(thread).arg(number));
        });
    });
    for (int round = 0; round < 20; ++round) {
        Received received;
        const auto id = proxy.addReceiver(received.receiver());
        log(proxy, "first");
        log(proxy, "last");
        proxy.removeReceiver(id);
        const QStringList messages = received.messages();
        EXPECT_EQ(messages.count("first"), 1);
        EXPECT_EQ(messages.count("last"), 1);
        std::map<QString, int> next;
        for (const QString &message : messages) {
            const QStringList words = message.split(' ');
            if (words.size() < 2)
                continue;
            const int number = words.at(1).toInt();
            const auto [place, isNew] = next.try_emplace(words.at(0), number);
            EXPECT_EQ(place->second, number) << "of thread " << words.at(0).toStdString();
            place->second = number + 1;
        }
    }
    isEnough = true;
    loggers.join();
}

TEST(LogReceiver, MayLogAndIsNotWaitedForByItself)
{
    Received received;
    KVKLogProxy proxy;
    std::atomic<bool> hasWaited{true};
    static_cast<void>(proxy.addReceiver([&](std::span<const KVKLogRecord> records) {
        if (records.front().message != "question")
            return;
        log(proxy, "answer");
        hasWaited = proxy.flush();
    }));
    static_cast<void>(proxy.addReceiver(received.receiver()));
    log(proxy, "question");
    ASSERT_TRUE(proxy.flush());
    ASSERT_TRUE(proxy.flush());
    EXPECT_EQ(received.messages(), (QStringList{"question", "answer"}));
    EXPECT_FALSE(hasWaited);
}

TEST(LogFlush, GivesUpAtItsLimit)
{
    KVKLogProxy proxy;
    Gate gate(proxy);
    EXPECT_FALSE(proxy.flush(10ms));
    gate.open();
    EXPECT_TRUE(proxy.flush(60s));
}

TEST(LogFlush, WaitsForTheLinesBeforeItAndNotForThoseThatComeMeanwhile)
{
    Received received;
    KVKLogProxy proxy;
    static_cast<void>(proxy.addReceiver(received.receiver()));
    std::atomic<bool> isEnough{false};
    std::thread logger([&] {
        while (!isEnough)
            log(proxy, "flood");
    });
    log(proxy, "mine");
    EXPECT_TRUE(proxy.flush());
    EXPECT_TRUE(received.messages().contains("mine"));
    isEnough = true;
    logger.join();
}

TEST(LogQueue, WhoeverLogsWaitsWhereTooMuchIsWaitingAndNothingIsLeftOut)
{
    std::latch gate(1);
    int lines = 0;
    KVKLogQueue queue(100'000);
    const int id = queue.add([&](std::span<const KVKLogRecord> records) {
        gate.wait();
        lines += static_cast<int>(records.size());
    });
    std::future<void> logger = std::async(std::launch::async, [&] {
        for (int number = 0; number < 100; ++number) {
            queue.waitForRoom();
            queue.push({KVKLogLevel::Default, "%@", {QString(2000, 'x')}, std::nullopt});
        }
    });
    // It cannot end before the gate is open, however long that takes.
    EXPECT_EQ(logger.wait_for(50ms), std::future_status::timeout);
    gate.count_down();
    logger.get();
    queue.remove(id);
    EXPECT_EQ(lines, 100);
}

TEST(LogQueue, OnceItHasEndedAFlushHandsOut)
{
    std::vector<std::thread::id> threads;
    KVKLogQueue queue;
    static_cast<void>(
        queue.add([&](std::span<const KVKLogRecord>) { threads.push_back(std::this_thread::get_id()); }));
    queue.push({KVKLogLevel::Default, "before", {}, std::nullopt});
    queue.end();
    queue.push({KVKLogLevel::Default, "after", {}, std::nullopt});
    EXPECT_TRUE(queue.flush(std::nullopt));
    ASSERT_EQ(threads.size(), 2U);
    EXPECT_NE(threads.at(0), std::this_thread::get_id());
    EXPECT_EQ(threads.at(1), std::this_thread::get_id());
}
