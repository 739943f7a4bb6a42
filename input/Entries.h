#pragma once

#include "input/AutoConfirm.h"
#include "input/Defaults.h"
#include "input/Focus.h"
#include "platform/RefusedEntry.h"
#include "presentation/PanelViews.h"

#include <optional>

#include "common/GivenAnswers.h"
#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/RulesInForce.h"
#include "common/SlotStates.h"
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
    Entries(PanelRecords &records, const SlotStates &slotStates, Waits &waits, const RulesInForce &rules,
            const GivenAnswers &answers, const PanelSettings &settings, PanelViews &views, Focus &focus,
            Defaults &defaults, AutoConfirm &autoConfirm);

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
    /// An entry that cannot be taken at all, whoever sent it: says so to the operator and in the log.
    static void refuse(const QString &text, const QString &why);
    /// The same of an entry that its field has refused before it was whole; what the field held before is no
    /// answer any more.
    void refuseIn(const platform::TextField *field, const platform::RefusedEntry &refused);

private:
    struct Entry;
    /// What became of the latest entry that was checked.
    enum class Outcome { Invalid, Stored, NoSlotWaits };
    [[nodiscard]] bool takesEntry(Entry &entry);
    [[nodiscard]] QString whyRefused(Entry &entry) const;
    [[nodiscard]] bool wasGivenBefore(const Entry &entry, const AskRules &rules) const;
    void acceptEntry(const Entry &entry);
    void rejectEntry(const Entry &entry, const QString &why);
    void forgetOwnEntry(const platform::Identifier &field);
    [[nodiscard]] platform::TextField *entryTarget(const Entry &entry);

    PanelRecords &m_records;
    const SlotStates &m_slotStates;
    Waits &m_waits;
    const RulesInForce &m_rules;
    const GivenAnswers &m_answers;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    Focus &m_focus;
    Defaults &m_defaults;
    AutoConfirm &m_autoConfirm;
    Outcome m_outcome = Outcome::Invalid;
    bool m_confirmsDefault = false; ///< Nobody sees which slot an entry of "OK" is for, so a refusal says it.
};

} // namespace interactive
