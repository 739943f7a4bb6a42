#pragma once

#include "input/AutoConfirm.h"
#include "input/Defaults.h"
#include "input/EntryNews.h"
#include "input/Focus.h"
#include "platform/RefusedEntry.h"
#include "presentation/PanelViews.h"

#include <optional>

#include "common/Checks.h"
#include "common/GivenAnswers.h"
#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/RulesInForce.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"
#include "common/Waits.h"

namespace interactive {

class MouseTrackedTextField;

/// Checks each entry that an operator ends with Return, and stores it in its panel's record.
///
/// On a group's panel an entry in the shared field goes to the first slot that still waits for one; on a
/// slot's panel to the field's own. Thread: the main thread, except checkDuplicatedInput().
class Entries
{
public:
    Entries(const StationMap &station, PanelRecords &records, const SlotStates &slotStates, Waits &waits,
            const RulesInForce &rules, const GivenAnswers &answers, Checks &checks,
            const PanelSettings &settings, PanelViews &views, Focus &focus, Defaults &defaults,
            AutoConfirm &autoConfirm);

    /// What Return in a field does: checks the entry, and lets the focus go on when it was accepted.
    void endEntry(platform::View *sender);
    /// Checks and stores the entry of an input field; false when it is invalid or the sender is no input
    /// field.
    bool checkInput(platform::View *sender);
    /// Confirms the defaults of a group's panel, from the slot that waits next up to one that has none, as
    /// Return would one by one; false when an entry was begun that cannot be stored, or one of them is
    /// refused, which is told with its slot.
    [[nodiscard]] bool confirmDefaults(const platform::Identifier &panelKey);
    /// True when the text may be stored. Thread: any.
    [[nodiscard]] bool checkDuplicatedInput(const QString &text, const platform::Identifier &panelKey) const;
    /// What became of a verdict.
    enum class Judged {
        Dropped, ///< Its entry, or its panel, is gone or answered.
        Good,
        Refused,
    };
    /// Carries out the verdict of the call's own function about an entry that stands in the record already:
    /// one that is refused is taken out of it again, and its slot waits anew.
    Judged judge(const platform::Identifier &panelKey, const Check &check, bool isGood, const QString &why);
    /// An entry that cannot be taken at all, whoever sent it: says so to the operator, the host and in the
    /// log.
    static void refuse(const KVKRefusedEntry &refused);
    /// The same of an entry that its field has refused before it was whole; what the field held before is no
    /// answer any more.
    void refuseIn(const platform::TextField *field, const platform::RefusedEntry &refused);

private:
    struct Entry;
    /// What became of the latest entry that was checked.
    enum class Outcome { Invalid, Stored, NoSlotWaits };
    [[nodiscard]] bool takesEntry(Entry &entry);
    /// Why an entry must not be stored; empty when it may.
    struct Refusal
    {
        QString kind; ///< In a word for the host.
        QString why;  ///< In words for the operator.
    };
    [[nodiscard]] Refusal whyRefused(Entry &entry) const;
    [[nodiscard]] bool wasGivenBefore(const Entry &entry, const AskRules &rules) const;
    void acceptEntry(const Entry &entry);
    void checkOrTake(const Entry &entry, platform::TextField &field);
    void becomeValid(const platform::Identifier &panelKey, platform::TextField &field) const;
    void tellAccepted(const platform::Identifier &panelKey, const QString &slot, const QString &text) const;
    void takeBack(const platform::Identifier &panelKey, const Check &check, const QString &why);
    [[nodiscard]] platform::TextField *fieldOf(const platform::Identifier &panelKey,
                                               const QString &slot) const;
    [[nodiscard]] QString refusalText(const QString &panelKey, const QString &text, const QString &why) const;
    void tellNextCheck(const QString &panelKey, const Check &checked) const;
    void rejectEntry(const Entry &entry, const Refusal &refusal);
    void forgetOwnEntry(const platform::Identifier &field);
    [[nodiscard]] platform::TextField *entryTarget(const Entry &entry);

    const StationMap &m_station;
    PanelRecords &m_records;
    const SlotStates &m_slotStates;
    Waits &m_waits;
    const RulesInForce &m_rules;
    const GivenAnswers &m_answers;
    Checks &m_checks;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    Focus &m_focus;
    Defaults &m_defaults;
    AutoConfirm &m_autoConfirm;
    Outcome m_outcome = Outcome::Invalid;
    bool m_isEnded = false; ///< The entry that is being checked was ended by the operator, not by a button.
    bool m_confirmsDefault = false; ///< Nobody sees which slot an entry of "OK" is for, so a refusal says it.
};

} // namespace interactive
