#pragma once

#include "layout/PanelGeometry.h"
#include "layout/PanelPlan.h"
#include "platform/Button.h"
#include "platform/View.h"
#include "presentation/PanelViews.h"

#include <memory>
#include <optional>

namespace interactive {

/// A panel while it is being drawn. Thread: the main thread.
struct PanelDrawing
{
    PanelPlan &plan;
    PanelGeometry geometry;
    /// Views of the panel go here. Owned by `made` until it is put into the split view, when this drawing
    /// made it.
    platform::View *container = nullptr;
    std::unique_ptr<platform::View> made;
    Responders fields;
    /// The panel's buttons and switches: characters typed at one of them belong to the last field.
    QList<platform::Button *> buttons;
    /// The content view of a slot panel's box; null on a group's panel.
    platform::View *box = nullptr;
    /// The line that tells why an entry was refused; null on a panel that has none.
    platform::TextField *statusLine = nullptr;

    /// Which slots took input when the drawing began; nothing where the panel has no such states.
    std::optional<platform::Dictionary> states = {};
    /// Slots that this panel asks for, and those that it does not, which the states are yet to say.
    QStringList takenIn = {};
    QStringList leftOut = {};

    /// Puts the line into a view, where the panel's rules can refuse an entry.
    void addStatusLine(platform::View &around);
};

} // namespace interactive
