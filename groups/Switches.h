#pragma once

#include "input/AutoConfirm.h"
#include "input/Defaults.h"
#include "input/Focus.h"
#include "presentation/PanelViews.h"
#include "presentation/SlotColors.h"

#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"

namespace interactive {

/// The check boxes by which an operator takes a slot out of the run or puts it back.
///
/// A switch bears the panel key, the tag of its slot's field and the slot in its identifier ("G1-103-S4").
/// Switching discards what was entered for the slot, in both directions. Thread: the main thread.
class Switches
{
public:
    Switches(const StationMap &station, PanelRecords &records, SlotStates &slotStates,
             const PanelSettings &settings, PanelViews &views, const SlotColors &colors, Focus &focus,
             Defaults &defaults, AutoConfirm &autoConfirm);

    /// The switch has its new state already.
    void switchBtnClicked(platform::View *sender);

private:
    void recordSwitch(const platform::Identifier &panelKey, const QString &slotKey, qint64 systemIndex,
                      bool on);
    void showSwitch(platform::View &content, const platform::Identifier &panelKey, int tag, bool on);

    const StationMap &m_station;
    PanelRecords &m_records;
    SlotStates &m_slotStates;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    const SlotColors &m_colors;
    Focus &m_focus;
    Defaults &m_defaults;
    AutoConfirm &m_autoConfirm;
};

} // namespace interactive
