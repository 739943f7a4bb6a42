#pragma once

#include "presentation/PanelViews.h"

#include <QList>
#include <QRectF>

#include <vector>

/// In which order Tab goes through what the plug-in shows. Thread: the main thread.
namespace interactive::taborder {

/// Something that stands on the screen, as a reader finds it: left to right, and line by line. What overlaps
/// with the first of a line by half its height or more stands in that line.
struct Placed
{
    QRectF rect; ///< Origin at the upper left.
    std::size_t index = 0;
};
/// The indexes in reading order.
[[nodiscard]] std::vector<std::size_t> read(std::vector<Placed> placed);

/// Brings the controls into the order in which the eye meets them: what stands above the panels, then panel
/// by panel its fields, its switches and its buttons. They stay where they are among the controls of the
/// host, which follow after the last. Called before Tab goes anywhere: panels come, go and flow.
void renew(const PanelViews &views);

} // namespace interactive::taborder
