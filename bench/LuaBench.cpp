#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QTemporaryFile>

#include <benchmark/benchmark.h>

#include <atomic>

#include "bench/BenchStation.h"

namespace {

/// Counts the calls, so that a script that does not get through is no figure.
class CallCount : public KVKLuaSequenceObserver
{
public:
    void sequenceCalls(const QString &) override {}
    void sequenceCalled(const KVKLuaCall &call) override { m_calls += call.error ? 0 : 1; }
    void sequenceEnded(const KVKLuaEnd &) override {}
    [[nodiscard]] int calls() const { return m_calls; }

private:
    std::atomic<int> m_calls{0};
};

constexpr int CallsPerScript = 1000;

/// A call from Lua into the plug-in and back with a table, without an operator: what the binding costs.
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
    for ([[maybe_unused]] const auto _ : state) {
        CallCount observer;
        KVKLuaSequence sequence({script.fileName(), {}, functions}, observer);
        sequence.start();
        bench::BenchStation::serveUntil([&] { return sequence.hasEnded(); });
        if (observer.calls() != CallsPerScript)
            state.SkipWithError("not all calls were answered");
    }
    state.SetItemsProcessed(state.iterations() * CallsPerScript);
}
BENCHMARK(callFromLua)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
