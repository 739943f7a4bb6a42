#pragma once

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "layout/PanelPlan.h"
#include "platform/Error.h"
#include "platform/Value.h"
#include "plugin/Configuration.h"
#include "plugin/Wanted.h"

#include <memory>
#include <optional>

#include "common/AskRules.h"
#include "common/Checks.h"
#include "common/PanelRecords.h"
#include "common/PanelSubject.h"
#include "common/Turns.h"
#include "common/Waits.h"

namespace interactive {

struct Rooms;

/// One show call on its way: it waits for its turn, draws a panel, waits for the operator and collects the
/// answer.
///
/// Thread: the sequencer thread that makes the call, from construction to destruction. Ownership: refers to
/// the rooms, the configuration and the error for the length of the call.
class ShowCall
{
public:
    /// Either the group number or the system index is given, the other one is nothing.
    ShowCall(Rooms &rooms, const platform::Value &groupNumber, const platform::Value &systemIndex,
             const platform::Dictionary &config, platform::Error *error);

    /// Runs the call and returns the answer, nothing when there is none. Errors: throws std::out_of_range for
    /// a group number that the station does not have, std::invalid_argument for a number that is not whole.
    [[nodiscard]] platform::Value run();

private:
    [[nodiscard]] bool findPanel();
    void readWanted();
    void readRules();
    [[nodiscard]] bool isGroupPanel() const { return m_subject.isGroup; }
    [[nodiscard]] bool asks() const { return m_wanted.asks(); }
    [[nodiscard]] bool isInformative() const { return interactive::isInformative(m_config, isGroupPanel()); }
    [[nodiscard]] std::optional<Refusal> refusal() const;
    [[nodiscard]] Turns::Room roomNeeded() const;
    [[nodiscard]] QString question() const;

    void announce();
    [[nodiscard]] std::optional<platform::Value> answerGivenBefore();
    [[nodiscard]] platform::Value showInTurn();
    void tellCounts();
    [[nodiscard]] bool cannotBeDrawn();
    void storeNothingToDraw(const QString &problem);
    /// The panel that the call has drawn, shared with who takes it away in the call's place.
    struct Drawn;
    [[nodiscard]] bool askOperator();
    [[nodiscard]] PanelRequest request() const;
    [[nodiscard]] bool beginAsking(PanelPlan &plan, std::optional<Waits::Wait> &wait);
    [[nodiscard]] Waits::Wake awaitOperator(Waits::Wait &wait);
    void runCheck(const Check &check);
    void startRecord();
    void openPanel();
    [[nodiscard]] KVKGuidancePointer guidance() const;
    /// How the wait of a drawn panel ended.
    using Ended = KVKFinishedPanel::How;
    [[nodiscard]] static Ended endedBy(Waits::Wake wake);
    void clearPanel(Ended how);
    static void takeAway(Drawn &drawn, Ended how);
    static void tellFinished(const Drawn &drawn, Ended how);
    void storeTimeOver();
    void showProblem(const QString &message);
    void storeInterrupted();

    /// The answer as the record and the switches have it.
    [[nodiscard]] platform::Value givenAnswer();
    void tellAnswer();
    [[nodiscard]] platform::Value collectResult();
    [[nodiscard]] platform::Value resultOf(const platform::Value &record, const platform::Value &states);
    [[nodiscard]] platform::Value switchResult(const platform::Value &record, const QString &clickedButton,
                                               const platform::Value &states);

    Rooms &m_rooms;
    platform::Value m_groupNumber;
    platform::Value m_systemIndex;
    const platform::Dictionary &m_config;
    platform::Error *m_error;
    PanelSubject m_subject;
    Wanted m_wanted;
    std::shared_ptr<const AskRules> m_rules;
    std::shared_ptr<Drawn> m_drawn;        ///< Null until the call begins to ask.
    std::optional<Refusal> m_rulesRefusal; ///< Why an optional key is refused.
};

} // namespace interactive
