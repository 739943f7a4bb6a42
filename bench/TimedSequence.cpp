#include "bench/TimedSequence.h"

#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"

#include <vector>

#include "common/ErrorCodes.h"

namespace bench {

namespace {

const QString GatesName = QStringLiteral("pass");

std::vector<KVKBoundFunction> functionsOf(interactive::InteractiveView &plugin, Gate &gate)
{
    std::vector<KVKBoundFunction> functions = KVKBindFunctions(&plugin, plugin.pluginFunctionTable());
    for (const KVKBoundFunction &function : KVKBindFunctions(&gate, Gate::functionTable()))
        functions.push_back(function);
    return functions;
}

} // namespace

TimedSequence::TimedSequence(interactive::InteractiveView &plugin, Gate &gate, const QString &script,
                             const platform::Dictionary &globals)
    : m_sequence({script, globals, functionsOf(plugin, gate)}, *this)
{
    m_sequence.start();
}

void TimedSequence::sequenceCalls(const QString &name)
{
    if (name != GatesName)
        m_called = now();
}

void TimedSequence::sequenceCalled(const KVKLuaCall &call)
{
    if (call.name == GatesName)
        return;
    m_returned = now();
    // A round ends by Stop; a call that ends by itself without an answer is no figure.
    if (call.error && call.error->code != interactive::ErrorInterrupted)
        qFatal("%s", qPrintable(call.error->localizedDescription));
    ++m_returns;
    // Whoever waits for it serves events meanwhile.
    platform::MainQueue::async([] {});
}

void TimedSequence::sequenceEnded(const KVKLuaEnd &end)
{
    if (end.outcome == KVKLuaOutcome::Erred)
        qFatal("%s", qPrintable(end.message));
    m_hasEnded = true;
    platform::MainQueue::async([] {});
}

} // namespace bench
