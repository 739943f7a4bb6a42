#pragma once

#include "platform/Box.h"
#include "platform/TextField.h"
#include "platform/Value.h"
#include "presentation/CollectionViewItem.h"

namespace interactive {

/// The box of one tile while it is being filled. Thread: the main thread.
struct SlotBox
{
    CollectionViewItem *tile = nullptr;
    platform::Box *box = nullptr;
    platform::View *content = nullptr; ///< The box's content view: the controls go here.
    platform::Value systemIndex;
    platform::Value slot;
    int tag = 0;
    platform::TextField *caption = nullptr;
    platform::TextField *label = nullptr; ///< Null when the box has none.
};

} // namespace interactive
