#include "input/EntryNews.h"
#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/LogFormat.h"
#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"
#include "plugin/ShowCall.h"
#include "plugin/WaitNotice.h"

#include <chrono>
#include <utility>

#include "common/ConfigValues.h"
#include "common/ErrorCodes.h"
#include "common/Messages.h"
#include "common/RecordKeys.h"
#include "common/Selectors.h"

// The part of a show call in which its panel stands before the operator.
namespace interactive {

using platform::MainQueue;

namespace {

QString methodName()
{
    return selectors::bracketed(selectors::ShowInteractiveView);
}

/// The entries of an open panel but those that have no verdict yet.
platform::Dictionary validEntries(Rooms &rooms, const QString &panelKey)
{
    platform::Dictionary entries = rooms.records.record(panelKey).value_or(platform::Dictionary());
    entries.remove(keys::Length);
    entries.remove(keys::ClickedButton);
    for (const Check &check : rooms.checks.pending(panelKey))
        entries.remove(check.slot);
    return entries;
}

} // namespace

struct ShowCall::Drawn
{
    Rooms &rooms;
    PanelSubject subject;
    bool isGone = false; ///< Main thread.
    /// What was entered and found valid; known once the panel is gone.
    platform::Dictionary entries = {};
};

/// Draws the panel and waits; false, with an error stored, when the host or the time limit ended the wait.
bool ShowCall::askOperator()
{
    std::optional<Waits::Wait> wait;
    Waits::Wake wake = Waits::Wake::Interrupted;
    try {
        PanelPlan plan = m_rooms.builder.planned(request());
        // One job for all of it: each by itself is not worth a hand-over, and an operator waits.
        if (!MainQueue::sync([&] { return beginAsking(plan, wait); })) {
            storeInterrupted();
            return false;
        }
        const WaitNotice notice(messages::WaitsForOperator, m_subject.systems);
        wake = awaitOperator(*wait);
    } catch (...) {
        if (!wait)
            throw;
        // Whatever went wrong, nobody would hear the buttons of a panel whose call has gone. Nobody presses
        // one between the end and the clearing: the keys that such a press holds back would stay so.
        const bool wasPressed = wait->end() == Waits::Wake::Pressed;
        clearPanel(wasPressed ? Ended::Pressed : Ended::Failed);
        m_rooms.records.forget(m_subject.panelKey.text());
        throw;
    }
    if (wake == Waits::Wake::Pressed)
        tellAnswer();
    clearPanel(endedBy(wake));
    if (wake == Waits::Wake::Pressed) {
        m_rooms.records.finish(m_subject.panelKey.text());
        return true;
    }
    // What was half entered is no answer.
    m_rooms.records.forget(m_subject.panelKey.text());
    if (!isGroupPanel())
        resetData(m_rooms.records, m_rooms.views, m_subject.panelKey);
    if (wake == Waits::Wake::TimedOut)
        storeTimeOver();
    else
        storeInterrupted();
    return false;
}

/// Puts the panel in the place of what was left there; false when the host has ended the call before that.
/// Thread: the main thread.
bool ShowCall::beginAsking(PanelPlan &plan, std::optional<Waits::Wait> &wait)
{
    m_rooms.views.resetUI(m_subject.panelKey);
    tellCounts();
    // The place is taken before the panel can be pressed, and before the host may ask for the end: neither is
    // lost. What was left is gone by now, so that no press of it is taken for one of the new panel.
    wait.emplace(m_rooms.waits, m_subject.panelKey, Waits::Purpose::Answer);
    if (m_rooms.waits.isInterrupted())
        return false;
    if (m_subject.systemIndex.isValid())
        KVKExtensionStatusRelay::sharedStatusRelay()->startHighlightingForSystemIndex(
            m_subject.systemIndex.toULongLong());
    startRecord();
    openPanel();
    if (const auto limit = m_rooms.builder.draw(plan))
        wait->setLimit(*limit);
    return true;
}

/// While the panel stands: whoever sees it go may rely on the answer.
void ShowCall::tellAnswer()
{
    const platform::Value result = givenAnswer();
    const bool hasError = m_error && m_error->isPresent();
    KVKExtensionAnswerRelay::sharedAnswerRelay()->answerGiven(
        {m_config, result, hasError ? std::optional(*m_error) : std::nullopt});
}

/// Waits for the end, and holds the entries that come meanwhile against the call's own function.
Waits::Wake ShowCall::awaitOperator(Waits::Wait &wait)
{
    for (;;) {
        const Waits::Wake wake = wait.wait();
        if (wake != Waits::Wake::Asked)
            return wake;
        const std::optional<Check> check = m_rooms.checks.takeNext(m_subject.panelKey.text());
        if (!check)
            continue;
        runCheck(*check);
        // One at a time, so that an end that came meanwhile comes before the checks that are left.
        m_rooms.waits.ask(m_subject.panelKey.text());
    }
}

void ShowCall::runCheck(const Check &check)
{
    platform::Array results;
    try {
        const Checks::Running running(m_rooms.checks, m_subject.panelKey.text());
        results = m_rules->validate->call({check.value, check.slot});
    } catch (...) {
        // A function that the host has stopped has not failed.
        if (m_rooms.waits.isInterrupted())
            return;
        throw;
    }
    const platform::Value first = results.value(0);
    const bool isFalse = first.metaType() == QMetaType::fromType<bool>() && !first.toBool();
    const bool isGood = first.isValid() && !isFalse;
    const platform::Value second = results.value(1);
    const QString why = !isGood && second.isValid() ? platform::description(second) : QString();
    MainQueue::sync([&] {
        const Entries::Judged judged = m_rooms.entries.judge(m_subject.panelKey, check, isGood, why);
        m_rooms.confirmation.entryWasJudged(m_subject.panelKey, judged);
    });
}

void ShowCall::startRecord()
{
    // A group's panel that asks for another value than the serial number keeps its fields' order.
    const bool keepsAnswers = isGroupPanel() && config::label(m_config) != config::DefaultLabel;
    if (!keepsAnswers)
        resetData(m_rooms.records, m_rooms.views, m_subject.panelKey);
    m_rooms.records.start(m_subject.panelKey.text(), config::integer(config::Length, m_config), question());
    if (!isGroupPanel())
        m_rooms.slotStates.forget(m_subject.panelKey.text());
}

/// From here on the panel's rules are in force. Before it is drawn: the first entry may follow at once.
void ShowCall::openPanel()
{
    m_drawn = std::make_shared<Drawn>(Drawn{m_rooms, m_subject});
    m_rooms.rules.put(m_subject.panelKey.text(), m_rules);
    if (!m_rules->validate)
        return;
    m_rooms.checks.open(m_subject.panelKey.text(), [drawn = m_drawn](bool wasPressed) {
        MainQueue::async([drawn, wasPressed] {
            const bool isStopped = !wasPressed && !drawn->isGone && drawn->rooms.waits.isInterrupted();
            takeAway(*drawn, wasPressed ? Ended::Pressed : isStopped ? Ended::Stopped : Ended::TimedOut);
        });
    });
}

PanelRequest ShowCall::request() const
{
    // A panel of switches is drawn for the slots that have one.
    const bool switchesOnly = m_wanted.switchCount > 0 && m_wanted.inputCount == 0;
    const platform::Value &inputs = switchesOnly ? m_wanted.switches : m_wanted.inputs;
    return {m_config, inputs.toList(), m_wanted.switches.toList(), m_wanted.buttons, m_subject,
            m_rules,  guidance()};
}

/// Asked for on the call's own thread: the host knows by it which sequence's folder the paths are seen from.
KVKGuidancePointer ShowCall::guidance() const
{
    if (m_rules->image.isEmpty() && m_rules->instruction.isEmpty())
        return nullptr;
    QString caption = m_subject.groupName.text();
    if (m_subject.slot.isValid())
        caption += QLatin1Char(' ') + platform::description(m_subject.slot);
    return std::make_shared<const KVKGuidance>(
        KVKGuidance{caption, m_rules->image, m_rules->instruction,
                    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->folderOfCall()});
}

/// Takes the panel away. The keys that followed the press come in only now, when they cannot land in what is
/// gone.
void ShowCall::clearPanel(Ended how)
{
    if (m_drawn)
        MainQueue::sync([&] { takeAway(*m_drawn, how); });
    else if (how == Ended::Pressed)
        MainQueue::sync([&] { m_rooms.keys.release(); });
}

/// Takes the panel away once: the call does, or, while its thread is in the sequence's function, who has
/// ended its wait. A window must not wait for a function. Thread: the main thread.
void ShowCall::takeAway(Drawn &drawn, Ended how)
{
    // Behind this nothing is touched: the call, and all that its panel belonged to, may have gone.
    if (std::exchange(drawn.isGone, true))
        return;
    Rooms &rooms = drawn.rooms;
    const PanelSubject &subject = drawn.subject;
    drawn.entries = validEntries(rooms, subject.panelKey.text());
    rooms.views.resetUI(subject.panelKey);
    rooms.document.fit();
    rooms.rules.remove(subject.panelKey.text());
    rooms.checks.close(subject.panelKey.text());
    if (subject.systemIndex.isValid())
        KVKExtensionStatusRelay::sharedStatusRelay()->stopHighlightingForSystemIndex(
            subject.systemIndex.toULongLong());
    rooms.focus.panelGone(subject.panelKey);
    rooms.guidance.panelGone(subject.panelKey.text());
    tellFinished(drawn, how);
    if (how == Ended::Pressed)
        rooms.keys.release();
}

ShowCall::Ended ShowCall::endedBy(Waits::Wake wake)
{
    if (wake == Waits::Wake::Pressed)
        return Ended::Pressed;
    return wake == Waits::Wake::TimedOut ? Ended::TimedOut : Ended::Stopped;
}

/// Requires: the panel's record is still as its end has left it.
void ShowCall::tellFinished(const Drawn &drawn, Ended how)
{
    const QString key = drawn.subject.panelKey.text();
    KVKFinishedPanel finished{news::placeOf(drawn.rooms.station, key), how, {}};
    if (how == Ended::Pressed) {
        const platform::Dictionary record = drawn.rooms.records.record(key).value_or(platform::Dictionary());
        const platform::Value button = record.value(keys::ClickedButton);
        // "Cancel" leaves no record.
        if (button.isValid())
            finished.button = platform::description(button);
        else
            finished.how = Ended::Cancelled;
    }
    KVKExtensionEntryRelay::sharedEntryRelay()->finished(finished);
}

void ShowCall::storeTimeOver()
{
    const double seconds = std::chrono::duration<double>(*m_rules->timeLimit).count();
    platform::Dictionary additions;
    if (m_wanted.switchCount > 0)
        additions.insert(QStringLiteral("answer"), m_rooms.slotStates.of(m_subject.panelKey.text()));
    else if (m_wanted.inputCount > 0)
        additions.insert(QStringLiteral("answer"), m_drawn->entries);
    platform::storeError(
        m_error, InteractivePluginErrorDomain, ErrorTimeOver,
        platform::formatMessage(messages::TimeOver, {methodName(), seconds, m_subject.panelKey}), additions);
}

void ShowCall::storeInterrupted()
{
    platform::storeError(m_error, InteractivePluginErrorDomain, ErrorInterrupted,
                         platform::formatMessage(messages::Interrupted, {methodName(), m_subject.panelKey}));
}

} // namespace interactive
