#include "soak/Sequence.h"

#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"

namespace soak {

Sequence::Sequence(interactive::InteractiveView &plugin, const QString &script,
                   const platform::Dictionary &globals)
    : m_sequence({script, globals, KVKBindFunctions(&plugin, plugin.pluginFunctionTable())}, *this)
{
    m_sequence.start();
}

void Sequence::sequenceEnded(const KVKLuaEnd &end)
{
    m_end = end;
    m_hasEnded = true;
    // Whoever looks whether it has ended serves the event loop meanwhile.
    platform::MainQueue::async([] {});
}

} // namespace soak
