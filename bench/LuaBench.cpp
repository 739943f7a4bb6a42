#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QTemporaryFile>

#include <benchmark/benchmark.h>

#include "bench/BenchStation.h"

namespace {

class Silent : public KVKLuaSequenceObserver
{
public:
    void sequenceCalls(const QString &) override {}
    void sequenceCalled(const KVKLuaCall &) override {}
    void sequenceEnded(const KVKLuaEnd &) override {}
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
    Silent observer;
    const auto functions = KVKBindFunctions(&station.plugin(), station.plugin().pluginFunctionTable());
    for (const auto _ : state) {
        KVKLuaSequence sequence({script.fileName(), {}, functions}, observer);
        sequence.start();
        bench::BenchStation::serveUntil([&] { return sequence.hasEnded(); });
    }
    state.SetItemsProcessed(state.iterations() * CallsPerScript);
}
BENCHMARK(callFromLua)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
