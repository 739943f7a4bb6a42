#pragma once

#include "groups/Switches.h"
#include "input/Confirmation.h"
#include "input/Entries.h"
#include "platform/Button.h"
#include "presentation/PanelViews.h"
#include "presentation/SlotColors.h"

#include <QObject>

#include <optional>

#include "common/SlotStates.h"
#include "common/StationMap.h"

namespace interactive {

class CollectionViewItem;
struct PanelDrawing;
struct PanelSubject;
struct SlotBox;

/// Fills the boxes of a group's tiles: caption, label, field, buttons and switch of each slot that takes
/// part.
///
/// Thread: the main thread.
class SlotBoxes
{
public:
    SlotBoxes(const StationMap &station, SlotStates &slotStates, PanelViews &views, const SlotColors &colors,
              Switches &switches, Entries &entries, Confirmation &confirmation, QObject *controller);

    void draw(PanelDrawing &drawing);

private:
    [[nodiscard]] std::optional<quint64> slotOf(const PanelSubject &subject) const;
    void drawTile(PanelDrawing &drawing, CollectionViewItem &tile, quint64 slot);
    void drawSlotBox(PanelDrawing &drawing, SlotBox &slotBox);
    [[nodiscard]] platform::Color textColor(const PanelDrawing &drawing, const SlotBox &slotBox) const;
    [[nodiscard]] platform::TextField *drawCaption(const PanelDrawing &drawing, const SlotBox &slotBox);
    [[nodiscard]] platform::TextField *drawLabelOrMessage(const PanelDrawing &drawing,
                                                          const SlotBox &slotBox);
    void drawGroupControls(PanelDrawing &drawing, SlotBox &slotBox);
    void drawDisplayField(PanelDrawing &drawing, const SlotBox &slotBox) const;
    void drawSwitch(PanelDrawing &drawing, const SlotBox &slotBox);
    void divideSlots(PanelDrawing &drawing);
    void takeInitialSwitchState(PanelDrawing &drawing, const SlotBox &slotBox, platform::Button &button);
    void drawSlotControls(PanelDrawing &drawing, SlotBox &slotBox);
    void drawUnit(const PanelDrawing &drawing, const SlotBox &slotBox) const;
    void drawSlotButtons(PanelDrawing &drawing, const SlotBox &slotBox);

    const StationMap &m_station;
    SlotStates &m_slotStates;
    PanelViews &m_views;
    const SlotColors &m_colors;
    Switches &m_switches;
    Entries &m_entries;
    Confirmation &m_confirmation;
    QObject *m_controller;
};

} // namespace interactive
