#include "plugin/ShowCall.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/LogFormat.h"
#include "platform/MainQueue.h"
#include "plugin/AskConfiguration.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"
#include "plugin/ShowError.h"
#include "plugin/WaitNotice.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "common/ConfigValues.h"
#include "common/ErrorCodes.h"
#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/RecordKeys.h"
#include "common/Selectors.h"
#include "common/StationIndex.h"

namespace interactive {

using platform::MainQueue;

namespace {

const QString OkRole = QStringLiteral("OK");

QString methodName()
{
    return selectors::bracketed(selectors::ShowInteractiveView);
}

/// The role of a button: what follows the last separator of its identifier.
QString roleOf(const QString &buttonIdentifier)
{
    // Behind the last one, since a panel key may hold separators itself.
    return buttonIdentifier.mid(buttonIdentifier.lastIndexOf(identifiers::Separator) + 1);
}

/// Labels in an order of their own, since the order in which they are asked for is no part of a question.
QString sortedLabels(const platform::Value &list)
{
    QStringList texts;
    for (const platform::Value &label : list.toList())
        texts.append(platform::description(label));
    texts.sort();
    // The unit separator, which no label is written with: labels that hold blanks or commas are not run
    // together.
    return texts.join(QChar(0x1f));
}

} // namespace

platform::Value InteractiveView::showInteractiveView(const platform::Value &groupNumber,
                                                     const platform::Value &systemIndex,
                                                     const platform::Dictionary &config,
                                                     platform::Error *error)
{
    // The call would block the very thread that has to deliver the press it waits for.
    if (MainQueue::isMainThread()) {
        const platform::Value &subject = groupNumber.isValid() ? groupNumber : systemIndex;
        platform::storeError(error, InteractivePluginErrorDomain, ErrorOnMainThread,
                             platform::formatMessage(messages::OnMainThread, {methodName(), subject}));
        return {};
    }
    // So it would inside a function that an open call has handed over, which runs on that call's thread.
    if (platform::Callback::isRunning()) {
        const platform::Value &subject = groupNumber.isValid() ? groupNumber : systemIndex;
        throw std::logic_error(
            platform::formatMessage(messages::InsideFunction, {methodName(), subject}).toStdString());
    }
    return ShowCall(*m_rooms, groupNumber, systemIndex, config, error).run();
}

platform::Value InteractiveView::showGroupView(const platform::Value &groupNumber,
                                               const platform::Dictionary &config, platform::Error *error)
{
    return showInteractiveView(groupNumber, {}, config, error);
}

platform::Value InteractiveView::showView(const platform::Value &systemIndex,
                                          const platform::Dictionary &config, platform::Error *error)
{
    return showInteractiveView({}, systemIndex, config, error);
}

void InteractiveView::checkConfig(const platform::Dictionary &config, const platform::Value &groupNumber,
                                  const platform::Value &inputs, const platform::Value &switchs,
                                  const platform::Value &, platform::Error *error)
{
    if (const auto refusal = refusalOf(config, groupNumber.isValid(), inputs, switchs, m_rooms->station)) {
        platform::storeError(error, InteractivePluginErrorDomain, refusal->code,
                             platform::formatMessage("%@", {refusal->message}));
    }
}

ShowCall::ShowCall(Rooms &rooms, const platform::Value &groupNumber, const platform::Value &systemIndex,
                   const platform::Dictionary &config, platform::Error *error)
    : m_rooms(rooms)
    , m_groupNumber(groupNumber)
    , m_systemIndex(systemIndex)
    , m_config(config)
    , m_error(error)
{}

platform::Value ShowCall::run()
{
    log::standard(messages::ShowCalled, {methodName(), m_systemIndex, m_config});
    if (!findPanel())
        return {};
    readWanted();
    readRules();
    for (const QString &doubt : doubtsAbout(m_config, methodName()))
        log::standard("%@", {doubt});
    if (const auto answer = answerGivenBefore())
        return *answer;

    // Where nothing can be drawn there is no turn to wait for.
    if (m_wanted.wrongType.isEmpty() && !refusal() && cannotBeDrawn())
        return {};
    // The rules are pure, so it is known before the turn comes what the panel will lie upon.
    Turns::Turn turn(m_rooms.waits.turns(), m_subject.groupName.text(), m_subject.panelKey.text(),
                     roomNeeded());
    if (!turn.hasCome()) {
        const WaitNotice notice(messages::WaitsForTurn, m_subject.systems);
        if (turn.wait() == Turns::Wake::Interrupted) {
            storeInterrupted();
            return {};
        }
        // The same question may have been answered while this call queued.
        if (const auto answer = answerGivenBefore())
            return *answer;
    }
    return showInTurn();
}

/// Finds out whose panel it is; false, with an error stored, where the station has no such system.
bool ShowCall::findPanel()
{
    const StationMap &station = m_rooms.station;
    if (m_groupNumber.isValid()) {
        static_cast<void>(
            elementAt(station.groupNames(), m_groupNumber, selectors::ShowInteractiveView, "group number"));
    } else if (!isWithin(station.systemIndexToGroupMapping(), m_systemIndex, selectors::ShowInteractiveView,
                         "system index")) {
        const QString problem =
            station.systemCount() == 0
                ? platform::formatMessage(messages::NoSystems, {methodName(), m_systemIndex})
                : platform::formatMessage(messages::NoSuchSystem,
                                          {methodName(), m_systemIndex, station.systemCount() - 1});
        log::error("%@", {problem});
        platform::storeError(m_error, InteractivePluginErrorDomain, ErrorNoSuchSystem, problem);
        return false;
    }
    m_subject = PanelSubject::of(m_groupNumber, m_systemIndex, station, m_rooms.waits);
    return true;
}

void ShowCall::readWanted()
{
    m_wanted = wantedBy(m_config);
    if (m_wanted.buttonsAreNoList)
        log::error(messages::ButtonIsNotArray, {});
}

void ShowCall::readRules()
{
    AskReading reading =
        readAskRules(m_config, askContextOf(m_config, m_wanted, isGroupPanel()), m_rooms.station);
    m_rules = std::make_shared<const AskRules>(std::move(reading.rules));
    m_rulesRefusal = reading.refusal;
}

/// A caller without an out-parameter cannot learn of a refusal, and its panel is drawn.
std::optional<Refusal> ShowCall::refusal() const
{
    if (!m_error)
        return std::nullopt;
    if (isInformative())
        return m_rulesRefusal;
    // An error that the caller brings along is shown, too.
    if (m_error->isPresent())
        return Refusal{m_error->code, m_error->localizedDescription};
    const auto refused =
        refusalOf(m_config, isGroupPanel(), m_wanted.inputs, m_wanted.switches, m_rooms.station);
    return refused ? refused : m_rulesRefusal;
}

Turns::Room ShowCall::roomNeeded() const
{
    const bool beside = !isGroupPanel() && m_wanted.wrongType.isEmpty() && !refusal();
    return beside ? Turns::Room::Shared : Turns::Room::Alone;
}

/// What an answer in loop mode is an answer to: the kind of panel and its labels. A group's panel also says
/// what value it asks for; a slot's says so by the label itself.
QString ShowCall::question() const
{
    const QString value = isGroupPanel() ? config::label(m_config) : QString();
    return QStringList{isGroupPanel() ? QStringLiteral("group") : QStringLiteral("slot"), value,
                       sortedLabels(m_wanted.inputs), sortedLabels(m_wanted.switches)}
        // The record separator stands above the unit separator that parts the labels.
        .join(QChar(0x1e));
}

void ShowCall::announce()
{
    MainQueue::async(
        [&rooms = m_rooms, key = m_subject.panelKey] { rooms.groupButtons.enableGroupButton(true, key); });
    // Made before the panel: a press looks for the condition of its panel key.
    static_cast<void>(m_rooms.waits.conditionMade(m_subject.panelKey));
}

/// In loop mode an answer that was given counts again: nothing is drawn, and no turn is waited for.
std::optional<platform::Value> ShowCall::answerGivenBefore()
{
    const bool mayCount = asks() && m_wanted.wrongType.isEmpty() && !isInformative();
    if (!mayCount || !m_rooms.records.isLoopEnabled())
        return std::nullopt;
    const auto answer = m_rooms.records.answer(m_subject.panelKey.text(), question());
    if (!answer)
        return std::nullopt;
    announce();
    const Turns::Turn turn(m_rooms.waits.turns(), m_subject.groupName.text(), m_subject.panelKey.text(),
                           Turns::Room::Alone);
    // Only where no call has a panel in the band: what one waits on is not touched.
    if (turn.hasCome()) {
        MainQueue::sync([this] {
            m_rooms.views.resetUI(m_subject.panelKey);
            m_rooms.document.fit();
        });
        m_rooms.records.giveAgain(m_subject.panelKey.text(), question(), *answer);
        if (!isGroupPanel())
            resetData(m_rooms.records, m_rooms.views, m_subject.panelKey);
    }
    const platform::Value states =
        answer->states.isValid() ? answer->states : m_rooms.slotStates.of(m_subject.panelKey.text());
    return resultOf(answer->record, states);
}

platform::Value ShowCall::showInTurn()
{
    announce();
    // What is left of an earlier panel must not be seen while its group is switched off.
    if (!m_rooms.groupButtons.isGroupOn(m_subject.groupName))
        m_rooms.views.hideFirst(m_subject.panelKey);
    if (!m_wanted.wrongType.isEmpty()) {
        showProblem(m_wanted.wrongType);
        return {};
    }
    const auto refused = refusal();
    const QString problem = m_rooms.builder.panelProblem(m_config);
    if (!refused && !isInformative() && problem.isEmpty())
        return askOperator() ? collectResult() : platform::Value();
    MainQueue::sync([this] { m_rooms.views.resetUI(m_subject.panelKey); });
    if (refused) {
        tellCounts();
        // An error that the caller brought along stays as it is.
        if (!m_error->isPresent())
            platform::storeError(m_error, InteractivePluginErrorDomain, refused->code, refused->message);
        showProblem(refused->message);
        return {};
    }
    if (!isInformative())
        tellCounts();
    if (!problem.isEmpty()) {
        storeNothingToDraw(problem);
        return {};
    }
    log::debug(messages::Named, {methodName(), messages::InformativeMessage});
    static_cast<void>(m_rooms.builder.drawUI(request()));
    return platform::Dictionary();
}

void ShowCall::tellCounts()
{
    log::standard(messages::ShowCounts, {methodName(), m_rooms.records.isLoopEnabled(), !asks(),
                                         !m_rooms.records.contains(m_subject.panelKey.text())});
}

bool ShowCall::cannotBeDrawn()
{
    const QString problem = m_rooms.builder.panelProblem(m_config);
    if (problem.isEmpty())
        return false;
    storeNothingToDraw(problem);
    return true;
}

void ShowCall::storeNothingToDraw(const QString &problem)
{
    log::error(messages::Named, {methodName(), problem});
    platform::storeError(m_error, InteractivePluginErrorDomain, ErrorNothingToDraw, problem);
}

/// Shows why the call is refused, and waits until somebody has read it.
void ShowCall::showProblem(const QString &message)
{
    platform::Dictionary config = m_config;
    // A column count that is refused, or would be, is none for the panel that says so.
    const auto columns = static_cast<quint64>(config::integer(config::Column, config));
    if (isGroupPanel() && columns > m_rooms.station.slotCount())
        config.remove(config::Column);
    if (!showError(m_rooms, message, config, m_subject.groupName, m_subject.systems))
        storeInterrupted();
}

platform::Value ShowCall::givenAnswer()
{
    const QString key = m_subject.panelKey.text();
    std::optional<platform::Dictionary> found = m_rooms.records.record(key);
    // The rule is no part of the answer; in the record it stands until the panel has gone.
    if (found)
        found->remove(keys::Length);
    const platform::Value states = m_wanted.switchCount > 0 ? m_rooms.slotStates.of(key) : platform::Value();
    return resultOf(found ? platform::Value(*found) : platform::Value(), states);
}

platform::Value ShowCall::collectResult()
{
    const QString key = m_subject.panelKey.text();
    const std::optional<platform::Dictionary> found = m_rooms.records.record(key);
    const platform::Value states = m_wanted.switchCount > 0 ? m_rooms.slotStates.of(key) : platform::Value();
    const platform::Value result = givenAnswer();
    if (found && m_wanted.inputCount > 0)
        m_rooms.answers.add(*found);
    // A system's answer outlives its call in loop mode only, a group's always.
    if (asks() && (isGroupPanel() || m_rooms.records.isLoopEnabled()))
        m_rooms.records.keepAnswer(key, question(), states);
    if (!isGroupPanel())
        resetData(m_rooms.records, m_rooms.views, m_subject.panelKey);
    return result;
}

platform::Value ShowCall::resultOf(const platform::Value &record, const platform::Value &states)
{
    const platform::Value clickedButton = record.toMap().value(keys::ClickedButton);
    // "Cancel" leaves no record, and so no answer.
    if (!clickedButton.isValid())
        return record;
    const QString identifier = platform::description(clickedButton);
    if (m_wanted.switchCount > 0)
        return switchResult(record, identifier, states);
    if (m_wanted.inputCount > 0)
        return record;
    return identifier == identifiers::Pass;
}

platform::Value ShowCall::switchResult(const platform::Value &record, const QString &clickedButton,
                                       const platform::Value &states)
{
    if (roleOf(clickedButton) != OkRole) {
        platform::storeError(
            m_error, InteractivePluginErrorDomain, ErrorSwitchPanelNotConfirmed,
            platform::formatMessage(messages::UserCanceled, {methodName(), m_subject.panelKey}));
        return record;
    }
    return states.isValid() ? states : record;
}

} // namespace interactive
