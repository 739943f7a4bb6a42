#include "tests/monkey/Call.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/MainQueue.h"
#include "tests/support/PluginFixture.h"

using platform::Error;
using platform::Value;

namespace monkey {
namespace {

thread_local Call *callOfThisThread = nullptr;

} // namespace

Call::Call(int callNumber, int callStep, const Request &callRequest, const Shape &shape,
           interactive::InteractiveView &plugin)
    : number(callNumber)
    , step(callStep)
    , request(callRequest)
    , fate(fateOf(callRequest, shape))
    , band(bandOf(callRequest, fate, shape))
    , panelKey(panelKeyOf(callRequest, fate, shape))
    , m_thread(std::make_unique<testsupport::SequencerCall>([this, &plugin](Error *error) {
        callOfThisThread = this;
        return make(plugin, error);
    }))
{}

void Call::listen(bool on)
{
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    if (!on) {
        relay->setWaitHandler({});
        return;
    }
    relay->setWaitHandler([](const KVKCallWait &wait) {
        if (callOfThisThread)
            callOfThisThread->waitsFor(wait.what);
    });
}

void Call::waitsFor(const QString &what)
{
    if (what == QLatin1String("the operator")) {
        m_wasAsked = true;
        m_state = State::WaitsForOperator;
    } else {
        m_state = what.isEmpty() ? State::Running : State::WaitsForTurn;
    }
    // Whoever looks at the state serves the event loop meanwhile.
    platform::MainQueue::async([] {});
}

Call::State Call::state() const
{
    return m_thread->finished() ? State::Ended : m_state.load();
}

QString Call::inWords() const
{
    static const QStringList states{"is under way", "waits for its turn", "waits for the operator",
                                    "has ended"};
    return QStringLiteral("call %1 ").arg(number) + request.inWords() + QLatin1String(", which ") +
           states.at(static_cast<int>(state()));
}

Value Call::make(interactive::InteractiveView &plugin, Error *error)
{
    switch (request.function) {
    case Function::ShowView:
        return plugin.showView(request.subject, request.config, error);
    case Function::ShowGroupView:
        return plugin.showGroupView(request.subject, request.config, error);
    case Function::GetData:
        return plugin.getData(request.subject, error);
    case Function::SetLoop:
        return plugin.setLoop(request.subject, error);
    case Function::GetLoopConfig:
        return plugin.getLoopConfig(error);
    case Function::IsLoopFinished:
        return plugin.isLoopFinished(request.subject, error);
    }
    return {};
}

} // namespace monkey
