#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <memory>
#include <vector>

namespace baseline {

/// What the station shows on a panel, made of bare widgets: each control once and where the station has it,
/// and nothing around it but a frame for the panel, one for each tile and one for each box.
///
/// Thread: the main thread.
struct BarePanel
{
    QFrame *frame = nullptr; ///< The panel; a slot's is its tile.
    QLineEdit *field = nullptr;
    QPushButton *ok = nullptr;
    std::vector<QLabel *> values; ///< Of a group's slots.
    std::vector<QFrame *> boxes;  ///< The ground that an entry colours, one a slot.
};

/// The panel of a group, hidden, in the parent, which owns it: with a value for each slot and a field, or
/// with switches alone.
[[nodiscard]] BarePanel groupPanel(QWidget *parent, int slotCount, bool hasField);
/// The panel of the slot with the number, hidden, where it stands among its neighbours.
[[nodiscard]] BarePanel slotPanel(QWidget *parent, int slot);
/// One panel for each of so many slots.
[[nodiscard]] std::vector<BarePanel> slotPanels(QWidget *parent, int slotCount);
/// The one panel for them.
[[nodiscard]] std::vector<BarePanel> groupPanels(QWidget *parent, int slotCount, bool hasField);

/// Shows them, and gives the last one's field the focus, as the station does.
void open(const std::vector<BarePanel> &panels);
/// Takes them away.
void remove(std::vector<BarePanel> &panels);

} // namespace baseline
