#pragma once

#include "input/Defaults.h"
#include "input/Entries.h"
#include "input/Focus.h"
#include "platform/WorkQueue.h"
#include "presentation/PanelViews.h"

#include <functional>

#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/StationMap.h"
#include "common/Waits.h"

namespace interactive {

class KeyRouter;

/// What a press of a panel's button does: "OK" checks everything and ends the wait, "Clear" empties the
/// panel, "Cancel" ends the wait without an answer, any other button ends it with what was entered.
///
/// A press is noted on the main thread, together with the wait that it can end, and carried out on a worker,
/// one after another, so that a second press finds what the first one has done. The keys that arrive
/// meanwhile are held back: a scan that follows a press comes after what the press does. Thread: the main
/// thread, except where stated.
class Confirmation
{
public:
    /// What a confirmation asks of the groups' buttons. Called on the main thread.
    struct Groups
    {
        std::function<bool(const platform::Identifier &panelKey)> isOn;
        /// The group's panel was confirmed: its button is disabled until the next call.
        std::function<void(const platform::Identifier &panelKey)> confirmed;
    };

    Confirmation(const StationMap &station, PanelRecords &records, Waits &waits,
                 const PanelSettings &settings, PanelViews &views, Focus &focus, Defaults &defaults,
                 Entries &entries, KeyRouter &keys);

    void setGroups(Groups groups) { m_groups = std::move(groups); }

    /// Returns at once; the main thread stays free, since the work waits for it.
    void confirmBtnClicked(platform::View *sender);
    /// Whether the panel may be closed; brings the focus to what is missing. Thread: any but the main thread.
    [[nodiscard]] bool checkAllInputs(const platform::Identifier &panelKey);
    /// Empties all fields of the panel. Thread: any but the main thread.
    void clearAllInputs(const platform::Identifier &panelKey);

private:
    struct Press;
    [[nodiscard]] bool carryOut(const Press &press);
    [[nodiscard]] bool confirm(const Press &press, const platform::Identifier &panelKey);
    [[nodiscard]] bool checkEachField(const Responders &fields);
    void sayWhyNothingIsEntered(const platform::Identifier &panelKey) const;

    const StationMap &m_station;
    PanelRecords &m_records;
    Waits &m_waits;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    Focus &m_focus;
    Defaults &m_defaults;
    Entries &m_entries;
    KeyRouter &m_keys;
    Groups m_groups;
    platform::WorkQueue m_queue; ///< Last, so that what it runs finds the rest.
};

} // namespace interactive
