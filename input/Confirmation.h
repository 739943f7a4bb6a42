#pragma once

#include "input/Defaults.h"
#include "input/Entries.h"
#include "input/Focus.h"
#include "platform/WorkQueue.h"
#include "presentation/PanelViews.h"

#include <QHash>

#include <functional>
#include <memory>

#include "common/Checks.h"
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
/// meanwhile are held back: a scan that follows a press comes after what the press does. A press that would
/// end a panel with an answer, while entries still wait for their sequence's verdict, is kept until the last
/// of them has come, and dropped when one is refused; keys are not held for so long. Thread: the main
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

    Confirmation(const StationMap &station, PanelRecords &records, Waits &waits, Checks &checks,
                 const PanelSettings &settings, PanelViews &views, Focus &focus, Defaults &defaults,
                 Entries &entries, KeyRouter &keys);

    void setGroups(Groups groups) { m_groups = std::move(groups); }

    /// Returns at once; the main thread stays free, since the work waits for it.
    void confirmBtnClicked(platform::View *sender);
    /// Ends the worker: what was pressed and not begun is dropped, now and from now on.
    void end() { m_queue.end(); }
    /// A verdict about an entry of the panel has come: the press that waits for it is carried out, when it
    /// was the last one, or dropped.
    void entryWasJudged(const platform::Identifier &panelKey, Entries::Judged judged);
    /// Whether the panel may be closed; brings the focus to what is missing. Thread: any but the main thread.
    [[nodiscard]] bool checkAllInputs(const platform::Identifier &panelKey);
    /// Empties all fields of the panel. Thread: any.
    void clearAllInputs(const platform::Identifier &panelKey);

private:
    struct Press;
    void perform(const Press &press);
    [[nodiscard]] bool waitsForChecks(const Press &press, const platform::Identifier &panelKey);
    void clear(const Press &press, const platform::Identifier &panelKey);
    [[nodiscard]] bool carryOut(const Press &press);
    /// Whether its button was taken away with its panel since.
    [[nodiscard]] static bool hasLeft(const Press &press);
    [[nodiscard]] bool confirm(const Press &press, const platform::Identifier &panelKey);
    [[nodiscard]] bool checkEachField(const Responders &fields);
    void sayWhyNothingIsEntered(const platform::Identifier &panelKey) const;

    const StationMap &m_station;
    PanelRecords &m_records;
    Waits &m_waits;
    Checks &m_checks;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    Focus &m_focus;
    Defaults &m_defaults;
    Entries &m_entries;
    KeyRouter &m_keys;
    Groups m_groups;
    /// The presses that wait for verdicts, by panel key. Main thread.
    QHash<QString, std::shared_ptr<const Press>> m_waiting;
    QHash<QString, quint64> m_refusals; ///< Verdicts that refused an entry, by panel key. Main thread.
    platform::WorkQueue m_queue;        ///< Last, so that what it runs finds the rest.
};

} // namespace interactive
