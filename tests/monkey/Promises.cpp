#include "tests/monkey/Promises.h"

#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"
#include "tests/monkey/AskModel.h"
#include "tests/support/Wait.h"

#include <algorithm>

namespace monkey {
namespace {

using State = Call::State;

/// Whether the panels of two calls cannot stand side by side.
bool inEachOthersWay(const Call &a, const Call &b)
{
    if (!a.band || a.band != b.band)
        return false;
    const auto isSlotPanel = [](const Call &call) {
        return call.fate == Fate::Asks && call.request.function == Function::ShowView;
    };
    return !isSlotPanel(a) || !isSlotPanel(b) || a.panelKey == b.panelKey;
}

QString unrestOfQueued(const World &world, const Call &call)
{
    bool hasReason = false;
    bool isBandAnswerable = false;
    for (const auto &other : world.calls) {
        if (other.get() == &call || other->hasEnded() || other->band != call.band)
            continue;
        const bool isInTheWay = inEachOthersWay(*other, call);
        hasReason = hasReason || (isInTheWay && other->step <= call.step);
        const bool isUp = other->state() == State::WaitsForOperator;
        isBandAnswerable = isBandAnswerable || isUp;
        if (isInTheWay && isUp && other->step > call.step)
            return QStringLiteral("%1 was overtaken by %2").arg(call.inWords(), other->inWords());
    }
    return hasReason && isBandAnswerable
               ? QString()
               : call.inWords() + QLatin1String(" though nobody is before it who can be answered");
}

QString unrestOfAsked(const World &world, const QList<SeenPanel> &panels, const Call &call)
{
    const auto here =
        std::ranges::count_if(panels, [&](const SeenPanel &panel) { return panel.key == call.panelKey; });
    if (here != 1)
        return QStringLiteral("%1, has %2 panels with the key %3")
            .arg(call.inWords())
            .arg(here)
            .arg(call.panelKey);
    for (const auto &other : world.calls) {
        if (other.get() != &call && other->state() == State::WaitsForOperator &&
            inEachOthersWay(*other, call))
            return QStringLiteral("%1 and %2 have panels in each other's way")
                .arg(call.inWords(), other->inWords());
    }
    const SeenPanel &panel = *panelWithKey(panels, call.panelKey);
    if (std::ranges::none_of(panel.buttons, [](const auto &button) { return button->isEnabled(); }))
        return call.inWords() + QLatin1String(", has no button that is enabled");
    if (!panel.isVisible && world.isGroupOn(world.shape.groups.at(*call.band)))
        return call.inWords() + QLatin1String(", has a hidden panel though its group is switched on");
    return {};
}

/// Whether the press that ends the call was made, and its thread has not woken yet.
bool collectsItsAnswer(const World &world, const Call &call)
{
    interactive::Waits &waits = world.plugin.rooms().waits;
    const QString group = call.band ? world.shape.groups.at(*call.band) : QString();
    return waits.isAnswered(waits.panelKey(call.panelKey)) || waits.isAnswered(waits.panelKey(group));
}

/// Whether its panel stands for so short a time that nobody could answer it.
bool isAboutToEnd(const Call &call)
{
    constexpr int HardlyAnyTime = 50;
    return call.isLimited() && limitOf(call.request.config) <= HardlyAnyTime;
}

QString unrestOf(const World &world, const QList<SeenPanel> &panels, const Call &call)
{
    switch (call.state()) {
    case State::Running:
        return call.inWords();
    case State::WaitsForTurn:
        return unrestOfQueued(world, call);
    case State::WaitsForOperator:
        if (isAboutToEnd(call))
            return call.inWords() + QLatin1String(", has hardly any time");
        if (world.plugin.rooms().checks.arePending(call.panelKey))
            return call.inWords() + QLatin1String(", waits for its own function");
        if (collectsItsAnswer(world, call))
            return call.inWords() + QLatin1String(", collects its answer");
        return unrestOfAsked(world, panels, call);
    case State::Ended:
        break;
    }
    return {};
}

/// On a group's panel what is shown as entered is what is stored.
QString hiddenEntry(const World &world, const SeenPanel &panel)
{
    const platform::Dictionary record = world.record(panel.key);
    for (const SeenField &field : panel.shown) {
        const platform::Value value = record.value(field.label);
        const QString stored = value.toString();
        const Call *call = world.callAt(panel.key);
        // A text that the call's function has refused stays to be seen, in red.
        const bool isRefused = call && !value.isValid() && !passesFunction(field.text, call->request.config);
        const bool isSame = call && value.isValid() && taken(field.text, call->request.config) == value;
        if (stored != field.text && !isRefused && !isSame) {
            return QStringLiteral("panel %1 shows \"%2\" for %3 and has stored \"%4\"")
                .arg(panel.key, field.text, field.label, stored);
        }
    }
    return {};
}

} // namespace

QString unrestIn(const World &world)
{
    // Also a panel that ends by itself is pressed, and what is typed meanwhile waits.
    if (world.plugin.rooms().keys.isHolding())
        return QStringLiteral("a press is being carried out");
    const QList<SeenPanel> panels = panelsIn(world.root());
    for (const auto &call : world.calls) {
        if (const QString unrest = unrestOf(world, panels, *call); !unrest.isEmpty())
            return unrest;
    }
    for (const SeenPanel &panel : panels) {
        if (!world.callAt(panel.key))
            return QStringLiteral("the panel %1 stands though no call waits on it").arg(panel.key);
        if (const QString unrest = hiddenEntry(world, panel); !unrest.isEmpty())
            return unrest;
    }
    return world.furtherPromise ? world.furtherPromise(world) : QString();
}

void settle(World &world, const QString &otherwise, const std::function<bool()> &condition)
{
    bool isServed = false;
    platform::MainQueue::async([&isServed] { isServed = true; });
    const bool isConditionMet =
        testsupport::waitUntil([&] { return isServed && condition(); }, world.patience);
    if (!isConditionMet)
        throw BrokenPromise{otherwise};
    if (!testsupport::waitUntil([&] { return unrestIn(world).isEmpty(); }, world.patience))
        throw BrokenPromise{unrestIn(world)};
    world.wasLoopOn = world.wasLoopOn || world.isLoopOn();
    world.noteEntered();
    // Those that end a loop come last: they forget what the others may have been answered with.
    // Those that were asked come first: of two calls of one question the later one is answered with the
    // other.
    const auto rank = [](const Call &call) {
        return call.request.function == Function::IsLoopFinished ? 2 : (call.wasAsked() ? 0 : 1);
    };
    for (const int now : {0, 1, 2}) {
        for (const auto &call : world.calls) {
            if (call->hasEnded() && rank(*call) == now)
                judgeEnded(world, *call);
        }
    }
    std::erase_if(world.calls, [](const auto &call) { return call->hasEnded(); });
}

} // namespace monkey
