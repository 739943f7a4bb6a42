#pragma once

#include "platform/ScrollView.h"

namespace interactive {

/// A scroll view that never scrolls by the wheel itself but hands wheel events on to whatever encloses it, so
/// that the panels inside the outer scroll view do not trap the wheel.
///
/// Thread: the main thread.
class ScrollView : public platform::ScrollView
{
    Q_OBJECT
public:
    using platform::ScrollView::ScrollView;

protected:
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace interactive
