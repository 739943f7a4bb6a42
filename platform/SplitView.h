#pragma once

#include "platform/View.h"

namespace platform {

/// A view of panes. The panes keep the frames they were given: nothing is redistributed when one is added.
///
/// Thread: the main thread.
class SplitView : public View
{
    Q_OBJECT
public:
    enum class DividerStyle { Thick = 1, Thin = 2, PaneSplitter = 3 };

    using View::View;

    [[nodiscard]] DividerStyle dividerStyle() const { return m_dividerStyle; }
    void setDividerStyle(DividerStyle style) { m_dividerStyle = style; }

private:
    DividerStyle m_dividerStyle = DividerStyle::Thick;
};

} // namespace platform
