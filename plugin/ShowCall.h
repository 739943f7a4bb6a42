#pragma once

#include "platform/Condition.h"
#include "platform/Error.h"
#include "platform/Identifier.h"
#include "platform/Value.h"

#include <memory>
#include <optional>

namespace interactive {

class InteractiveView;

/// One show call on its way: it draws a panel, waits for the operator and collects the answer.
///
/// Thread: the sequencer thread that makes the call, from construction to destruction. Ownership: refers to
/// the controller, the configuration and the error for the length of the call.
class ShowCall
{
public:
    /// Either the group number or the system index is given, the other one is nothing.
    /// Errors: throws std::out_of_range for a group number that the station does not have.
    ShowCall(InteractiveView &controller, const platform::Value &groupNumber,
             const platform::Value &systemIndex, const platform::Dictionary &config, platform::Error *error);

    /// Runs the call and returns the answer, nothing when there is none.
    [[nodiscard]] platform::Value run();

private:
    /// What the configuration asks for.
    struct Wanted
    {
        platform::Value inputs;
        platform::Value switches;
        platform::Value buttons;
        qsizetype inputCount = 0;
        qsizetype switchCount = 0;
    };

    void findPanel();
    void announce();
    [[nodiscard]] bool hasRightTypes();
    [[nodiscard]] bool isInformative() const;
    [[nodiscard]] bool isAnsweredInLoop();
    [[nodiscard]] bool isRefused();
    [[nodiscard]] bool cannotBeDrawn();
    void logCounts();
    void draw();
    void startRecord();
    [[nodiscard]] bool askOperator();
    void showAndWait(platform::Condition::Place &place, bool &answered);
    void clearPanel();
    void highlight(bool on);
    void forgetLength();
    void abandon();

    [[nodiscard]] platform::Value collectResult();
    [[nodiscard]] platform::Value resultOf(const platform::Value &record);
    [[nodiscard]] platform::Value switchResult(const platform::Value &record, const QString &clickedButton);
    [[nodiscard]] bool showProblem(const QString &message);
    void storeInterrupted();

    InteractiveView &m_controller;
    platform::Value m_groupNumber;
    platform::Value m_systemIndex;
    const platform::Dictionary &m_config;
    platform::Error *m_error;
    platform::Value m_group;
    platform::Identifier m_groupIdentifier; ///< Null when the call has no group.
    platform::Identifier m_panelKey;
    std::shared_ptr<platform::Condition> m_condition;
    Wanted m_wanted;
};

} // namespace interactive
