#include "kovan/KovanLogging/KVKLogging.h"
#include "plugin/Rooms.h"
#include "station/LogFile.h"
#include "station/window/LogPane.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <optional>

#include "bench/BenchStation.h"

namespace {

using platform::Dictionary;

enum Listening { Nobody, File, FileAndPane };

/// Who listens while a benchmark runs, as in a station.
class Listeners
{
public:
    explicit Listeners(Listening listening)
        : m_before(KVKLogGetAnchor()->logger())
        , m_file(listening == Nobody ? QString() : m_folder.filePath("station.log"))
    {
        if (listening == FileAndPane)
            m_pane.emplace();
    }
    ~Listeners() { KVKLogGetAnchor()->setLogger(m_before); }
    Listeners(const Listeners &) = delete;
    Listeners &operator=(const Listeners &) = delete;

private:
    QTemporaryDir m_folder;
    std::shared_ptr<spdlog::logger> m_before;
    station::LogFile m_file;
    std::optional<station::LogPane> m_pane;
};

Dictionary values(int count)
{
    Dictionary dictionary;
    for (int number = 0; number < count; ++number)
        dictionary.insert(
            QString::number(number),
            Dictionary{{"SN", QStringLiteral("SERIAL%1").arg(number, 6, 10, QLatin1Char('0'))}});
    return dictionary;
}

double processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// What an event costs the thread that logs: bursts are timed, and between them everything gets written,
/// since a thread that does nothing but log would wait for the file.
template <class Event>
void logInBursts(benchmark::State &state, int burst, const Event &event)
{
    double processor = 0.0;
    for ([[maybe_unused]] const auto _ : state) {
        const double processorBegin = processorTime();
        const auto begin = std::chrono::steady_clock::now();
        for (int each = 0; each < burst; ++each)
            event();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        processor += processorTime() - processorBegin;
        state.SetIterationTime(took.count() / burst);
        static_cast<void>(KVKLogGetProxy()->flush());
    }
    state.counters["processor"] = benchmark::Counter(processor / burst, benchmark::Counter::kAvgIterations);
}

/// A text, an identifier and a number.
void logEvent(benchmark::State &state)
{
    const Listeners listeners(static_cast<Listening>(state.range(0)));
    const platform::Identifier key(QStringLiteral("G1"));
    logInBursts(state, 100, [&] {
        KVKLogEvent(KVKLogLevel::Debug, "%s: %@ [%ld]", {"-[InteractiveView getCondition:]", key, 12});
    });
}
BENCHMARK(logEvent)
    ->ArgName("listening")
    ->Arg(Nobody)
    ->Arg(File)
    ->Arg(FileAndPane)
    ->Iterations(2000)
    ->UseManualTime();

/// All that 10,000 systems have saved.
void logEventWithManyValues(benchmark::State &state)
{
    const Listeners listeners(static_cast<Listening>(state.range(0)));
    const Dictionary saved = values(10'000);
    logInBursts(state, 10, [&] {
        KVKLogEvent(KVKLogLevel::Debug, "%s: data: %@", {"-[InteractiveView isLoopFinished:]", saved});
    });
}
BENCHMARK(logEventWithManyValues)
    ->ArgName("listening")
    ->Arg(Nobody)
    ->Arg(File)
    ->Arg(FileAndPane)
    ->Iterations(20)
    ->UseManualTime();

/// The pass of a group, with so many records of other panels.
void loopAskedFor(benchmark::State &state)
{
    const Listeners listeners(File);
    bench::BenchStation station(4);
    station.plugin().rooms().records.restore(values(static_cast<int>(state.range(0))));
    for ([[maybe_unused]] const auto _ : state) {
        platform::Error error;
        benchmark::DoNotOptimize(station.plugin().isLoopFinished(0, &error));
        state.PauseTiming();
        static_cast<void>(KVKLogGetProxy()->flush());
        state.ResumeTiming();
    }
}
BENCHMARK(loopAskedFor)
    ->ArgName("values")
    ->Arg(10)
    ->Arg(10'000)
    ->Iterations(100)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

/// The look for an equal entry of the group, with so many records of other panels.
void equalEntrySoughtAmong(benchmark::State &state)
{
    const Listeners listeners(File);
    bench::BenchStation station(4);
    Dictionary saved = values(static_cast<int>(state.range(0)));
    saved.insert("G1", Dictionary{{"length", 12}, {"S1", "SERIAL000001"}, {"S2", "SERIAL000002"}});
    station.plugin().rooms().records.restore(saved);
    const platform::Identifier group(QStringLiteral("G1"));
    for ([[maybe_unused]] const auto _ : state) {
        for (int each = 0; each < 10; ++each) {
            benchmark::DoNotOptimize(
                station.plugin().rooms().entries.checkDuplicatedInput("SERIAL000003", group));
        }
        state.PauseTiming();
        static_cast<void>(KVKLogGetProxy()->flush());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * 10);
}
BENCHMARK(equalEntrySoughtAmong)
    ->ArgName("values")
    ->Arg(10)
    ->Arg(10'000)
    ->Iterations(100)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

} // namespace
