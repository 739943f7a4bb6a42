#pragma once

#include "layout/PanelGeometry.h"
#include "platform/CollectionView.h"

/// The overview of a group's tiles. Thread: the main thread.
namespace interactive::overview {

/// What the tiles of a group stand for: one system each.
[[nodiscard]] platform::Array content(quint64 groupNumber, quint64 slotCount);
/// Puts an overview with these tiles into a container, inside a scroll view that does not scroll by itself.
platform::CollectionView *put(platform::View &container, const PanelGeometry &geometry,
                              const platform::Array &content);
/// Hides the box of every tile.
void hideBoxes(const platform::CollectionView &overview);

} // namespace interactive::overview
