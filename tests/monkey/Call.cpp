#include "tests/monkey/Call.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Callback.h"
#include "platform/MainQueue.h"
#include "tests/monkey/AskModel.h"
#include "tests/support/PluginFixture.h"

#include <utility>

using platform::Error;
using platform::Value;

namespace monkey {
namespace {

thread_local Call *callOfThisThread = nullptr;

/// A function as a sequence hands it over.
class NamedFunction : public platform::Callback
{
public:
    explicit NamedFunction(QString name)
        : m_name(std::move(name))
    {}
    [[nodiscard]] platform::Array call(const platform::Array &arguments) override
    {
        const Running running;
        if (isGood(m_name, arguments.value(0)))
            return {true};
        return {false, "not this one"};
    }

private:
    QString m_name;
};

/// The configuration with the function itself in the place of its name.
platform::Dictionary withFunction(platform::Dictionary config)
{
    const QString name = config.value("validate").toMap().value("function").toString();
    if (!name.isEmpty()) {
        const std::shared_ptr<platform::Callback> function = std::make_shared<NamedFunction>(name);
        config.insert("validate", Value::fromValue(function));
    }
    return config;
}

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

bool Call::isLimited() const
{
    return fate == Fate::Asks && limitOf(request.config) > 0;
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
        return plugin.showView(request.subject, withFunction(request.config), error);
    case Function::ShowGroupView:
        return plugin.showGroupView(request.subject, withFunction(request.config), error);
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
