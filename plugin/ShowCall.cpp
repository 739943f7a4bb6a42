#include "plugin/ShowCall.h"

#include "input/Identifiers.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/LogFormat.h"
#include "platform/MainQueue.h"
#include "plugin/Configuration.h"
#include "plugin/ErrorCodes.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/RecordKeys.h"
#include "plugin/Selectors.h"
#include "plugin/StationIndex.h"

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
    return buttonIdentifier.mid(buttonIdentifier.lastIndexOf(identifiers::Separator) + 1);
}

} // namespace

platform::Value InteractiveView::showInteractiveView(const platform::Value &groupNumber,
                                                     const platform::Value &systemIndex,
                                                     const platform::Dictionary &config,
                                                     platform::Error *error)
{
    if (MainQueue::isMainThread()) {
        const platform::Value &subject = groupNumber.isValid() ? groupNumber : systemIndex;
        platform::storeError(error, InteractivePluginErrorDomain, ErrorOnMainThread,
                             platform::formatMessage(messages::OnMainThread, {methodName(), subject}));
        return {};
    }
    return ShowCall(*this, groupNumber, systemIndex, config, error).run();
}

void InteractiveView::checkConfig(const platform::Dictionary &config, const platform::Value &groupNumber,
                                  const platform::Value &inputs, const platform::Value &switchs,
                                  const platform::Value &, platform::Error *error)
{
    const StationShape station{m_systemIndexToSlotMapping, m_slotCount};
    if (const auto refusal = refusalOf(config, groupNumber.isValid(), inputs, switchs, station)) {
        platform::storeError(error, InteractivePluginErrorDomain, refusal->code,
                             platform::formatMessage("%@", {refusal->message}));
    }
}

ShowCall::ShowCall(InteractiveView &controller, const platform::Value &groupNumber,
                   const platform::Value &systemIndex, const platform::Dictionary &config,
                   platform::Error *error)
    : m_controller(controller)
    , m_groupNumber(groupNumber)
    , m_systemIndex(systemIndex)
    , m_config(config)
    , m_error(error)
{}

platform::Value ShowCall::run()
{
    log::standard(messages::ShowCalled, {methodName(), m_systemIndex, m_config});
    findPanel();
    announce();
    if (!hasRightTypes())
        return {};
    MainQueue::sync([this] { m_controller.resetUI(m_panelKey); });

    if (isInformative()) {
        if (cannotBeDrawn())
            return {};
        log::debug(messages::Named, {methodName(), messages::InformativeMessage});
        draw();
        return platform::Dictionary();
    }
    if (!isAnsweredInLoop()) {
        logCounts();
        if (isRefused() || cannotBeDrawn())
            return {};
        if (!askOperator())
            return {};
    }
    return collectResult();
}

void ShowCall::findPanel()
{
    if (m_groupNumber.isValid()) {
        m_group = elementAt(m_controller.groupNames(), m_groupNumber, selectors::ShowInteractiveView,
                            "group number");
        m_panelKey = m_controller.panelKey(platform::description(m_group));
    }
    if (m_systemIndex.isValid()) {
        const platform::Array groups = m_controller.systemIndexToGroupMapping();
        if (isWithin(groups, m_systemIndex, selectors::ShowInteractiveView, "system index"))
            m_group = groups.at(static_cast<qsizetype>(platform::integerValue(m_systemIndex)));
        else
            log::standard(messages::BeyondMapping, {methodName(), m_systemIndex, groups.size()});
        m_panelKey = m_controller.panelKey(platform::description(m_systemIndex));
    }
    if (m_group.isValid())
        m_groupIdentifier = m_controller.panelKey(platform::description(m_group));
}

void ShowCall::announce()
{
    MainQueue::async(
        [&controller = m_controller, key = m_panelKey] { controller.enableGroupButton(true, key); });
    m_condition = m_controller.conditionMade(m_panelKey);
    if (!m_controller.isGroupOn(m_groupIdentifier))
        m_controller.hideUIWithIdentifier(m_panelKey);
}

bool ShowCall::hasRightTypes()
{
    m_wanted.switches = m_config.value(config::Switch);
    m_wanted.inputs = m_config.value(config::Input);
    m_wanted.buttons = m_config.value(config::Button);
    if (m_wanted.switches.isValid() && !platform::isArray(m_wanted.switches))
        return showProblem(QLatin1String(messages::SwitchIsNotArray));
    if (m_wanted.inputs.isValid() && !platform::isArray(m_wanted.inputs))
        return showProblem(QLatin1String(messages::InputIsNotArray));
    if (m_wanted.buttons.isValid() && !platform::isArray(m_wanted.buttons))
        log::error(messages::ButtonIsNotArray, {});
    m_wanted.switchCount = m_wanted.switches.toList().size();
    m_wanted.inputCount = m_wanted.inputs.toList().size();
    return true;
}

bool ShowCall::isInformative() const
{
    return m_controller.isGroupView(m_panelKey) && !config::text(config::Message, m_config).isEmpty();
}

bool ShowCall::isAnsweredInLoop()
{
    const bool asks = m_wanted.inputCount > 0 || m_wanted.switchCount > 0;
    return asks && m_controller.isLoopEnabled() &&
           m_controller.m_savedData.lock()->contains(m_panelKey.text());
}

void ShowCall::logCounts()
{
    const bool nothingAsked = m_wanted.inputCount == 0 && m_wanted.switchCount == 0;
    const bool noRecord = !m_controller.m_savedData.lock()->contains(m_panelKey.text());
    log::standard(messages::ShowCounts, {methodName(), m_controller.isLoopEnabled(), nothingAsked, noRecord});
}

bool ShowCall::isRefused()
{
    m_controller.checkConfig(m_config, m_groupNumber, m_wanted.inputs, m_wanted.switches, m_wanted.buttons,
                             m_error);
    // A caller without an out-parameter cannot learn of a refusal, and the panel is drawn.
    if (!m_error || !m_error->isPresent())
        return false;
    static_cast<void>(showProblem(m_error->localizedDescription));
    return true;
}

bool ShowCall::showProblem(const QString &message)
{
    if (!m_controller.showError(message, m_config, m_groupIdentifier))
        storeInterrupted();
    return false;
}

bool ShowCall::cannotBeDrawn()
{
    const QString problem = m_controller.panelProblem(m_config);
    if (problem.isEmpty())
        return false;
    log::error(messages::Named, {methodName(), problem});
    platform::storeError(m_error, InteractivePluginErrorDomain, ErrorNothingToDraw, problem);
    return true;
}

void ShowCall::startRecord()
{
    const auto savedData = m_controller.m_savedData.lock();
    const bool keepsAnswers =
        m_controller.isGroupView(m_panelKey) && config::label(m_config) != config::DefaultLabel;
    if (!keepsAnswers)
        m_controller.resetData(m_panelKey);
    savedData->insert(m_panelKey.text(),
                      platform::Dictionary{
                          {keys::Length, static_cast<qlonglong>(config::integer(config::Length, m_config))}});
}

void ShowCall::draw()
{
    // A panel of switches is drawn for the slots that have one.
    const bool switchesOnly = m_wanted.switchCount > 0 && m_wanted.inputCount == 0;
    const platform::Value &inputs = switchesOnly ? m_wanted.switches : m_wanted.inputs;
    m_controller.drawUI(m_config, inputs.toList(), m_wanted.switches.toList(), m_wanted.buttons,
                        m_groupNumber, m_systemIndex);
}

/// Draws the panel and waits; false when the host ended the wait.
bool ShowCall::askOperator()
{
    // The place is taken before the panel can be pressed, and before the host may ask for the end: neither is
    // lost.
    platform::Condition::Place place(*m_condition);
    if (m_controller.m_interrupted) {
        storeInterrupted();
        return false;
    }
    bool answered = false;
    try {
        showAndWait(place, answered);
    } catch (...) {
        clearPanel();
        throw;
    }
    clearPanel();
    if (!answered) {
        abandon();
        storeInterrupted();
        return false;
    }
    forgetLength();
    return true;
}

void ShowCall::showAndWait(platform::Condition::Place &place, bool &answered)
{
    MainQueue::async([index = m_systemIndex] {
        if (index.isValid())
            KVKExtensionStatusRelay::sharedStatusRelay()->startHighlightingForSystemIndex(
                index.toULongLong());
    });
    startRecord();
    if (!m_controller.isGroupView(m_panelKey))
        m_controller.m_enableStatus.lock()->remove(m_panelKey.text());
    draw();
    answered = place.wait() == platform::Condition::Wake::Signalled;
}

void ShowCall::clearPanel()
{
    MainQueue::sync([this] { m_controller.resetUI(m_panelKey); });
    if (m_systemIndex.isValid()) {
        MainQueue::sync([this] {
            KVKExtensionStatusRelay::sharedStatusRelay()->stopHighlightingForSystemIndex(
                m_systemIndex.toULongLong());
        });
    }
}

void ShowCall::forgetLength()
{
    const auto savedData = m_controller.m_savedData.lock();
    const auto found = savedData->find(m_panelKey.text());
    if (found == savedData->end())
        return;
    platform::Dictionary record = found->toMap();
    record.remove(keys::Length);
    *found = record;
}

/// What was half entered is no answer.
void ShowCall::abandon()
{
    m_controller.m_savedData.lock()->remove(m_panelKey.text());
    if (!m_controller.isGroupView(m_panelKey))
        m_controller.resetData(m_panelKey);
}

void ShowCall::storeInterrupted()
{
    platform::storeError(m_error, InteractivePluginErrorDomain, ErrorInterrupted,
                         platform::formatMessage(messages::Interrupted, {methodName(), m_panelKey}));
}

platform::Value ShowCall::collectResult()
{
    const platform::Value record = m_controller.m_savedData.lock()->value(m_panelKey.text());
    const platform::Value result = resultOf(record);
    if (!m_controller.isGroupView(m_panelKey)) {
        const auto savedData = m_controller.m_savedData.lock();
        m_controller.resetData(m_panelKey);
    }
    return result;
}

platform::Value ShowCall::resultOf(const platform::Value &record)
{
    const platform::Value clickedButton = record.toMap().value(keys::ClickedButton);
    if (!clickedButton.isValid())
        return record;
    const QString identifier = platform::description(clickedButton);
    if (m_wanted.switchCount > 0)
        return switchResult(record, identifier);
    if (m_wanted.inputCount > 0)
        return record;
    return identifier == identifiers::Pass;
}

platform::Value ShowCall::switchResult(const platform::Value &record, const QString &clickedButton)
{
    if (roleOf(clickedButton) != OkRole) {
        platform::storeError(m_error, InteractivePluginErrorDomain, ErrorSwitchPanelNotConfirmed,
                             platform::formatMessage(messages::UserCanceled, {methodName(), m_panelKey}));
        return record;
    }
    const platform::Value states = m_controller.m_enableStatus.lock()->value(m_panelKey.text());
    return states.isValid() ? states : record;
}

} // namespace interactive
