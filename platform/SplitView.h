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
    using View::View;
};

} // namespace platform
