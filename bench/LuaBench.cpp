#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "platform/MainQueue.h"

#include <QTemporaryFile>

#include <benchmark/benchmark.h>

#include <atomic>

#include "bench/BenchStation.h"
#include "bench/Pairs.h"
#include "bench/Samples.h"
#include "bench/Serve.h"
#include "bench/baseline/LuaCalls.h"

namespace {

constexpr int CallsPerScript = 1000;

/// Counts the calls, so that a script that does not get through is no figure.
class CallCount : public KVKLuaSequenceObserver
{
public:
    void sequenceCalls(const QString &) override {}
    void sequenceCalled(const KVKLuaCall &call) override { m_calls += call.error ? 0 : 1; }
    void sequenceEnded(const KVKLuaEnd &) override
    {
        m_end = bench::now();
        // Whoever waits for it serves events meanwhile.
        platform::MainQueue::async([] {});
    }
    [[nodiscard]] int calls() const { return m_calls; }
    [[nodiscard]] bench::Nanoseconds end() const { return m_end; }

private:
    std::atomic<int> m_calls{0};
    std::atomic<bench::Nanoseconds> m_end{0};
};

/// Calls from Lua into the plug-in and back with a table, without an operator: what the binding costs, and a
/// sequence's start.
void callFromLua(benchmark::State &state)
{
    bench::BenchStation station(4);
    QTemporaryFile script;
    if (!script.open()) {
        state.SkipWithError("no temporary file");
        return;
    }
    script.write(
        QByteArray("for i = 1, %1 do getLoopConfig() end").replace("%1", QByteArray::number(CallsPerScript)));
    script.close();
    const auto functions = KVKBindFunctions(&station.plugin(), station.plugin().pluginFunctionTable());
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        CallCount observer;
        const bench::Nanoseconds begin = bench::now();
        {
            KVKLuaSequence sequence({script.fileName(), {}, functions}, observer);
            sequence.start();
            bench::serveUntil([&] { return observer.end() != 0; });
        }
        samples.add(observer.end() - begin);
        if (observer.calls() != CallsPerScript)
            state.SkipWithError("not all calls were answered");
    }
}

void bareCallFromLua(benchmark::State &state)
{
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        const bench::Nanoseconds begin = bench::now();
        if (baseline::callFromLua(CallsPerScript) != CallsPerScript)
            state.SkipWithError("not all calls were made");
        samples.add(bench::now() - begin);
    }
}

[[maybe_unused]] const bool registered = [] {
    bench::registerPair("thousand.calls", 12, callFromLua, bareCallFromLua);
    return true;
}();

} // namespace
