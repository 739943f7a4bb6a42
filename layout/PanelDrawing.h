#pragma once

#include "layout/PanelGeometry.h"
#include "layout/PanelPlan.h"
#include "plugin/InteractiveView.h"

#include <memory>

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
    InteractiveView::Responders fields;
};

} // namespace interactive
