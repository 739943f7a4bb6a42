#pragma once

#include "input/Focus.h"
#include "platform/Button.h"
#include "platform/Monitored.h"
#include "presentation/PanelViews.h"

#include <QList>
#include <QPointer>

#include "common/SlotStates.h"
#include "common/StationMap.h"
#include "common/Waits.h"

namespace interactive {

/// The check boxes along the upper edge, one a group: a group that is switched off has its panel hidden. At
/// least one group stays on. Where one row would run over the loop field or out of the window they stand in
/// several, and the panels' scroll view begins below them.
///
/// A look-up compares what stands before the first "-" of a button's identifier, and takes an unknown group
/// for one that is on. Thread: the main thread, except isGroupOn().
class GroupButtons
{
public:
    GroupButtons(const StationMap &station, SlotStates &slotStates, Waits &waits, PanelViews &views,
                 Focus &focus);

    /// Makes the buttons, with a condition and slot states for each group; nothing when there are some.
    void setupGroupButtons(QObject *target);
    void relayoutGroupButtons(double width);
    void groupBtnClicked(platform::View *sender);

    /// Thread: any.
    [[nodiscard]] bool isGroupOn(const platform::Identifier &identifier);
    void enableGroupButton(bool enable, const platform::Identifier &identifier);
    void turnOnGroupButton(bool on, const platform::Identifier &identifier);
    [[nodiscard]] int getGroupButtonState(const platform::Identifier &identifier);
    /// Those that are still there. Thread: any.
    [[nodiscard]] QList<platform::Button *> groupButtons();

private:
    /// Divides the upper edge anew after the root view was resized.
    void layOut();

    const StationMap &m_station;
    SlotStates &m_slotStates;
    Waits &m_waits;
    PanelViews &m_views;
    Focus &m_focus;
    platform::Monitored<QList<QPointer<platform::Button>>> m_buttons;
    /// What the interface file leaves free above the scroll view.
    double m_upperMargin = 0.0;
};

} // namespace interactive
